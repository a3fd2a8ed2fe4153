/// The RectangularPlay's tables.
#pragma once

#include "plugins/common/play_tool.h"

namespace tvw::rgs::addon::rectangularplay {

inline constexpr std::array kItems =
    play::glidingItems("RectangularPlay Parameters", "Play Wall Friction");
static_assert(isSound(kItems));

inline constexpr NodeRow kNodes[] = {
    play::outerRow("RectanglePlay", &shape::boxClearance),
    play::sliderRow(&shape::slider),
};
inline constexpr ToolSpec kSpec{.nodes = kNodes};

} // namespace tvw::rgs::addon::rectangularplay
