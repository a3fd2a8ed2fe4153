/// The SphereCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/camera_items.h"
#include "plugins/common/observer_input.h"
#include "plugins/common/target_camera.h"

namespace tvw::rgs::addon::spherecam {

enum Input : std::size_t { kRight, kUp, kForward, kRoll, kAntiRoll, kInputs };

/// Turns round the sphere: half angles [rad] per 0.04 s; forward: the share of the distance per
/// 0.04 s; anti-roll: multiplies its response factor.
inline constexpr std::array<ObserverRow, kInputs> kInputTable{{
    {"Right/Left Transl", {0.2, 0.03}},
    {"Up/Down Transl", {0.2, 0.03}},
    {"Forw/Backw Transl", {0.2, 0.2}},
    {"Roll (Right/Left)", {0.2, 0.03}},
    {"Anti-Roll Regulator", {0.06, 10}},
}};

/// Response factors are shares of the way per 0.04 s.
struct Settings : CameraModes
{
    bool gyro = false; ///< the sphere takes the target's heading alone
    double spherePosition = 0.8;
    double sphereOrientation = 0.2;
    double cameraPosition = 1.0;
    double cameraOrientation = 1.0;
    double antiRoll = 0.05;
    std::array<ObserverSettings, kInputs> inputs = observerDefaults(kInputTable);
};

using S = Settings;
using I = Items<Settings>;

inline constexpr auto kItems = join(
    hideItems<S>("General Modes"),
    std::array{
        I::group("User Parameters"),
        I::checkBox<&S::gyro>("Enable Follow Sphere Gyro",
                              "Uses World Coordinates for the Follow Sphere Orientation"),
        I::spinner<&S::spherePosition>(
            "Follow Sphere Pos Resp Fact",
            "Following sphere's positional response factor for initial smoothness",
            {1e-8, 100, 0.0001}),
        I::spinner<&S::sphereOrientation>(
            "Follow Sphere Orient Resp Fact",
            "Following sphere's orientational response factor for initial smoothness",
            {1e-8, 100, 0.0001}),
        I::spinner<&S::cameraPosition>("Camera Pos Resp Fact",
                                       "Camera's positional response factor for initial smoothness",
                                       {1e-8, 1, 0.0001}),
        I::spinner<&S::cameraOrientation>(
            "Camera Orient Resp Fact",
            "The camera's orientational response factor for initial smoothness", {1e-8, 1, 0.0001}),
        I::spinner<&S::antiRoll>("Anti-Roll System Resp Fact",
                                 "Initial smoothness for the camera's Anti-Roll system",
                                 {1e-8, 1, 0.0001}),
        I::end(),
        I::group("Input Property Parameters"),
    },
    observerItems<S, &S::inputs>(kInputTable, kLive), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kNodes = targetNodes("SphereCam");

inline constexpr auto kInputRows = observerInputRows(kInputTable);
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputRows, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::spherecam
