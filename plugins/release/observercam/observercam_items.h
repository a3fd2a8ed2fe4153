/// The ObserverCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/flying_camera.h"
#include "plugins/common/observer_flight.h"

namespace tvw::rgs::addon::observercam {

/// Behind those of the flight.
enum Input : std::size_t {
    kShaker = kFlightInputs,
    kWalkCycle,
    kTranslRegulator,
    kOrientRegulator,
    kSaveState,
    kAntiRoll,
    kInputs
};

/// Speeds [m/s] and [rad/s]; amplitudes [rad/s]. The regulators take the response factor alone, as
/// the share of the way to their goal.
inline constexpr std::array<ObserverRow, kInputs> kInputTable{{
    {"Forw/Backw Speed", {0.2, 5}},
    {"Right/Left Speed", {0.2, 5}},
    {"Up/Down Speed", {0.2, 5}},
    {"Yaw Speed (Right/Left)", {0.2, 1}},
    {"Pitch Speed (Up/Down)", {0.1, 1}},
    {"Roll Speed (Right/Left)", {0.2, 1}},
    {"Cam Shaker Amplitude", {0.9, 3}, true},
    {"Walk Cycle Amplitude", {0.9, 0.03}, true},
    {"Transl MemRegulator", {0.1, 30}, true},
    {"Orient MemRegulator", {0.1, 30}, true},
    {"Save MemReg State", {1, 1}, true},
    {"Anti-Roll Regulator", {0.2, 30}, true},
}};

struct Settings : FlyingSettings
{
    bool allowRoll = false;
    double shakerFadeOut = 0.2;      ///< share of the way per 0.04 s
    double walkCycleFadeOut = 0.3;   ///< share of the way per 0.04 s
    double walkCycleFrequency = 1.0; ///< [1/s]
    std::array<ObserverSettings, kInputs> inputs = observerDefaults(kInputTable);
};

using S = Settings;
using I = Items<Settings>;
inline constexpr Bounds kPositive{1e-8, 1e16, 0.001};

inline constexpr auto kItems =
    join(hideItems<S>("General Modes"),
         std::array{
             I::group("Camera Modes"),
             I::checkBox<&S::allowRoll>("Allow Roll", "Allow Roll"),
             I::end(),
             I::group("Camera Parameters"),
             kRelativeScaleItem<S>,
             I::spinner<&S::shakerFadeOut>("Shaker Fade Out Factor", "Shaker Fade Out Factor",
                                           kPositive, kLive),
             I::spinner<&S::walkCycleFadeOut>("Walk Cycle Fade Out Factor",
                                              "Walk Cycle Fade Out Factor", kPositive, kLive),
             I::spinner<&S::walkCycleFrequency>("Walk Cycle Frequency", "Walk Cycle Frequency",
                                                kPositive, kLive),
         },
         kLensItems<S>, std::array{I::end(), I::group("Input Property Parameters")},
         observerItems<S, &S::inputs>(kInputTable, kPlain), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kNodes = flyingNodes("ObserverCam");
inline constexpr auto kInputRows = observerInputRows(kInputTable);
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputRows, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::observercam
