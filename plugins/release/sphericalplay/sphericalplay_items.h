/// The SphericalPlay's tables.
#pragma once

#include "plugins/common/play_tool.h"

namespace tvw::rgs::addon::sphericalplay {

inline constexpr std::array kItems =
    play::glidingItems("SphericalPlay Parameters", "Play Friction");
static_assert(isSound(kItems));

inline constexpr NodeRow kNodes[] = {
    play::outerRow("SphericPlay", &shape::sphereClearance),
    play::sliderRow(&shape::slider),
};
inline constexpr ToolSpec kSpec{.nodes = kNodes};

} // namespace tvw::rgs::addon::sphericalplay
