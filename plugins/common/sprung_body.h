/// The body on its springs: heave, pitch and roll over the plane in which the wheels stand.
///
/// Axes of the body: +X right, +Y up, -Z forward. A positive pitch lifts the nose, a positive roll
/// lifts the right side. Lengths in metres, angles in rad, times in s; the masses and stiffnesses
/// are the model's own, not those of a real car.
#pragma once

#include "util/quat.h"
#include "util/vector3.h"

#include <span>

namespace tvw::rgs {

/// One degree of freedom: value and rate.
struct SprungAxis
{
    double value = 0.0;
    double rate = 0.0;
};

/// A spring's pull at one wheel.
/// compression: the mount above its rest [m]; velocity: of the compression [m/s]. Positive lifts.
constexpr double springForce(double compression, double velocity, double stiffness, double damping)
{
    return -stiffness * compression - damping * velocity;
}

/// The first half of a velocity Verlet step: the value moves by the old acceleration and is held to
/// +-limit. True when the limit bit: the caller's `finishVerlet` then stops the rate.
bool moveVerlet(SprungAxis& axis, double oldAcceleration, double limit, double h);

/// The second half: the rate takes the mean of both accelerations.
void finishVerlet(SprungAxis& axis, double oldAcceleration, double acceleration, bool atLimit,
                  double h);

/// In flight springs and load are gone: value and rate die away. neutralizer: what is left of the
/// value after 0.003 s; of the rate half is left.
void settleInFlight(SprungAxis& axis, double neutralizer, double h);

/// A force on the body from outside. Both in the body's own frame.
struct ExternalForce
{
    Vector3d direction; ///< of unit length
    Vector3d point;     ///< [m]
};

/// The wheels' pull on the body, summed. The moments have the sign of the compressions that make
/// them: the body turns against them.
struct SpringLoad
{
    double force = 0.0;       ///< upward
    double pitchMoment = 0.0; ///< sum of z F
    double rollMoment = 0.0;  ///< sum of -x F
};

struct SprungWheel
{
    double x, z;  ///< of the mount in the body [m]
    double force; ///< `springForce`
};

SpringLoad springLoad(std::span<const SprungWheel> wheels);

/// The moments of a force of unit size, counted like those of the springs.
constexpr double pitchMomentOf(const ExternalForce& f)
{
    return f.point.z * f.direction.y - f.point.y * f.direction.z;
}
constexpr double rollMomentOf(const ExternalForce& f)
{
    return f.point.y * f.direction.x - f.point.x * f.direction.y;
}

/// The rotation of the body over the plane: roll first, pitch after it.
Quatd attitude(double pitch, double roll);

} // namespace tvw::rgs
