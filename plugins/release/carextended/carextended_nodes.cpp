#include "plugins/release/carextended/carextended_nodes.h"

#include "plugins/common/helper_meshes.h"
#include "plugins/common/vehicle_meshes.h"

#include <iterator>

namespace tvw::rgs::addon::carextended {

namespace {

constexpr CarRig kRig{};
constexpr double kRadiusMult = 0.95;

Matrix4 placed(const Vector3d& position, const Vector3d& scale)
{
    Matrix4 pose = scaled({}, scale);
    setTranslation(pose, position);
    return pose;
}

/// A child of the body has its place in body lengths.
Matrix4 onBody(const Vector3d& position, const Vector3d& scale)
{
    return placed(position / kRig.dCarLength, scale / kRig.dCarLength);
}

Matrix4 bodyPlace()
{
    const double length = kRig.dCarLength;
    return placed({0, kRig.dBodyHeight, 0}, {length, length, length});
}

/// At rest the wheel stands on the ground at y = 0.
template <std::size_t I>
Vector3d wheelPosition()
{
    const double height = kRig.dWheelRadiusRel[I] * kRadiusMult - kRig.dBodyHeight;
    return {kRig.dWheelX[I], height, kRig.dWheelZ[I]};
}

template <std::size_t I>
Matrix4 wheelPlace()
{
    const double radius = kRig.dWheelRadiusRel[I];
    const Matrix4 pose = onBody(wheelPosition<I>(), {kRig.dWheelWidth[I], radius, radius});
    return kRig.dWheelX[I] > 0 ? pose * rotationMatrix(180, 0, 1, 0) : pose;
}

template <std::size_t I>
Matrix4 relocatorPlace()
{
    const double radius = kRig.dWheelRadiusRel[I];
    return onBody(wheelPosition<I>(), {kRig.dWheelWidth[I], radius, radius});
}

template <std::size_t I>
Matrix4 centrePlace()
{
    return onBody(wheelPosition<I>(), {1, 1, 1});
}

Matrix4 targetPlace()
{
    return placed({0, 0, -8}, {1, 1, 1});
}
Matrix4 turnBasePlace()
{
    return onBody({0, -kRig.dBodyHeight, kRig.dWheelZ[2]}, {1, 1, 1});
}
Matrix4 gravityPlace()
{
    return placed({0, 2.5, 0}, {1, 1, 1});
}
Matrix4 basePlace()
{
    return onBody({0, -kRig.dBodyHeight, 0}, Vector3d{1, 1, 1} * kRig.dCarLength);
}
Matrix4 forcePlace()
{
    return onBody({0, 0.5, 2.0}, {1, 1, 1});
}

Matrix4 steeringPlace()
{
    return onBody({-0.35, 0.55, -0.35}, {0.18, 0.18, 0.18}) * rotationMatrix(-25, 1, 0, 0);
}

Matrix4 topViewPlace()
{
    return onBody({0, 12, 0}, {1, 1, 1}) * rotationMatrix(-90, 1, 0, 0);
}
Matrix4 driverPlace()
{
    return onBody({-0.35, 0.8, 0.1}, {1, 1, 1});
}
Matrix4 followPlace()
{
    return placed({0, 1.4, kRig.dWheelZ[2] + 7.0}, {1, 1, 1});
}

constexpr NodeRow child(std::string_view name, CMesh (*mesh)(), Matrix4 (*place)(), bool keyed,
                        Color color = kMovedColor)
{
    return {.prefix = {},
            .name = name,
            .mesh = mesh,
            .color = color,
            .parent = kCarBodyMesh,
            .place = place,
            .keyed = keyed};
}

constexpr NodeRow camera(std::string_view name, int parent, Matrix4 (*place)(), NodeGroup group)
{
    return {.prefix = {},
            .name = name,
            .mesh = &shape::camera,
            .color = kCameraColor,
            .parent = parent,
            .kind = nodekind::camera,
            .group = group,
            .place = place,
            .keyed = parent < 0};
}

#define WHEEL_SET(POSITION, I)                                                                     \
    child("WheelRelocatorMesh" POSITION, &shape::wheelRelocator, &relocatorPlace<I>, false,        \
          kReferenceColor),                                                                        \
        child("WheelMesh" POSITION, &shape::wheel, &wheelPlace<I>, true),                          \
        child("WheelCenterSuspensionMesh" POSITION, &shape::wheelSuspension, &centrePlace<I>,      \
              true),                                                                               \
        child("WheelCenterMesh" POSITION, &shape::wheelCentre, &centrePlace<I>, true)

constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "CarBodyMesh",
     .mesh = &shape::carBody,
     .place = &bodyPlace,
     .selected = true},
    child("ChassisRelocatorMesh", &shape::attachPlate, nullptr, false, kReferenceColor),
    {.prefix = {},
     .name = "TargetMesh",
     .mesh = &shape::target,
     .color = kReferenceColor,
     .place = &targetPlace,
     .keyed = false},
    WHEEL_SET("_FL", 0),
    WHEEL_SET("_FR", 1),
    WHEEL_SET("_BL", 2),
    WHEEL_SET("_BR", 3),
    child("TurnBaseMesh", &shape::turnBase, &turnBasePlace, true),
    child("SteeringWheelMesh", &shape::steeringWheel, &steeringPlace, true),
    {.prefix = {},
     .name = "GravityDirectionMesh",
     .mesh = &shape::gravityArrow,
     .color = kReferenceColor,
     .place = &gravityPlace,
     .keyed = false},
    child("CarBodyBaseMesh", &shape::basePlane, &basePlace, true),
    child("ExternalForceMesh", &shape::forceArrow, &forcePlace, false, kReferenceColor),
    camera("TopViewCam", kCarBodyMesh, &topViewPlace, NodeGroup::Third),
    camera("DriverCam", kCarBodyMesh, &driverPlace, NodeGroup::Second),
    camera("FollowCam", -1, &followPlace, NodeGroup::First),
};
#undef WHEEL_SET
static_assert(std::size(kNodes) == kNodeCount);

} // namespace

std::span<const NodeRow> nodeRows()
{
    return kNodes;
}

} // namespace tvw::rgs::addon::carextended
