/// The ActiveScaler's parameters, and the tables that show them.
#pragma once

#include "plugins/common/actuator_tool.h"

namespace tvw::rgs::addon::activescaler {

enum Channel : std::size_t { kForward, kRight, kUp };

inline constexpr std::array<std::string_view, 3> kChannelNames{"Forw/Backw Scale",
                                                               "Right/Left Scale", "Up/Down Scale"};

struct Settings : ActuatorToolSettings<3>
{
};

using S = Settings;
using I = Items<Settings>;

template <std::size_t Index>
constexpr auto channelItems()
{
    constexpr Bounds kScale{1e-08, 1e+16, 0.001};
    const actuator::ChannelRows<S, Index> channel{kChannelNames[Index]};
    return std::array{channel.response(), channel.minimum(kScale),
                      channel.maximum("The maximum value of the input.", kScale),
                      channel.changeLimit(), channel.keepState()};
}

inline constexpr std::array kItems = join(
    actuator::generalItems<S>(), std::array{I::end(), I::group("Input Property Parameters")},
    channelItems<kForward>(), channelItems<kRight>(), channelItems<kUp>(), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kInputs = actuator::inputRows(kChannelNames);
inline constexpr ToolSpec kSpec{.nodes = actuator::kNodes, .inputs = kInputs};

} // namespace tvw::rgs::addon::activescaler
