/// The AngularPlay's tables.
#pragma once

#include "plugins/common/play_tool.h"

namespace tvw::rgs::addon::angularplay {

struct Settings : GeneralModes
{
};

inline constexpr std::string_view kInitialize = "Initialize";

using I = Items<Settings>;

inline constexpr std::array kInitialItems{
    I::group("Initialization"),
    I::button(kInitialize, "Sets the AngularPlay's initial relative positions and scales"),
    I::end(),
};
inline constexpr std::array kItems = join(kInitialItems, play::generalItems<Settings>());
static_assert(isSound(kItems));

inline constexpr NodeRow kNodes[] = {
    play::outerRow("AngularPlay", &shape::coneClearance),
    play::sliderRow(&shape::pointer),
};
inline constexpr ToolSpec kSpec{.nodes = kNodes};

} // namespace tvw::rgs::addon::angularplay
