/// What every tool does, once.
///
/// A tool is three tables (nodes, inputs, outputs: `ToolSpec`), a settings struct with its item table
/// (`Tool<S>`), the registration of its state (`StateStore`), and a handful of hooks. All of the life
/// around the hooks is here: declaration, making and finding nodes, undo, cutting and recording of the
/// state, save and load, hiding of helpers, outputs.
#pragma once

#include "core/contract/camera.h"
#include "plugins/common/items.h"
#include "plugins/common/scene_node.h"
#include "plugins/common/state_store.h"

#include <deque>
#include <span>
#include <string_view>
#include <vector>

namespace tvw::rgs {

/// What a tool's settings begin with, whether or not the tool shows an item for each.
struct GeneralModes
{
    bool hideHelpers = false;
    bool hideDuringRecording = false;
    bool wireframe = false;
};

struct InputRow
{
    std::string_view prefix;
    std::string_view name;
    std::uint32_t kindMask;
    double exponent = 1.0; ///< of a new property

    std::string fullName() const { return std::string(prefix).append(name); }
};

struct OutputRow
{
    std::string_view name;
    std::int32_t kind = static_cast<std::int32_t>(unidevice::kind::analogue);
};

/// A check box that shows and hides nodes, undoably, beside "Hide Helpers".
struct HideSwitch
{
    std::string_view label;
    NodeGroup group;
    bool& (*flag)(GeneralModes&);
};

/// The row of a switch whose flag is a member of the settings S.
template <class S, bool S::*Member>
constexpr HideSwitch hideSwitch(std::string_view label, NodeGroup group)
{
    return {label, group, [](GeneralModes& modes) -> bool& { return static_cast<S&>(modes).*Member; }};
}

struct ToolSpec
{
    std::span<const NodeRow> nodes;
    std::span<const InputRow> inputs{};
    std::span<const OutputRow> outputs{};
    std::span<const HideSwitch> switches{};
    bool inputsBeforeItems = false; ///< the order decides the profiles' order and must not change
};

class ToolObject : public CCamera, public CInterface::Callback
{
public:
    // The contract. A tool fills in the hooks below instead.
    std::intptr_t call(std::int32_t code, void* argument) override;
    std::vector<std::int32_t> supportedCodes() override;
    void startRun(double time) final;
    void stopRun() final;
    void tick(double time) final;
    void timeChanged(double time) final;
    int declareConfiguration() final;
    int createNodes() final;
    int load() final;
    int save() final;
    void itemChanged(const std::string& label) final;

protected:
    /// spec: lives as long as the program. modes: the settings' own, for the life of the tool.
    /// chunkWord, chunkVersion: of the saved state (`StateStore`).
    ToolObject(const CreateParam& param, const ToolSpec& spec, GeneralModes& modes,
               std::string chunkWord, int chunkVersion = 0);

    // Hooks. Times are seconds; in all of them the interface is there.

    virtual void declareItems() = 0;

    /// The nodes stand: what the tables can't say.
    virtual bool nodesCreated() { return true; }

    /// Whether a run that starts at `time` forgets the recorded state and begins from the defaults.
    virtual bool startsAnew(double time);

    /// The state is that of `time` (or the defaults). Read the nodes; what stands in the registered
    /// variables afterwards is recorded as the start.
    virtual void runStarts(double time) = 0;

    /// One frame: inputs, model, nodes. The registered variables are recorded at `time` afterwards.
    virtual void step(double time) = 0;

    /// Whether the ticks record the registered variables; without it a run can't be continued.
    virtual bool recordsState() const { return true; }

    virtual void runEnds() {}

    /// The host's time moved, in a run or not. Only read the time lines.
    virtual void timeMoved(double time);

    /// A run or a save begins: parameters that only show something take their own value again.
    virtual void settleParameters() {}

    /// The value of output row `index` now.
    virtual double outputValue(std::size_t index);

    /// An item or button that is not one of the shared ones.
    virtual void itemActed(std::string_view label);

    /// A change of the tool's own that can be taken back; see `pushAction`.
    virtual void actionReplayed(std::string_view label, bool redone);

    // For the hooks.

    CInterface& runtime() const { return *interface(); }
    double stepLength() const { return interface()->getFrameDuration(); } ///< [s]
    SceneNode& node(std::size_t row) { return *nodes_[row]; }
    const SceneNode& node(std::size_t row) const { return *nodes_[row]; }
    std::size_t nodeCount() const { return nodes_.size(); }
    Property& input(std::size_t row) const { return *inputs_[row]; }
    bool running() const { return running_; }
    StateStore& state() { return state_; }

    /// A tool that needs a node class of its own puts it in place of the row's, in its constructor.
    void setNode(std::size_t row, std::unique_ptr<SceneNode> node) { nodes_[row] = std::move(node); }

    /// Shows or hides the nodes of a group at once, without undo.
    void applyHiding(NodeGroup group, bool hidden);

    /// Pushes the record that replays `label` on undo and redo, before the action is done.
    void pushAction(std::string_view label);

private:
    void declareInputs();
    void declareOutputs();
    void fetchNodes() const;
    void hideForRun();
    void showAfterRun();
    const HideSwitch* findSwitch(std::string_view label) const;
    bool isSharedAction(std::string_view label) const;
    void applySharedAction(std::string_view label);
    void toggleSharedAction(std::string_view label);

    const ToolSpec& spec_;
    GeneralModes& modes_;
    StateStore state_;
    std::vector<std::unique_ptr<SceneNode>> nodes_;
    std::vector<Property*> inputs_;
    std::vector<Control*> outputs_; ///< null where the runtime has no outputs
    std::vector<SceneNode*> hiddenForRun_; ///< helpers that were visible before it
    bool running_ = false;
};

/// A tool with settings S, which begin with `GeneralModes`.
template <class S>
class Tool : public ToolObject
{
protected:
    Tool(const CreateParam& param, const ToolSpec& spec, std::span<const Item<S>> items,
         std::string chunkWord, int chunkVersion = 0)
        : ToolObject(param, spec, settings, std::move(chunkWord), chunkVersion), items_(items)
    {
    }

    void declareItems() override
    {
        rgs::declareItems<S>(runtime(), items_, settings, this, &combos_);
    }

    S settings;
    std::vector<CInterface::ComboUpdater*> combos_; ///< in the order of the table

private:
    std::span<const Item<S>> items_;
};

} // namespace tvw::rgs
