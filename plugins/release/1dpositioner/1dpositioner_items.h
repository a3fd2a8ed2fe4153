/// The 1DPositioner's parameters, and the tables that show them.
#pragma once

#include "plugins/common/actuator_tool.h"

namespace tvw::rgs::addon::positioner {

inline constexpr std::array<std::string_view, 1> kChannelNames{"Forw/Backw Transl"};

struct Settings : ActuatorToolSettings<1>
{
};

using S = Settings;
using I = Items<Settings>;

inline constexpr std::array kItems =
    join(actuator::generalItems<S>(), std::array{I::end(), I::group("Input Property Parameters")},
         actuator::motionItems<S>(kChannelNames), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kInputs = actuator::inputRows(kChannelNames);
inline constexpr ToolSpec kSpec{.nodes = actuator::kNodes, .inputs = kInputs};

} // namespace tvw::rgs::addon::positioner
