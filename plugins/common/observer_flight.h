/// How a free camera moves by six speeds: level, as a person would carry it, or about its own axes.
///
/// Level: forward and sideways are horizontal, up is the parent's +Y, yaw turns about that axis and
/// pitch about the camera's own X; there is no roll. Each turn is composed exactly, so that the
/// horizon stays level however long the camera pans. Otherwise all six go along the camera's axes.
#pragma once

#include "plugins/common/flying_body.h"
#include "plugins/common/observer_input.h"

#include <span>

namespace tvw::rgs {

/// Linear [m/s]: forward -Z, right +X, up +Y. Angular [rad/s], each positive as it is named.
struct FlightSpeeds
{
    double forward = 0.0, right = 0.0, up = 0.0;
    double yawRight = 0.0, pitchUp = 0.0, rollRight = 0.0;
};

/// Of a camera of this orientation [m/s], in the parent's axes.
Vector3d flightVelocity(const Quatd& orientation, const FlightSpeeds& speeds, bool level);

/// The orientation after the turns of dt [s].
Quatd turned(const Quatd& orientation, const FlightSpeeds& speeds, bool level, double dt);

/// The first inputs of such a camera; one without roll has the first five.
enum FlightInput : std::size_t { kForward, kRight, kUp, kYaw, kPitch, kRoll, kFlightInputs };

struct FlightInputs
{
    std::span<ObserverInput> inputs;
    std::span<const ObserverSettings> settings;
    double scale; ///< of the linear speeds
    bool level;

    FlightSpeeds speeds() const;

    /// The inputs go on with the speed and its slope that the body had in its last steps of h [s].
    void launchLinear(const FlyingBody& body, double h) const;
    void launchAngular(const FlyingBody& body, double h) const;
};

} // namespace tvw::rgs
