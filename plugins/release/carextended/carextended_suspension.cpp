/// The vertical half of the sub-step: springs, heave, pitch, roll.
#include "plugins/release/carextended/carextended_CCarCam.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon::carextended {

namespace {

constexpr double kMassUnit = 25.0;    // kg per "Mass Multiplier", tuned
constexpr double kLeastMass = 0.01;   // of the multiplier: no division by zero
constexpr double kGravityUnit = 10.0; // m/s^2 per "Gravity", in the body's own balance
constexpr double kLoadLever = 0.25;   // of the body's length, tuned

} // namespace

double CCarCam::mass() const
{
    return std::max(p.dMassMult, kLeastMass) * kMassUnit;
}

/// Of the centre of mass over the plane.
double CCarCam::massHeight() const
{
    return p.rig.dCarLength / 6 + heave.value + p.rig.dBodyHeight - p.meanRadius();
}

/// No wheel has ground within its travel.
bool CCarCam::flies() const
{
    return std::all_of(m.outOfReach.begin(), m.outOfReach.end(), [](auto out) { return out != 0; });
}

SpringLoad CCarCam::springs(double h)
{
    std::array<SprungWheel, kWheels> wheels;
    for (std::size_t i = 0; i < kWheels; ++i) {
        CarWheel& wheel = m.wheel[i];
        const bool front = i < 2;
        const double stiffness = (front ? p.fStiffnessFront : p.fStiffnessBack) * stiffening_;
        const double damping = (front ? p.fDampingFront : p.fDampingBack) * stiffening_;
        const double velocity = (wheel.fSuspZeroDiff - wheel.fSuspZeroDiff_prev) / h;
        wheel.dSpringForce = springForce(wheel.fSuspZeroDiff, velocity, stiffness, damping);
        wheels[i] = {p.rig.dWheelX[i], p.rig.dWheelZ[i], wheel.dSpringForce};
    }
    return springLoad(wheels);
}

void CCarCam::heaveBody(const SpringLoad& load, double h)
{
    if (flies()) {
        settleInFlight(heave, p.dLandingNeutralizer, h);
        return;
    }
    const double limit = p.wheels.fRelMaxBumperLen * p.radius(0) * 0.9;
    const double force = in(EXTERNAL_FORCE).dValue * p.rig.dCarLength * scene.force.direction.y;
    const double before = vAcceleration.x;
    const bool atLimit = moveVerlet(heave, before, limit, h);
    vAcceleration.x = (load.force + force - mass() * m.vLocalAccel.y) / mass();
    finishVerlet(heave, before, vAcceleration.x, atLimit, h);
}

void CCarCam::pitchBody(const SpringLoad& load, double h)
{
    if (flies()) {
        settleInFlight(pitch, p.dLandingNeutralizer, h);
        return;
    }
    const double length = p.rig.dCarLength;
    const double weight = p.fGravity * kGravityUnit * mass() * length * kLoadLever;
    const Vector3d gravity = rotate(conjugate(m.qBodyRot), scene.vGravityDir);
    const double pull = pitchMomentOf(scene.force) * in(EXTERNAL_FORCE).dValue * length * length;
    const double before = vAcceleration.y;
    const bool atLimit = moveVerlet(pitch, before, p.dMaximumForwardTiltAngle, h);
    const double moment = -(load.pitchMoment + pull) + burnoutMoment_ +
                          weight * massHeight() * gravity.z -
                          mass() * m.vLocalAccel.z * massHeight();
    vAcceleration.y = moment / (mass() / 6 * length * length);
    finishVerlet(pitch, before, vAcceleration.y, atLimit, h);
}

void CCarCam::rollBody(const SpringLoad& load, double h)
{
    if (flies()) {
        settleInFlight(roll, p.dLandingNeutralizer, h);
        return;
    }
    const double length = p.rig.dCarLength;
    const double weight = p.fGravity * kGravityUnit * mass() * length * kLoadLever;
    const Vector3d gravity = rotate(conjugate(m.qBodyRot), scene.vGravityDir);
    const double pull = rollMomentOf(scene.force) * in(EXTERNAL_FORCE).dValue * length * length;
    const double before = vAcceleration.z;
    const bool atLimit = moveVerlet(roll, before, p.dMaximumSideTiltAngle, h);
    const double moment = -(pull + load.rollMoment) + mass() * m.vLocalAccel.x * massHeight() -
                          weight * massHeight() * gravity.x;
    vAcceleration.z = moment / (mass() / 6 * length * length);
    finishVerlet(roll, before, vAcceleration.z, atLimit, h);
}

/// A tilted body swings its wheels a little outward, forward and back.
void CCarCam::placeBodyAndWheels()
{
    const Quatd tilt = attitude(pitch.value, roll.value);
    m.qBodyRot = tilt * m.qCarRot;
    m.vBodyPos = m.vCarPos + rotate(m.qBodyRot, Vector3d{0, heave.value + p.rig.dBodyHeight, 0});
    for (std::size_t i = 0; i < kWheels; ++i) {
        CarWheel& wheel = m.wheel[i];
        const Vector3d spoke{0, p.radius(i), 0};
        const Vector3d local{p.rig.dWheelX[i] * (1 + std::abs(std::sin(roll.value)) / 6),
                             wheel.dWheelHeight + wheel.dGravelOffset,
                             p.rig.dWheelZ[i] + rotate(tilt, spoke).z};
        wheel.vWorldPos = m.vCarPos + rotate(m.qCarRot, local);
        wheel.vBottom = wheel.vWorldPos - rotate(m.qBodyRot, spoke);
    }
}

void CCarCam::compressSprings()
{
    const Quatd intoBody = conjugate(m.qBodyRot);
    for (std::size_t i = 0; i < kWheels; ++i) {
        CarWheel& wheel = m.wheel[i];
        const Vector3d mount =
            m.vBodyPos + rotate(m.qBodyRot, Vector3d{p.rig.dWheelX[i], 0, p.rig.dWheelZ[i]});
        wheel.fSuspZeroDiff_prev = wheel.fSuspZeroDiff;
        wheel.fSuspZeroDiff =
            rotate(intoBody, mount - wheel.vWorldPos).y - (p.rig.dBodyHeight - p.radius(i));
    }
}

Vector3d CCarCam::guardBody()
{
    guardedBody_ = m.vBodyPos;
    if (!(p.radius(0) * 0.1 < p.rig.dBodyHeight))
        return guardedBody_;
    const Vector3d bottoms =
        (m.wheel[0].vBottom + m.wheel[1].vBottom + m.wheel[2].vBottom + m.wheel[3].vBottom) / 4.0;
    const double above = rotate(conjugate(m.qBodyRot), m.vBodyPos - bottoms).y;
    const double least = p.rig.dBodyHeight * p.dMinGroundDistance;
    if (above < least)
        guardedBody_ += rotate(m.qBodyRot, Vector3d{0, least - above, 0});
    return guardedBody_;
}

} // namespace tvw::rgs::addon::carextended
