/// A play as a tool: an outer node that the user moves, and a slider that is loose in it.
#pragma once

#include "plugins/common/accessory_meshes.h"
#include "plugins/common/play.h"
#include "plugins/common/pose.h"
#include "plugins/common/tool_object.h"

#include <string>

namespace tvw::rgs {

struct PlayToolSettings : GeneralModes, PlaySettings
{
};

namespace play {

enum NodeIndex : std::size_t { kOuter, kSlider };

inline constexpr std::string_view kHideHelpers = "Hide Helpers";
inline constexpr std::string_view kHideDuringRecording = "Hide Helpers During Recording";

/// What the user links to the carrier.
constexpr NodeRow outerRow(std::string_view name, CMesh (*mesh)())
{
    return {.prefix = {},
            .name = name,
            .mesh = mesh,
            .color = kReferenceColor,
            .keyed = false,
            .selected = true};
}

constexpr NodeRow sliderRow(CMesh (*mesh)())
{
    return {.prefix = {}, .name = "InnerSlider", .mesh = mesh};
}

template <class S>
constexpr auto generalItems()
{
    using I = Items<S>;
    return std::array{
        I::group("General Modes"),
        I::template checkBox<&S::hideHelpers>(kHideHelpers, kHideHelpers, kHeard),
        I::template checkBox<&S::hideDuringRecording>(kHideDuringRecording, kHideDuringRecording),
        I::end(),
    };
}

/// The whole table of a tool whose slider glides.
constexpr auto glidingItems(std::string_view group, std::string_view friction)
{
    using S = PlayToolSettings;
    using I = Items<S>;
    return join(
        generalItems<S>(),
        std::array{
            I::group(group),
            I::spinner<&S::dPlayFriction>(
                friction,
                "How large the friction is inside of the play. If 0 the slider will glide for a "
                "long time, if large it will stop quickly.",
                {0, 100000000.0, 0.001}, kLive),
            I::checkBox<&S::bAllowRebounce>(
                "Allow Slight Rebounce",
                "If checked there will be a small rebounce when the slider hits the wall."),
            I::end(),
        });
}

} // namespace play

/// A slider that glides. Its own scale is kept; it turns with the outer node.
class PlayTool : public Tool<PlayToolSettings>
{
protected:
    PlayTool(const CreateParam& param, const ToolSpec& spec,
             std::span<const Item<PlayToolSettings>> items, std::string chunkWord, Clearance shape);

    bool startsAnew(double time) override;
    void runStarts(double) override {}
    void step(double time) override;

private:
    Clearance shape_;
    Vector3d velocity_; ///< of the slider [units/s]
    Recorded<AVar_Nearest<Vector3d>>* velocities_ = nullptr;
};

} // namespace tvw::rgs
