/// Mechanical play: a loose part inside a clearance, which pushes it only where it touches.
///
/// A clearance is the frame of its node: walls stand at 1 in its own coordinates, so that the
/// node's scale is the half size. It moves as the user moves it; velocities are those in the world.
#pragma once

#include "util/matrix4.h"

#include <numbers>

namespace tvw::rgs {

struct PlaySettings
{
    double dPlayFriction = 0.05; ///< a tick leaves 1 / (1 + this) of the velocity
    bool bAllowRebounce = false; ///< a wall throws the slider back a little
};

struct Slider
{
    Vector3d position;
    Vector3d velocity; ///< [units/s]
};

enum class Clearance { Box, Sphere };

/// One frame of dt [s]. before, now: the clearance's world matrices of the last frame and of this
/// one.
void glide(Slider& slider, Clearance shape, const Matrix4& before, const Matrix4& now,
           const PlaySettings& settings, double dt);

inline constexpr double kPlayCone = std::numbers::pi / 4; ///< [rad] to each side

/// The direction that lies nearest to `wanted` in the cone round `rest`; all of unit length.
Vector3d heldInCone(const Vector3d& wanted, const Vector3d& rest, double halfAngle);

} // namespace tvw::rgs
