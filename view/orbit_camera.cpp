#include "view/orbit_camera.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::view {

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kNearestTarget = 0.05;     // [m]
constexpr double kFarthestTarget = 1e6;     // [m]
constexpr double kHighest = kPi / 2 - 0.01; // short of the pole, where the heading is lost

} // namespace

void Box::add(const Vector3d& point)
{
    for (int i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], point[i]);
        high[i] = std::max(high[i], point[i]);
    }
}

void addNode(Box& box, const stage::StageNode& node, double time)
{
    const Matrix4 world = node.world(time);
    if (!node.mesh() || node.mesh()->mesh().vertex.empty()) {
        box.add(translationOf(world));
        return;
    }
    for (const Vector3d& corner : node.mesh()->mesh().vertex)
        box.add(transformPoint(world, corner));
}

Lens OrbitCamera::lens() const
{
    const double ch = std::cos(heading_);
    const double sh = std::sin(heading_);
    const double ce = std::cos(elevation_);
    const double se = std::sin(elevation_);
    const Vector3d back{sh * ce, se, ch * ce};
    const Vector3d right{ch, 0.0, -sh};
    Matrix4 world;
    world.setAxis(0, right);
    world.setAxis(1, cross(back, right));
    world.setAxis(2, back);
    setTranslation(world, target_ + back * distance_);
    return {world, kFov, stage::ViewAngle::Vertical};
}

void OrbitCamera::orbit(double right, double up)
{
    heading_ = std::remainder(heading_ - right * kPi, 2 * kPi);
    elevation_ = std::clamp(elevation_ + up * kPi, -kHighest, kHighest);
}

void OrbitCamera::pan(double right, double up)
{
    const Matrix4 world = lens().world;
    const double height = 2 * distance_ * std::tan(kFov * kPi / 360);
    target_ -= (world.axis(0) * right + world.axis(1) * up) * height;
}

void OrbitCamera::zoom(double steps)
{
    constexpr double kStep = 0.88;
    distance_ = std::clamp(distance_ * std::pow(kStep, steps), kNearestTarget, kFarthestTarget);
}

void OrbitCamera::frame(const Box& box)
{
    if (box.isEmpty())
        return;
    target_ = (box.low + box.high) / 2.0;
    const double radius = std::max(length(box.high - box.low) / 2, 0.25);
    constexpr double kAir = 1.1;
    distance_ =
        std::clamp(kAir * radius / std::sin(kFov * kPi / 360), kNearestTarget, kFarthestTarget);
}

void OrbitCamera::takeOver(const Lens& lens, double distance)
{
    const Vector3d back = orthonormalise(lens.world).axis(2);
    elevation_ = std::clamp(std::asin(std::clamp(back.y, -1.0, 1.0)), -kHighest, kHighest);
    heading_ = std::atan2(back.x, back.z);
    distance_ = std::clamp(distance, kNearestTarget, kFarthestTarget);
    target_ = translationOf(lens.world) - back * distance_;
}

} // namespace tvw::rgs::view
