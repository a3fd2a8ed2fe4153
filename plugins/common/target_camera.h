/// The nodes of a camera with a target.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/scene_node.h"

#include <array>

namespace tvw::rgs {

enum TargetCameraNode : std::size_t { kTargetMesh, kTargetCamera };

/// A new camera stands off its target.
inline Matrix4 offTarget()
{
    Matrix4 place;
    setTranslation(place, {0, 0, 5});
    return place;
}

constexpr std::array<NodeRow, 2> targetNodes(std::string_view camera)
{
    return {NodeRow{.prefix = {},
                    .name = "TargetMesh",
                    .mesh = &shape::target,
                    .color = kReferenceColor,
                    .keyed = false,
                    .selected = true},
            NodeRow{.prefix = {},
                    .name = camera,
                    .mesh = &shape::camera,
                    .color = kCameraColor,
                    .kind = nodekind::camera,
                    .group = NodeGroup::First,
                    .place = &offTarget}};
}

} // namespace tvw::rgs
