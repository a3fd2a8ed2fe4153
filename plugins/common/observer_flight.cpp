#include "plugins/common/observer_flight.h"

#include <cmath>

namespace tvw::rgs {

namespace {

constexpr Vector3d kVertical{0, 1, 0};

Quatd turnAbout(const Vector3d& axis, double angle)
{
    return fromRotationVector(axis * angle);
}

FlightAxes levelAxes(const Vector3d& X, const Vector3d& Y, const Vector3d& Z)
{
    constexpr double kUpright = 1e-6; // sine of the angle to the vertical
    FlightAxes axes{.forward = {}, .right = {X.x, 0, X.z}, .up = kVertical};
    axes.right = normalise(axes.right);
    const Vector3d back{Z.x, 0, Z.z};
    if (length(back) < kUpright) // straight up or down
        axes.forward = normalise(cross(kVertical, axes.right));
    else
        axes.forward = normalise(back) * (Y.y < 0.0 ? 1.0 : -1.0);
    return axes;
}

} // namespace

FlightAxes flightAxes(const Quatd& orientation, bool level)
{
    const Vector3d X = rotate(orientation, {1, 0, 0});
    const Vector3d Y = rotate(orientation, {0, 1, 0});
    const Vector3d Z = rotate(orientation, {0, 0, 1});
    return level ? levelAxes(X, Y, Z) : FlightAxes{.forward = -Z, .right = X, .up = Y};
}

Vector3d velocityOf(const FlightSpeeds& speeds, const FlightAxes& axes)
{
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
