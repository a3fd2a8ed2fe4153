/// The four-wheeler's scene nodes.
#pragma once

#include "plugins/common/scene_node.h"
#include "plugins/release/carextended/carextended_parameters.h"

#include <span>

namespace tvw::rgs::addon::carextended {

/// Rows of the table. Of each of the four wheel kinds this is the front left's row: `wheelRow`.
enum NodeIndex : std::size_t {
    kCarBodyMesh,
    kChassisRelocatorMesh,
    kTargetMesh,
    kWheelRelocatorMesh,
    kWheelMesh,
    kWheelCenterSuspensionMesh,
    kWheelCenterMesh,
    kTurnBaseMesh = kWheelRelocatorMesh + 4 * kWheels,
    kSteeringWheelMesh,
    kGravityDirectionMesh,
    kCarBodyBaseMesh,
    kExternalForceMesh,
    kTopViewCam,
    kDriverCam,
    kFollowCam,
    kNodeCount
};

/// The row of wheel i's node of a kind.
constexpr std::size_t wheelRow(NodeIndex kind, std::size_t i)
{
    return kind + 4 * i;
}

std::span<const NodeRow> nodeRows();

} // namespace tvw::rgs::addon::carextended
