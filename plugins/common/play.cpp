#include "plugins/common/play.h"

#include "plugins/common/world_normal.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs {

namespace {

/// Of the speed of an impact, what the slider leaves the wall with. By eye: one visible rebound.
constexpr double kRebound = 0.3;

/// An impact below this share of the slider's speed is none: friction alone makes it fall behind a
/// wall that pushes it, and rebounds from that would be a tremble.
constexpr double kLeastImpact = 0.25;

/// The point of the clearance nearest to one in its own coordinates, along its axes or its radius.
Vector3d held(Clearance shape, const Vector3d& local)
{
    if (shape == Clearance::Sphere)
        return length(local) > 1.0 ? normalise(local) : local;
    return {std::clamp(local.x, -1.0, 1.0), std::clamp(local.y, -1.0, 1.0),
            std::clamp(local.z, -1.0, 1.0)};
}

/// What a wall does to a velocity.
struct Impact
{
    Vector3d wall;    ///< velocity of the wall at the point of contact
    Vector3d outward; ///< of unit length
    bool allowRebounce;

    /// The wall takes what of the velocity goes into it, and gives its own. Answers the rebound.
    Vector3d apply(Vector3d& velocity) const
    {
        const double speed = dot(velocity - wall, outward);
        if (speed <= 0.0)
            return {};
        const bool rebounds = allowRebounce && speed > kLeastImpact * length(velocity);
        const Vector3d rebound = outward * (rebounds ? -kRebound * speed : 0.0);
        velocity += rebound - outward * speed;
        return rebound;
    }
};

} // namespace

void glide(Slider& slider, Clearance shape, const Matrix4& before, const Matrix4& now,
           const PlaySettings& settings, double dt)
{
    const Matrix4 toClearance = inverse(now);
    slider.position += slider.velocity * dt;
    slider.velocity *= 1.0 / (settings.dPlayFriction + 1.0);

    const Vector3d free = transformPoint(toClearance, slider.position);
    const Vector3d local = held(shape, free);
    slider.position = transformPoint(now, local);
    const Vector3d wall = (slider.position - transformPoint(before, local)) / dt;
    const auto meet = [&](const Vector3d& normal) {
        if (normal == Vector3d{})
            return;
        const Impact impact{wall, worldNormal(toClearance, normal), settings.bAllowRebounce};
        // It leaves the wall in the same frame, if only as far as the other one.
        const Vector3d left = slider.position + impact.apply(slider.velocity) * dt;
        slider.position = transformPoint(now, held(shape, transformPoint(toClearance, left)));
    };
    const Vector3d outside = free - local;
    if (shape == Clearance::Sphere) {
        meet(outside);
    } else {
        meet({outside.x, 0, 0});
        meet({0, outside.y, 0});
        meet({0, 0, outside.z});
    }
}

Vector3d heldInCone(const Vector3d& wanted, const Vector3d& rest, double halfAngle)
{
    const double along = dot(wanted, rest);
    const double angle = std::atan2(length(cross(wanted, rest)), along);
    if (angle <= halfAngle)
        return wanted;
    const Vector3d aside = normalise(wanted - rest * along);
    return normalise(rest * std::cos(halfAngle) + aside * std::sin(halfAngle));
}

} // namespace tvw::rgs
