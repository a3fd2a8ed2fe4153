/// The ScaleRuler's parameters, and the tables that show them.
#pragma once

#include "plugins/common/ruler.h"

namespace tvw::rgs::addon::scaleruler {

struct Settings : GeneralModes
{
    Vector3d scale{1, 1, 1}; ///< of the scaling node, in those of the reference
    ruler::Limits limits[3]{{1, 10}, {1, 10}, {1, 10}}; ///< of the axes X, Y, Z
    Vector3d inLimits;                                  ///< each 0 to 1
};

using S = Settings;
using I = Items<Settings>;
inline constexpr Bounds kScale{0, 10000, 0.1};

/// The rows of one kind for the three axes.
/// Access: a captureless lambda from S& and an axis to the value.
template <auto Access>
constexpr std::array<Item<S>, 3> axisItems(const std::array<std::string_view, 3>& labels,
                                           const std::array<std::string_view, 3>& tooltips)
{
    return {
        I::spinner<[](S& s) -> double& { return Access(s, 0); }>(labels[0], tooltips[0], kScale),
        I::spinner<[](S& s) -> double& { return Access(s, 1); }>(labels[1], tooltips[1], kScale),
        I::spinner<[](S& s) -> double& { return Access(s, 2); }>(labels[2], tooltips[2], kScale)};
}

inline constexpr std::array kItems = join(
    std::array{I::group("Scales"),
               I::button(ruler::kUpdateValues, "Click this button to update the Scale Values.")},
    axisItems<[](S& s, int axis) -> double& { return s.scale[axis]; }>(
        {"Current X Scale", "Current Y Scale", "Current Z Scale"},
        {"Shows the X scale between the Reference Node and the ScalingNode.",
         "Shows the Y scale between the Reference Node and the ScalingNode.",
         "Shows the Z scale between the Reference Node and the ScalingNode."}),
    axisItems<[](S& s, int axis) -> double& { return s.limits[axis].maximum; }>(
        {"Max X Scale", "Max Y Scale", "Max Z Scale"},
        {"If the Current X Scale is larger than this value the Maximum X Trigger Value will be set "
         "to 1.",
         "If the Current Y Scale is larger than this value the Maximum Y Trigger Value will be set "
         "to 1.",
         "If the Current Z Scale is larger than this value the Maximum Z Trigger Value will be set "
         "to 1."}),
    axisItems<[](S& s, int axis) -> double& { return s.limits[axis].minimum; }>(
        {"Min X Scale", "Min Y Scale", "Min Z Scale"},
        {"If the Current X Scale is smaller than this value the Minimum X Trigger Value will be "
         "set to 1.",
         "If the Current Y Scale is smaller than this value the Minimum Y Trigger Value will be "
         "set to 1.",
         "If the Current Z Scale is smaller than this value the Minimum Z Trigger Value will be "
         "set to 1."}),
    axisItems<[](S& s, int axis) -> double& { return s.inLimits[axis]; }>(
        {"Percentage from X Min/Max", "Percentage from Y Min/Max", "Percentage from Z Min/Max"},
        {"Is the X scale between the Max and Min value. Ex. 1 if Scale >= Max Value. 0 if Angle <= "
         "Min Value.",
         "Is the Y scale between the Max and Min value. Ex. 1 if Scale >= Max Value. 0 if Angle <= "
         "Min Value.",
         "Is the Z scale between the Max and Min value. Ex. 1 if Scale >= Max Value. 0 if Angle <= "
         "Min Value."}),
    std::array{I::end()}, ruler::generalItems<S>());
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kReference, kScaling };

inline constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "ReferenceNode",
     .mesh = &shape::gauge,
     .color = kReferenceColor,
     .keyed = false,
     .selected = true},
    {.prefix = {}, .name = "ScalingNode", .mesh = &shape::gauge, .keyed = false},
};

/// Four kinds of output, each for the three axes.
enum OutputKind : std::size_t { kValue, kAbove, kBelow, kFraction };

inline constexpr OutputRow kOutputs[] = {
    {"X Scale Value"},
    {"Y Scale Value"},
    {"Z Scale Value"},
    {"Maximum X Trigger Value", ruler::kTrigger},
    {"Maximum Y Trigger Value", ruler::kTrigger},
    {"Maximum Z Trigger Value", ruler::kTrigger},
    {"Minimum X Trigger Value", ruler::kTrigger},
    {"Minimum Y Trigger Value", ruler::kTrigger},
    {"Minimum Z Trigger Value", ruler::kTrigger},
    {"Percentage from X Min/Max"},
    {"Percentage from Y Min/Max"},
    {"Percentage from Z Min/Max"},
};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .outputs = kOutputs};

} // namespace tvw::rgs::addon::scaleruler
