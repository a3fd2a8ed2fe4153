/// The stage: our own host. A scene in memory with time, keys, selection and undo, behind the seam.
///
/// Double precision, +Y up, -Z forward, metres; times are seconds at every interface and whole
/// flicks inside. The doors and the core both work on it: the core through `AdaptorInterface`, the
/// doors through the plain operations here and on `StageNode`. What changes the scene is undoable
/// while a bracket is open, and simply done otherwise. Main thread only; nothing throws but
/// std::bad_alloc.
#pragma once

#include "adaptor/stage/node_handle.h"
#include "adaptor/stage/snapshots.h"
#include "adaptor/stage/stage_listener.h"
#include "adaptor/stage/stage_node.h"
#include "adaptor/stage/undo_stack.h"
#include "core/adaptor_interface.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace tvw::rgs::stage {

class TagIndex;

/// What the stage takes from whoever joins it to the core and to a window. Each may be empty.
struct StageHooks
{
    /// The name of a tool. Without it nodes are named by their name inside the tool alone.
    std::function<std::string(CInterface*)> ownerName;

    /// Makes the tool of a record (`RGT_Plugin`) below the tool of that name (empty: the root), at
    /// that place among its children.
    std::function<void(const util::xml::Element& record, const std::string& parent, int childIndex)>
        createTool;

    /// Reads a scene file into the stage and answers its nodes.
    std::function<std::vector<StageNode*>(const std::string& path)> mergeFile;

    std::function<void(const std::string& text, const std::string& title)> showError;
    std::function<void()> redrawViews;
};

class Stage final : public core::AdaptorInterface
{
public:
    struct Message
    {
        std::string title;
        std::string text;
    };

    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    StageHooks hooks;

    // Scene content. Names are made unique; a node is made below `parent`, null for the top level,
    // with `local` as its constant pose. Nodes belong to the stage.

    StageNode& addEmpty(const std::string& name, const Matrix4& local = {},
                        StageNode* parent = nullptr);
    StageNode& addMesh(const std::string& name, std::shared_ptr<const StageMesh> mesh,
                       const Matrix4& local = {}, StageNode* parent = nullptr);
    StageNode& addMesh(const std::string& name, const CMesh& mesh, const Matrix4& local = {},
                       StageNode* parent = nullptr);
    StageNode& addCamera(const std::string& name, double fovDegrees = 45.0,
                         const Matrix4& local = {}, StageNode* parent = nullptr);
    StageNode& addSpline(const std::string& name, std::vector<Vector3d> points, bool closed = false,
                         const Matrix4& local = {}, StageNode* parent = nullptr);

    /// A copy beside the node, keys included, with a name of its own.
    StageNode& duplicate(StageNode& node, bool withChildren);

    /// Takes the nodes out of the scene. Children that stay are moved up and keep their world pose.
    /// Listeners hear of it first.
    void remove(const std::vector<StageNode*>& nodes);
    void remove(StageNode& node) { remove(std::vector<StageNode*>{&node}); }

    [[nodiscard]] StageNode* find(const std::string& name) const; ///< null: none of that name
    [[nodiscard]] const std::vector<StageNode*>& topLevel() const noexcept { return top_; }

    /// Calls f(node) for every node of the scene, depth first, parents first.
    template <class F>
    void forEachNode(F&& f) const
    {
        for (StageNode* node : top_)
            walk(*node, f);
    }
    [[nodiscard]] std::vector<StageNode*> nodes() const; ///< depth first

    [[nodiscard]] std::vector<StageNode*> selection() const; ///< depth first
    void select(StageNode& node, bool add);
    void clearSelection();

    /// The tool that made the node; null: none.
    [[nodiscard]] CInterface* ownerOf(const StageNode& node) const noexcept;

    /// An empty scene: listeners hear `sceneClosing`, then the undo list, all handles and all nodes
    /// go.
    void clear();

