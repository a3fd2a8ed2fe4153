/// The 1DRotator's parameters, and the tables that show them.
#pragma once

#include "plugins/common/actuator_tool.h"

#include <numbers>

namespace tvw::rgs::addon::rotator {

inline constexpr std::array<std::string_view, 1> kChannelNames{"Roll (Right/Left)"};

struct Settings : ActuatorToolSettings<1>
{
    constexpr Settings() { channels[0].maximum = std::numbers::pi / 2; }
};

using S = Settings;
using I = Items<Settings>;

inline constexpr std::array kItems =
    join(actuator::generalItems<S>(), std::array{I::end(), I::group("Input Property Parameters")},
         actuator::motionItems<S>(kChannelNames), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kInputs = actuator::inputRows(kChannelNames);
inline constexpr ToolSpec kSpec{.nodes = actuator::kNodes, .inputs = kInputs};

} // namespace tvw::rgs::addon::rotator
