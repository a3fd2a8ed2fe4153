#include "plugins/common/observer_flight.h"

#include <cmath>

namespace tvw::rgs {

namespace {

constexpr Vector3d kVertical{0, 1, 0};

/// The unit directions of the linear speeds.
struct FlightAxes
{
    Vector3d forward, right, up;
};

/// fromRotationVector(axis * angle), to the bit, for an axis of the space: its length needs no
/// root.
Quatd turnAbout(const Vector3d& axis, double angle)
{
    constexpr double kLeast = 1e-150; // its square is a normal number
    const double size = std::abs(angle);
    if (!(size > kLeast))
        return fromRotationVector(axis * angle);
    const Vector3d v = axis * angle * (1.0 / size) * std::sin(size / 2.0);
    return {v.x, v.y, v.z, std::cos(size / 2.0)};
}

FlightAxes levelAxes(const Vector3d& X, const Vector3d& Y, const Vector3d& Z)
{
    constexpr double kUpright = 1e-6; // sine of the angle to the vertical
    const Vector3d right = normalise(Vector3d{X.x, 0, X.z});
    const Vector3d back{Z.x, 0, Z.z};
    const double flat = length(back);
    if (flat < kUpright) // straight up or down
        return {.forward = normalise(cross(kVertical, right)), .right = right, .up = kVertical};
    const double forth = Y.y < 0.0 ? 1.0 : -1.0;
    return {.forward = back * (1.0 / flat) * forth, .right = right, .up = kVertical};
}

FlightAxes flightAxes(const Quatd& orientation, bool level)
{
    const Matrix4 own = toMatrix(orientation);
    const Vector3d X = own.axis(0);
    const Vector3d Y = own.axis(1);
    const Vector3d Z = own.axis(2);
    return level ? levelAxes(X, Y, Z) : FlightAxes{.forward = -Z, .right = X, .up = Y};
}

} // namespace

Vector3d flightVelocity(const Quatd& orientation, const FlightSpeeds& speeds, bool level)
{
    const FlightAxes axes = flightAxes(orientation, level);
    return axes.forward * speeds.forward + axes.right * speeds.right + axes.up * speeds.up;
}

Quatd turned(const Quatd& orientation, const FlightSpeeds& speeds, bool level, double dt)
{
    if (!level) {
        const Vector3d own{speeds.pitchUp, -speeds.yawRight, -speeds.rollRight};
        return normalise(fromRotationVector(own * dt) * orientation);
    }
    const Quatd pitch = turnAbout({1, 0, 0}, speeds.pitchUp * dt);
    const Quatd yaw = turnAbout(kVertical, -speeds.yawRight * dt);
    return normalise(pitch * orientation * yaw);
}

FlightSpeeds FlightInputs::speeds() const
{
    return {.forward = inputs[kForward].output * scale,
            .right = inputs[kRight].output * scale,
            .up = inputs[kUp].output * scale,
            .yawRight = inputs[kYaw].output,
            .pitchUp = inputs[kPitch].output,
            .rollRight = inputs.size() > kRoll ? inputs[kRoll].output : 0.0};
}

void FlightInputs::launchLinear(const FlyingBody& body, double h) const
{
    const FlightAxes axes = flightAxes(body.pose().rotation, level);
    const Vector3d now = body.velocity(h) / scale;
    const Vector3d before = body.velocity(h, 1) / scale;
    const auto launch = [&](FlightInput input, const Vector3d& axis) {
        inputs[input].launch(dot(now, axis), dot(before, axis), settings[input], h);
    };
    launch(kForward, axes.forward);
    launch(kRight, axes.right);
    launch(kUp, axes.up);
}

void FlightInputs::launchAngular(const FlyingBody& body, double h) const
{
    const FlightAxes axes = flightAxes(body.pose().rotation, false);
    const Vector3d now = body.angularVelocity(h);
    const Vector3d before = body.angularVelocity(h, 1);
    const auto launch = [&](FlightInput input, const Vector3d& axis) {
        inputs[input].launch(dot(now, axis), dot(before, axis), settings[input], h);
    };
    launch(kYaw, level ? -kVertical : -axes.up);
    launch(kPitch, axes.right);
    if (inputs.size() > kRoll)
        launch(kRoll, level ? Vector3d{} : axes.forward);
}

} // namespace tvw::rgs