    /// Rises with every change of the scene that a picture of it could show.
    [[nodiscard]] std::uint64_t version() const noexcept { return version_; }

    // Time.

    void setFramesPerSecond(double baseRate); ///< [1/s], > 0, else ignored
    [[nodiscard]] core::TimeRange range() const noexcept { return range_; }
    [[nodiscard]] int timeScale() const noexcept { return timeScale_; }
    [[nodiscard]] double hostFramesPerSecond() const noexcept { return baseRate_ * timeScale_; }
    [[nodiscard]] bool keyMode() const noexcept { return keyMode_; }
    void setKeyMode(bool on) noexcept { keyMode_ = on; } ///< whether tools' writes lay keys

    // Undo.

    [[nodiscard]] UndoStack& undoStack() noexcept { return undo_; }

    // Listeners are not owned; they are told in the order of registration. One may leave at any
    // time.

    void addListener(StageListener& listener);
    void removeListener(StageListener& listener);
    void tellSceneOpened(); ///< by whoever has filled the scene from a file
    void tellBeforeSave();  ///< by whoever writes the scene
    void tellAfterSave();   ///< and clears the tags
    void tellClosing();     ///< before the stage is destroyed

    [[nodiscard]] const std::vector<Message>& messages() const noexcept { return messages_; }
    void clearMessages() { messages_.clear(); }
    [[nodiscard]] bool hostKeysEnabled() const noexcept { return hostKeysOff_ == 0; }
    void setHostWindow(void* window) noexcept { window_ = window; }

    // What follows is the seam; core/adaptor_interface.h tells what each operation does.

    std::int32_t getInterfaceVersion() override;
    std::string getAdaptorName() override { return "Rigstage Stage Adaptor"; }
    std::string getAdaptorId() override { return "adaptor_stage"; }
    std::string getHostName() override { return "stage"; }
    std::string getHostVersion() override { return "1"; }
    void* getHostWindow() override { return window_; }

    core::CoreNode* createHelperNode(CInterface* owner, std::string name, CNode* parent,
                                     std::int64_t userValue) override;
    core::CoreNode* createMeshNode(CInterface* owner, std::string name, CNode* parent,
                                   const CMesh* mesh, std::int64_t userValue) override;
    core::CoreNode* findNode(CInterface* owner, std::string name) override;
    void saveNodeTags(CInterface* owner) override;
    void gatherTools() override;
    void getAllNodes(ReturnValue<std::vector<core::CoreNode*>>& out) override;
    void getNodes(CInterface* owner, ReturnValue<std::vector<core::CoreNode*>>& out) override;
    void bindNodes(std::string name, const util::xml::Element& nodeInfo,
                   ReturnValue<std::vector<core::CoreNode*>>& out) override;
    void mergeFile(std::string path, ReturnValue<std::vector<core::CoreNode*>>& out) override;

    void beginUndo(std::string name) override { undo_.begin(std::move(name)); }
    std::int32_t pushUndo(CUndo* record) override { return undo_.push(record) ? 0 : 1; }
    void endUndo() override { undo_.end(); }
    void cancelUndo() override;
    bool isUndoOpen() override { return undo_.isOpen(); }
    bool hostUndo() override;
    bool hostRedo() override;

    double getTime() override { return time_; }
    void setTime(double time) override;
    void setTimeScale(std::int32_t n) override;
    void getRange(core::TimeRange& out) override { out = range_; }
    void setRange(const core::TimeRange& range) override;
    bool canRedrawInResimulation() override { return true; }
    double getFramesPerSecond() override { return baseRate_; }
    double getFrameDuration() override { return 1.0 / baseRate_; }
    void redrawViews() override;
    void disableHostKeys() override { ++hostKeysOff_; }
    void enableHostKeys() override { hostKeysOff_ -= hostKeysOff_ > 0 ? 1 : 0; }

