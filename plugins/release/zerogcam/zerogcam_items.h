/// The ZeroGCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/flying_camera.h"

namespace tvw::rgs::addon::zerogcam {

enum Input : std::size_t {
    kForward,
    kRight,
    kUp,
    kYaw,
    kPitch,
    kRoll,
    kAirplaneBrake,
    kBrakeAll,
    kTranslBrake,
    kRotBrake,
    kInputs
};

/// Forces [m/s^2] and [rad/s^2] on a body of mass 1; brakes: the share of the speed that is lost in
/// 0.003 s.
inline constexpr std::array<ObserverRow, kInputs> kInputTable{{
    {"Forw/Backw Force", {0.5, 0.5}},
    {"Right/Left Force", {0.5, 0.5}},
    {"Up/Down Force", {0.5, 0.2}},
    {"Yaw Force (Right/Left)", {1, 0.2}},
    {"Pitch Force (Up/Down)", {1, 0.2}},
    {"Roll Force (Right/Left)", {1, 0.2}},
    {"Airplane Brake", {1, 0.003}, true},
    {"Brake All", {1, 0.002}, true},
    {"Translational Brake", {1, 0.002}, true},
    {"Rotational Brake", {1, 0.003}, true},
}};

struct Settings : FlyingSettings
{
    std::array<ObserverSettings, kInputs> inputs = observerDefaults(kInputTable);
};

using S = Settings;
using I = Items<Settings>;

inline constexpr auto kItems = join(
    hideItems<S>("Hide Modes"), std::array{I::group("Camera Parameters"), kRelativeScaleItem<S>},
    kLensItems<S>, std::array{I::end(), I::group("Input Property Parameters")},
    observerItems<S, &S::inputs>(kInputTable, kPlain), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kNodes = flyingNodes("ZeroGCam");
inline constexpr auto kInputRows = observerInputRows(kInputTable);
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputRows, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::zerogcam
