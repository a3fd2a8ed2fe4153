/// The AutoZoomCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/camera_items.h"
#include "plugins/common/observer_input.h"
#include "plugins/common/target_camera.h"

namespace tvw::rgs::addon::horrorcam {

inline constexpr std::size_t kInputs = 1;

/// [1/50 of the distance per 0.04 s]
inline constexpr std::array<ObserverRow, kInputs> kInputTable{{{"Forw/Backw Transl", {0.4, 1}}}};

struct Settings : CameraModes
{
    std::array<ObserverSettings, kInputs> inputs = observerDefaults(kInputTable);
};

using S = Settings;
using I = Items<Settings>;

inline constexpr auto kItems =
    join(hideItems<S>("General Modes"), std::array{I::group("Input Property Parameters")},
         observerItems<S, &S::inputs>(kInputTable, kLive), std::array{I::end()});
static_assert(isSound(kItems));

inline constexpr auto kNodes = targetNodes("AutoZoomCam");
inline constexpr auto kInputRows = observerInputRows(kInputTable);
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputRows, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::horrorcam
