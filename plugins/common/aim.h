/// Cameras that look at something, with a level horizon.
#pragma once

#include "util/matrix4.h"

#include <cmath>

namespace tvw::rgs {

/// The orientation that looks along `view`, of unit length, with its X axis horizontal. Straight up
/// or down, where every heading is level, it keeps `right`, the present X axis.
inline Matrix4 lookAlong(const Vector3d& view, const Vector3d& right)
{
    constexpr double kVertical = 1e-9;
    Vector3d x{-view.z, 0.0, view.x}; // view cross up
    if (length(x) < kVertical)
        x = right - view * dot(right, view);
    x = normalise(x);
    Matrix4 pose;
    pose.setAxis(0, x);
    pose.setAxis(1, cross(x, view));
    pose.setAxis(2, -view);
    return pose;
}

/// How far a camera is rolled off the horizon, positive to the left [rad].
inline double rollOf(const Quatd& orientation)
{
    return std::atan2(rotate(orientation, {1, 0, 0}).y, rotate(orientation, {0, 1, 0}).y);
}

} // namespace tvw::rgs
