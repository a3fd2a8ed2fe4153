/// The DirectInputLink's parameters, and the tables that show them.
#pragma once

#include "plugins/common/actuator_tool.h"

#include <numbers>

namespace tvw::rgs::addon::directinputlink {

enum Channel : std::size_t { kForward, kRight, kUp, kYaw, kPitch, kRoll };

inline constexpr std::array<std::string_view, 6> kChannelNames{
    "Forw/Backw Transl", "Right/Left Transl", "Up/Down Transl",
    "Yaw (Right/Left)",  "Pitch (Up/Down)",   "Roll (Right/Left)"};

struct Settings : ActuatorToolSettings<6>
{
    bool hideCamera = false;

    constexpr Settings()
    {
        ActuatorParameters turning;
        turning.maximum = std::numbers::pi / 2;
        for (const Channel turn : {kYaw, kPitch, kRoll})
            channels[turn] = turning;
    }
};
// GCC 12 drops the other members' defaults where a constructor sets a single member of an element.
static_assert(Settings{}.channels[kYaw].responseFactor == ActuatorParameters{}.responseFactor);

inline constexpr std::string_view kHideCamera = "Hide Camera";

using S = Settings;
using I = Items<Settings>;

inline constexpr std::array kGroupItems{
    I::checkBox<&S::hideCamera>(kHideCamera, kHideCamera, kHeard),
    I::end(),
    I::group("Input Property Parameters"),
};
inline constexpr std::array kItems =
    join(actuator::generalItems<S>(), kGroupItems, actuator::motionItems<S>(kChannelNames),
         std::array{I::end()});
static_assert(isSound(kItems));

/// The camera rides on the actuator; what is keyed is that.
inline constexpr NodeRow kNodes[] = {
    actuator::kCageRow,
    actuator::kActuatorRow,
    {.prefix = {},
     .name = "Camera",
     .mesh = &shape::camera,
     .color = kCameraColor,
     .parent = actuator::kActuator,
     .kind = nodekind::camera,
     .group = NodeGroup::First,
     .keyed = false},
};

inline constexpr HideSwitch kSwitches[] = {
    hideSwitch<S, &S::hideCamera>(kHideCamera, NodeGroup::First),
};

inline constexpr auto kInputs = actuator::inputRows(kChannelNames);
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputs, .switches = kSwitches};

} // namespace tvw::rgs::addon::directinputlink
