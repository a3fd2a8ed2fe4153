/// The smallest tool that has one of everything: nodes, an input, an output, items, state.
///
/// Its making can be told to fail, and it counts its objects and the calls that concern the tree.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/tool_object.h"
#include "plugins/common/tool_plugin.h"

#include <string>

namespace tvw::rgs::tests {

struct TinySettings : GeneralModes
{
    double speed = 1.0; ///< [m/s]
    double held = 0.0;
};

using TinyItems = Items<TinySettings>;
inline constexpr std::array kTinyItems{
    TinyItems::group("Values"),
    TinyItems::spinner<&TinySettings::speed>("Speed", "Metres a second.", {-100, 100, 1}),
    TinyItems::checkBox<&TinySettings::hideHelpers>("Hide Helpers", "Hides them.", kHeard),
    TinyItems::checkBox<&TinySettings::wireframe>("Wireframe Mode", "Edges only.", kHeard),
    TinyItems::checkBox<&TinySettings::hideDuringRecording>("Hide Helpers During Recording", ""),
    TinyItems::end(),
};
static_assert(isSound(kTinyItems));

inline constexpr NodeRow kTinyNodes[] = {
    {.prefix = {}, .name = "Base", .mesh = &shape::relativeCage},
    {.prefix = {}, .name = "Arm", .mesh = &shape::target, .parent = 0, .group = NodeGroup::Always},
    {.prefix = {},
     .name = "Eye",
     .mesh = &shape::camera,
     .kind = nodekind::camera,
     .group = NodeGroup::Always},
};
inline constexpr InputRow kTinyInputs[] = {{{}, "Push", unidevice::kind::any}};
inline constexpr OutputRow kTinyOutputs[] = {{"Travel"}};
inline constexpr ToolSpec kTinySpec{
    .nodes = kTinyNodes, .inputs = kTinyInputs, .outputs = kTinyOutputs};

/// What of the next making fails.
struct TinyFaults
{
    bool nodes = false;
    bool object = false;
};

/// Moves "Base" along X by speed and input; the output is how far it went [m].
class TinyTool final : public Tool<TinySettings>
{
public:
    static inline TinyFaults faults;
    static inline int alive = 0;
    static inline std::vector<std::string> completed; ///< names, in the order of code 42

    explicit TinyTool(const CreateParam& param) : Tool(param, kTinySpec, kTinyItems, "Tiny")
    {
        state().stored("speed", settings.speed);
        state().linear("travel", travel_);
        ++alive;
    }
    ~TinyTool() override { --alive; }

    std::vector<std::int32_t> supportedCodes() override
    {
        return {code::updateOutput, code::treeComplete};
    }
    std::intptr_t call(std::int32_t code, void* argument) override
    {
        if (code != code::treeComplete)
            return Tool::call(code, argument);
        completed.push_back(name());
        return 1;
    }
    const std::string& name() const { return CCamera::name(); }

private:
    bool nodesCreated() override { return !faults.nodes; }
    void runStarts(double) override {}
    void step(double time) override
    {
        travel_ += (settings.speed + input(0).value()) * stepLength();
        Matrix4 pose;
        setTranslation(pose, {travel_, 0.0, 0.0});
        node(0).setGlobal(time, pose);
    }
    double outputValue(std::size_t) override { return travel_; }

    double travel_ = 0.0;
};

class TinyPlugin final : public ToolPlugin<TinyTool>
{
public:
    TinyPlugin()
        : ToolPlugin({.id = "Tiny",
                      .dataFolder = "tests/tiny",
                      .displayName = "Tiny",
                      .category = "Utility;Camera",
                      .description = "One of everything.",
                      .olderIds = kOlderIds})
    {
    }
    CCamera* createObject(const CCamera::CreateParam& param) override
    {
        return TinyTool::faults.object ? nullptr : ToolPlugin::createObject(param);
    }

private:
    static constexpr std::string_view kOlderIds[] = {"TinyOld"};
};

} // namespace tvw::rgs::tests
