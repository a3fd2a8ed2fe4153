/// The LookAtCam's switches and nodes.
#pragma once

#include "plugins/common/camera_items.h"
#include "plugins/common/target_camera.h"

namespace tvw::rgs::addon::lookatcam {

using Settings = CameraModes;
using I = Items<Settings>;

inline constexpr std::string_view kInitialize = "Initialize";

inline constexpr auto kItems =
    join(std::array{I::button(
             kInitialize, "Snaps camera to correct orientation and sets correct target distance.")},
         hideItems<Settings>("General Modes"));
static_assert(isSound(kItems));

inline constexpr auto kNodes = targetNodes("LookAtCam");

inline constexpr ToolSpec kSpec{.nodes = kNodes, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::lookatcam
