/// The LookAtCam's switches and nodes.
#pragma once

#include "plugins/common/camera_items.h"
#include "plugins/common/helper_meshes.h"

namespace tvw::rgs::addon::lookatcam {

using Settings = CameraModes;
using I = Items<Settings>;

inline constexpr std::string_view kInitialize = "Initialize";

inline constexpr auto kItems =
    join(std::array{I::button(
             kInitialize, "Snaps camera to correct orientation and sets correct target distance.")},
         hideItems<Settings>("General Modes"));
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kTargetMesh, kLookAtCam };

/// A new camera stands off its target.
inline Matrix4 startPlace()
{
    Matrix4 place;
    setTranslation(place, {0, 0, 5});
    return place;
}

inline constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "TargetMesh",
     .mesh = &shape::target,
     .color = kReferenceColor,
     .keyed = false,
     .selected = true},
    {.prefix = {},
     .name = "LookAtCam",
     .mesh = &shape::camera,
     .color = kCameraColor,
     .kind = nodekind::camera,
     .group = NodeGroup::First,
     .place = &startPlace},
};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::lookatcam
