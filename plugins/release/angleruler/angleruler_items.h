/// The AngleRuler's parameters, and the tables that show them. Angles are radians.
#pragma once

#include "plugins/common/ruler.h"

#include <numbers>

namespace tvw::rgs::addon::angleruler {

struct Settings : GeneralModes
{
    double angle = std::numbers::pi; ///< 0 to pi
    double angleVelocity = 0.0;      ///< [rad/s], never negative
    ruler::Limits limits{0.0, 2 * std::numbers::pi};
    double inLimits = 0.5; ///< 0 to 1
};

using S = Settings;
using I = Items<Settings>;
inline constexpr Bounds kHalfTurn{0, 3.1415926536, 0.1};
inline constexpr Bounds kTurn{0, 6.2831853072, 0.1};

inline constexpr std::array kAngleItems{
    I::group("Angles"),
    I::button(ruler::kUpdateValues, "Click this button to update the Angle Values."),
    I::spinner<&S::angle>("Current Angle", "Shows the angle between node1 and node2.", kHalfTurn),
    I::spinner<&S::angleVelocity>("Angular Velocity",
                                  "Shows the angular velocity between node1 and node2.", kHalfTurn),
    I::spinner<[](S& s) -> double& { return s.limits.maximum; }>(
        "Max Angle",
        "If the Current Angle is larger than this value the Maximum Trigger Value will be set to "
        "1.",
        kTurn),
    I::spinner<[](S& s) -> double& { return s.limits.minimum; }>(
        "Min Angle",
        "If the Current Angle is smaller than this value the Minimum Trigger Value will be set to "
        "1.",
        kHalfTurn),
    I::spinner<&S::inLimits>("In Limits Distance",
                             "Is the angle between the Max and Min value. 1 if Angle >= Max Value. "
                             "0 if Angle <= Min Value.",
                             {0, 10000, 0.1}),
    I::end(),
};
inline constexpr std::array kItems = join(kAngleItems, ruler::generalItems<S>());
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kNode1, kNode2, kBase };

/// The three stand on a line: the angle is that of the defaults.
template <int Z>
Matrix4 onLine()
{
    Matrix4 place;
    setTranslation(place, {0, 0, Z});
    return place;
}
inline constexpr NodeRow kNodes[] = {ruler::pointRow("Node1", &onLine<-1>),
                                     ruler::pointRow("Node2", &onLine<1>),
                                     ruler::selected(ruler::pointRow("BaseNode"))};

enum OutputIndex : std::size_t { kValue, kVelocity, kAbove, kBelow, kFraction };

inline constexpr OutputRow kOutputs[] = {{"Angle value"},
                                         {"Angular Velocity"},
                                         {"Maximum Trigger Value", ruler::kTrigger},
                                         {"Minimum Trigger Value", ruler::kTrigger},
                                         {"Distance from Min/Max"}};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .outputs = kOutputs};

} // namespace tvw::rgs::addon::angleruler
