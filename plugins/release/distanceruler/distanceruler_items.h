/// The DistanceRuler's parameters, and the tables that show them.
#pragma once

#include "plugins/common/ruler.h"

namespace tvw::rgs::addon::distanceruler {

struct Settings : GeneralModes
{
    double distance = 2.0; ///< in lengths of Node1's Z axis
    ruler::Limits limits{0.0, 4.0};
    double inLimits = 0.5; ///< 0 to 1
};

using S = Settings;
using I = Items<Settings>;
inline constexpr Bounds kLength{0, 10000, 0.1};

inline constexpr std::array kDistanceItems{
    I::group("Distances"),
    I::button(ruler::kUpdateValues, "Click this button to update the distance values."),
    I::spinner<&S::distance>("Current Distance", "Shows the distance between the targets.",
                             kLength),
    I::spinner<[](S& s) -> double& { return s.limits.maximum; }>(
        "Max Distance",
        "If the Current Distance is larger than this value the Maximum Trigger Value will be set "
        "to 1.",
        kLength),
    I::spinner<[](S& s) -> double& { return s.limits.minimum; }>(
        "Min Distance",
        "If the Current Distance is smaller than this value the Minimum Trigger Value will be set "
        "to 1.",
        kLength),
    I::spinner<&S::inLimits>("In Limits Distance",
                             "Is the node2 position between the Max and Min value. 1 if distance "
                             ">= Max Value. 0 if distance <= Min Value.",
                             kLength),
    I::end(),
};
inline constexpr std::array kItems = join(kDistanceItems, ruler::generalItems<S>());
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kNode1, kNode2 };

inline Matrix4 besideNode1()
{
    Matrix4 place;
    setTranslation(place, {0, 0, 2});
    return place;
}
inline constexpr NodeRow kNodes[] = {ruler::selected(ruler::pointRow("Node1")),
                                     ruler::pointRow("Node2", &besideNode1)};

enum OutputIndex : std::size_t { kValue, kAbove, kBelow, kFraction };

inline constexpr OutputRow kOutputs[] = {{"Distance value"},
                                         {"Maximum Trigger Value", ruler::kTrigger},
                                         {"Minimum Trigger Value", ruler::kTrigger},
                                         {"Distance from Min/Max"}};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .outputs = kOutputs};

} // namespace tvw::rgs::addon::distanceruler
