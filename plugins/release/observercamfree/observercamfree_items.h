/// The ObserverCam Free's inputs and switches.
#pragma once

#include "plugins/common/flying_camera.h"
#include "plugins/common/observer_flight.h"

namespace tvw::rgs::addon::observercamfree {

inline constexpr std::size_t kInputs = kRoll; ///< those of the flight, without roll

/// [m/s] and [rad/s]
inline constexpr std::array<ObserverRow, kInputs> kInputTable{{
    {"Move Forw/Backw", {0.2, 5}},
    {"Move Right/Left", {0.2, 5}},
    {"Move Up/Down", {0.2, 5}},
    {"Rotate Right/Left", {0.2, 1}},
    {"Rotate Up/Down", {0.1, 1}},
}};

/// Scale and lens have no items: the camera keeps its own lens.
using Settings = FlyingSettings;

inline constexpr auto kSettings = observerDefaults(kInputTable);
inline constexpr auto kItems = hideItems<Settings>("Hide Modes");
static_assert(isSound(kItems));

inline constexpr auto kNodes = flyingNodes("ObserverCam");
inline constexpr auto kInputRows = observerInputRows(kInputTable);
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputRows, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::observercamfree