    void beginRun(std::vector<CInterface*>& instances) override;
    void beginPlainRun() override;
    void endRun() override;
    void shutdown() override;
    void showHostSettings(void*) override {}
    void showError(std::string text, std::string title) override;
    std::vector<std::size_t> separate(const std::vector<CInterface*>& instances) override;

private:
    friend class CSetTimeRestoreObj;
    friend class LinkRecord;
    friend class NodeHandle;
    friend class NodeInstanceRestoreObj;
    friend class NodeStateRecord;
    friend class PresenceRecord;
    friend class RangeRecord;
    friend class StageNode;

    template <class F>
    static void walk(StageNode& node, F& f)
    {
        f(node);
        for (StageNode* child : node.children_)
            walk(*child, f);
    }

    StageNode& add(NodeKind kind, NodeState state, StageNode* parent);
    StageNode& copyBelow(StageNode& node, StageNode* parent, bool withChildren);
    void removeOne(StageNode& node);
    std::vector<StageNode*>& siblingsOf(StageNode* parent)
    {
        return parent ? parent->children_ : top_;
    }
    std::size_t placeOf(const StageNode& node);
    void link(StageNode& node, StageNode* parent, std::size_t place);
    void unlink(StageNode& node);
    void enter(StageNode& node, StageNode* parent, std::size_t place);
    void leave(StageNode& node);
    std::string freeName(const std::string& wanted, const StageNode* self);
    void nameChanged(StageNode& node, const std::string& old);

    core::CoreNode* makeToolNode(CInterface* owner, const std::string& name, CNode* parent,
                                 NodeKind kind, const CMesh* mesh, std::int64_t userValue);
    NodeHandle& makeHandle(StageNode& node, CInterface* owner, std::string shortName,
                           core::CoreNode* parent, std::int64_t userValue);
    NodeHandle& looseHandle(StageNode& node);
    void endHandle(NodeHandle& handle);
    void dropHandle(NodeHandle& handle);
    [[nodiscard]] const std::vector<NodeHandle*>& handlesOf(const CInterface* owner) const;
    void clearNodeTags();

    void swapTime(double& time, core::TimeRange& range);
    void noteRange(); ///< and the frame rate, for undo
    void newEpoch() noexcept;
    void prepareRun(const std::vector<StageNode*>& nodes);
    template <class F>
    void tell(F&& f);

    std::uint64_t version_ = 1;
    std::uint64_t poseVersion_ = 1; ///< of all world poses
    std::uint64_t worldStamp_ = 0;
    std::uint64_t epoch_ = 1; ///< held poses count within one epoch

    double time_ = 0.0;
    core::TimeRange range_{0.0, 10.0};
    double baseRate_ = 25.0;
    int timeScale_ = 1;
    bool keyMode_ = false;
    bool keyModeBeforeRun_ = false;
    bool inRun_ = false;
    bool selecting_ = false; ///< a selection bracket is open
    int hostKeysOff_ = 0;
    void* window_ = nullptr;
    std::uint64_t rangeNoted_ = 0;
    const TagIndex* tags_ = nullptr; ///< while tools are gathered

    std::vector<std::unique_ptr<StageNode>> nodes_; ///< removed ones too
    std::vector<StageNode*> top_;
    std::unordered_map<std::string, StageNode*> byName_;
    std::unordered_map<std::string, int> suffixes_;    ///< last number tried behind a name
    std::vector<std::unique_ptr<NodeHandle>> handles_; ///< in the order of creation
    std::unordered_map<const CInterface*, std::vector<NodeHandle*>>
        handlesOf_; ///< those made for an owner; a handle that it let go stays among them
    std::vector<std::unique_ptr<NodeHandle>> loose_; ///< handed out and free ones
    SnapshotPools snapshots_;
    std::vector<StageListener*> listeners_;
    std::vector<Message> messages_;
    UndoStack undo_; ///< last: its records point at the nodes and handles
};

} // namespace tvw::rgs::stage
