#include "plugins/release/carextended/carextended_CCarCam.h"

#include "plugins/common/spin_keys.h"
#include "util/filters.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon::carextended {

namespace {

constexpr double kSubStep = 0.003;                   // [s]
constexpr double kMostSteering = 1.5707649108683606; // [rad], just short of a quarter turn
constexpr double kLeastGas = 1e-8;                   // keeps the turn radius defined
constexpr double kStraight = 1e45;                   // [m], the radius of a straight line

double sign(double value)
{
    return value < 0.0 ? -1.0 : 1.0;
}

Quatd yawQuat(double angle)
{
    return {0, std::sin(angle / 2), 0, std::cos(angle / 2)};
}

int subStepCount(double dt)
{
    return std::max(1, static_cast<int>(std::min(dt / kSubStep, 1e6)));
}

} // namespace

double subStepLength(double dt)
{
    return dt / subStepCount(dt);
}

void CCarCam::seed(std::int32_t adder)
{
    randomValue_gravelShake += adder;
    randomValue_burnout += adder;
    randomValue_steeringNoise += adder;
}

void CCarCam::prepare(const Vector3d& bodyOrigin, const std::array<WheelPlace, kWheels>& places)
{
    std::array<Vector3d, kWheels> bottom;
    for (std::size_t i = 0; i < kWheels; ++i)
        bottom[i] = places[i].centre - places[i].up * p.radius(i);
    const Vector3d back = (bottom[2] + bottom[3]) - (bottom[0] + bottom[1]);
    const Vector3d right = (bottom[1] + bottom[3]) - (bottom[0] + bottom[2]);
    Matrix4 frame;
    frame.setAxis(2, normalise(back));
    frame.setAxis(1, normalise(cross(back, right)));
    frame.setAxis(0, cross(frame.axis(1), frame.axis(2)));
    m.qCarRot = m.qBodyRot = m.qLevelRot = toQuat(frame);
    const Vector3d middle = (bottom[0] + bottom[1] + bottom[2] + bottom[3]) / 4.0;
    p.rig.dBodyHeight = dot(bodyOrigin - middle, frame.axis(1));
    m.vBodyPos = bodyOrigin;
    m.vCarPos = bodyOrigin - frame.axis(1) * p.rig.dBodyHeight;
    QGravityFilterMem = m.qCarRot;
    for (std::size_t i = 0; i < kWheels; ++i) {
        unit[i].settle(places[i].centre, bottom[i]);
        CarWheel& wheel = m.wheel[i];
        wheel.vWorldPos = wheel.vWorldPosPrev = places[i].centre;
        wheel.vBottom = bottom[i];
        wheel.dWheelHeight = rotate(conjugate(m.qCarRot), places[i].centre - m.vCarPos).y;
    }
}

void CCarCam::startMoving(double gas, double dt)
{
    in(GAS_PEDAL).dValue = m.dBrakeGasVal = gas;
    const Vector3d forward = rotate(m.qCarRot, Vector3d{0, 0, -1});
    qTransCarAbsIncr.translation = forward * (gas * p.rig.dCarLength * subStepLength(dt));
    m.vPreviousIncr = qTransCarAbsIncr.translation;
}

double CCarCam::steerAngle() const
{
    return std::clamp(in(STEERING_WHEEL).dValue, -kMostSteering, kMostSteering);
}

double CCarCam::turnBaseZ() const
{
    return turnGeometry().backAxle * p.rig.halfLengthZ();
}

void CCarCam::prepareWheels(double dt)
{
    steerWheels(turnGeometry(), dt);
    for (CarWheel& wheel : m.wheel)
        wheel.dYawPrev = wheel.dYaw;
}

void CCarCam::followTarget(const Vector3d& target, double dt)
{
    const FollowerLimits limits{
        .gasMaximum = in(GAS_PEDAL).dMaximum,
        .steeringMaximum = in(STEERING_WHEEL).dMaximum,
        .steeringRate = p.dVelRelMaxSteeringChangeVel,
        .radiusReduction = p.dSpeedDependentTurnRadiusReductionFactor,
        .bodyLength = p.rig.dCarLength,
    };
    const Vector3d front = m.vBodyPos + rotate(m.qBodyRot, Vector3d{0, 0, p.rig.halfLengthZ()});
    const Vector3d toTarget = rotate(conjugate(m.qBodyRot), target - front);
    const bool reached = follower.follow(toTarget, p.follow, limits, dt);
    in(GAS_PEDAL).dValue = follower.dFollowAccMem;
    if (reached)
        in(ABS_BRAKE).dInput = 1.0;
    else
        in(STEERING_WHEEL).dValue = follower.dAutoSteeringValueMem;
}

void CCarCam::update(double dt)
{
    for (CarWheel& wheel : m.wheel) {
        wheel.dPitchIncr = 0.0;
        wheel.dYawPrev = wheel.dYaw;
    }
    burnoutMoment_ = 0.0;
    keepWheelHeights();
    updateInAir(dt);
    updateSkidBrake(dt);
    updateSkiddingState();
    updateInputs(dt);
    updateBooster(dt);
    updateAbsBrake(dt);
    updateGravel(dt);
    m.vPreviousIncr = qTransCarAbsIncr.translation;
    const int steps = subStepCount(dt);
    for (int i = 0; i < steps; ++i)
        subStep(dt / steps);
}

/// The plane was laid onto the wheels after they were measured: where they stand in it now.
void CCarCam::keepWheelHeights()
{
    const Vector3d up = rotate(m.qBodyRot, Vector3d{0, 1, 0});
    for (std::size_t i = 0; i < kWheels; ++i) {
        const double shaken = m.inTheAir[i] ? 0.0 : m.wheel[i].dGravelOffset;
        const Vector3d centre = unit[i].memory.bottom + up * (p.radius(i) - shaken);
        wheelHeight_[i] = rotate(conjugate(m.qCarRot), centre - m.vCarPos).y;
    }
}

void CCarCam::subStep(double h)
{
    keepMoving();
    const TurnGeometry turn = turnGeometry();
    if (bCarInTheAir && p.bGravityOn) {
        m.qCarRot = qTransCarAbsIncr.rotation * m.qCarRot;
    } else {
        const double swing = burnoutYaw(h); // of the tail, before the burnout fades
        yawTowards(turn, swing, h);
        burnOut(h);
        blendWithGrip(plannedIncrement(turn, swing, h), h);
    }
    moveAlongPlane(h);
    steerWheels(turn, h);
    const SpringLoad load = springs(h);
    heaveBody(load, h);
    pitchBody(load, h);
    rollBody(load, h);
    placeBodyAndWheels();
    compressSprings();
}

void CCarCam::keepMoving()
{
    double& gas = in(GAS_PEDAL).dValue;
    if (std::abs(gas) < kLeastGas)
        gas = sign(gas) * kLeastGas;
}

CCarCam::TurnGeometry CCarCam::turnGeometry() const
{
    const double length = p.rig.dCarLength;
    const double backAxle = p.dTurnBase - p.rig.dWheelZ[2] / (length / 2);
    const double tangent = std::tan(steerAngle());
    double radius = tangent != 0.0 ? (1 - backAxle) * p.rig.halfLengthZ() / tangent : -kStraight;
    radius = sign(radius) * std::clamp(std::abs(radius), 0.01 * length, kStraight);
    return {radius, backAxle};
}

double CCarCam::burnoutYaw(double h) const
{
    return -in(BURNOUT).dValue * in(STEERING_WHEEL).dValue * h;
}

double CCarCam::yawAlongPath(const TurnGeometry& turn, double swing, double h) const
{
    if (bSkidBreakingOn)
        return dSkidBrakeLocalYawIncr;
    return h * speed() / turn.radius + swing + dSkidBrakeLocalYawIncr;
}

/// Skidding makes the yaw lag behind the steering.
void CCarCam::yawTowards(const TurnGeometry& turn, double swing, double h)
{
    double g = grip();
    if (g > 0.7) {
        response(g, 1.0, 0.2, h);
        if (g > 0.99)
            g = 1.0;
    }
    response(fCarLocalYawIncr, yawAlongPath(turn, swing, h), g, h);
}

/// What the wheels ask for in this sub-step.
CCarCam::PlannedIncrement CCarCam::plannedIncrement(const TurnGeometry& turn, double swing,
                                                    double h) const
{
    Vector3d path = vSkidBrakePosIncr;
    if (!bSkidBreakingOn) {
        const double sideways = -std::tan(fCarLocalYawIncr) * turn.backAxle * p.rig.halfLengthZ();
        path = rotate(m.qCarRot, Vector3d{sideways, 0, -speed() * h});
    }
    const Vector3d forward{0, 0, -1};
    const Vector3d axlePath =
        (rotate(yawQuat(swing), forward) - forward) * (p.rig.dWheelZ[0] + p.rig.dWheelZ[1]);
    return {path + rotate(m.qCarRot, axlePath), yawQuat(fCarLocalYawIncr)};
}

/// What the ground gives of it.
void CCarCam::blendWithGrip(const PlannedIncrement& planned, double h)
{
    m.vPreviousIncr = qTransCarAbsIncr.translation;
    const double g = grip();
    double factor = g;
    if (in(SKIDDING).dInput != 0.0 && !bSkidBreakingOnDisableFeatures) {
        dWantedSkiddingValue = g;
    } else {
        double& wanted = dWantedSkiddingValue;
        double release = p.dSkidReleaseRespFact;
        if (m.bSkidFading)
            release = std::min(1.0, release * p.dSkidBrakeStopFactor);
        response(wanted, g, release, h);
        if (wanted > 0.5)
            response(wanted, 1.0, 0.2, h);
        if (wanted > 0.99)
            wanted = 1.0;
        factor = std::max(wanted, 1e-12);
    }
    if (!inAirThisTick_)
        response(qTransCarAbsIncr.translation, planned.translation, factor, h);
    qTransCarAbsIncr.rotation = planned.yaw;
    m.qCarRot = planned.yaw * m.qCarRot;
}

void CCarCam::moveAlongPlane(double h)
{
    const Vector3d& step = qTransCarAbsIncr.translation;
    m.vCarAccel = (step - m.vPreviousIncr) / h / h;
    m.vLocalAccel = rotate(conjugate(m.qCarRot), m.vCarAccel);
    m.vCarPos += step;
}

/// Each wheel stands across the line from it to the middle of the turn (Ackermann).
void CCarCam::steerWheels(const TurnGeometry& turn, double h)
{
    const double distance = h * speed();
    const double turned = distance / turn.radius;
    const double chord = turned != 0.0 ? distance / 2 / std::tan(turned / 2) : 1e16;
    const double base = turn.backAxle * p.rig.halfLengthZ();
    const double side = sign(chord);
    for (std::size_t i = 0; i < kWheels; ++i) {
        CarWheel& wheel = m.wheel[i];
        const double ahead = base - p.rig.dWheelZ[i];
        if (std::abs(ahead) <= 0.001 * p.rig.dCarLength)
            continue;
        wheel.dYaw = std::atan2(ahead * side, (chord + p.rig.dWheelX[i]) * side);
    }
}

void CCarCam::followGround(std::size_t i, const Vector3d& X, const Vector3d& Y, const Vector3d& Z,
                           GroundSensor& ground, double dt)
{
    const double radius = p.radius(i);
    const CarRig& rig = p.rig;
    constexpr double kRayHeight = 0.2742857142857143; // body lengths
    WheelMount mount{
        .X = X,
        .Y = Y,
        .Z = Z,
        .rest =
            guardedBody_ + X * rig.dWheelX[i] + Z * rig.dWheelZ[i] + Y * (radius - rig.dBodyHeight),
        .radius = radius,
        .width = rig.dWheelWidth[i],
        .lift = rig.dCarLength * kRayHeight + rig.dBodyHeight - radius,
        .bodyLength = rig.dCarLength,
        .gravityOn = p.bGravityOn,
    };
    WheelUnit& wheelUnit = unit[i];
    CarWheel& wheel = m.wheel[i];
    const double height = rotate(conjugate(m.qCarRot), mount.rest - m.vCarPos).y;
    mount.risen = height - wheelHeight_[i] - wheelUnit.memory.CurrDelta;
    wheelUnit.update(mount, p.wheels, ground, dt);
    Vector3d& centre = wheelUnit.contact.centre;
    wheel.dWheelHeight = rotate(conjugate(m.qCarRot), centre - m.vCarPos).y;
    if (!wheelUnit.contact.bInTheAir)
        centre += Y * wheel.dGravelOffset;
    wheel.vBottom = centre - Y * radius;
    rollDistance_[i] = wheelUnit.roll(centre, wheel.vBottom);
    m.inTheAir[i] = wheelUnit.contact.bInTheAir;
    m.outOfReach[i] = wheelUnit.contact.outOfReach;
}

void CCarCam::updateWheelRotation()
{
    constexpr double kStill = 0.001; // body lengths, and body lengths per s
    const double length = p.rig.dCarLength;
    const Vector3d backward = rotate(m.qCarRot, Vector3d{0, 0, 1});
    const double moving = std::abs(speed()) < kStill * length ? 0.0 : 1.0;
    for (std::size_t i = 0; i < kWheels; ++i) {
        CarWheel& wheel = m.wheel[i];
        const Vector3d motion = wheel.vWorldPos - wheel.vWorldPosPrev;
        wheel.vWorldPosPrev = wheel.vWorldPos;
        const bool offBase = std::abs(p.rig.dWheelZ[i] - turnBaseZ()) > kStill * length;
        const double direction = offBase ? sign(speed()) : -sign(dot(motion, backward));
        wheel.dPitchIncr -= direction * rollDistance_[i] * moving / p.radius(i);
        if (!bSkidBreakingOnDisableFeatures)
            wheel.pfTotalPitch = wrapTurn(wheel.pfTotalPitch + wheel.dPitchIncr);
        else
            wheel.dPitchIncr = 0.0;
    }
}

/// What the plane is laid onto. It rises with a wheel at once, and sinks to one as fast as at 25
/// frames a second, at which the fall of a nose over an edge was tuned: a wheel hangs from the
/// body, and would pull the plane down in each frame anew.
std::array<Vector3d, kWheels> CCarCam::footing(const Vector3d& up, double dt) const
{
    constexpr double kFrame = 0.04; // [s]
    const double held = 1.0 - std::min(1.0, dt / kFrame);
    std::array<Vector3d, kWheels> bottom;
    for (std::size_t i = 0; i < kWheels; ++i) {
        bottom[i] = m.wheel[i].vBottom;
        const double below = dot(m.vCarPos - bottom[i], up);
        bottom[i] += up * (std::max(0.0, below) * held);
    }
    return bottom;
}

/// The plane through the back's middle and the two front bottoms. The tilt is taken up over some
/// ticks, since the normal is as long as the sine between the two lines; the height at once.
void CCarCam::alignToWheels(double dt)
{
    if (bCarInTheAir)
        return;
    const Vector3d up = rotate(m.qCarRot, Vector3d{0, 1, 0});
    const std::array<Vector3d, kWheels> bottom = footing(up, dt);
    const Vector3d back = (bottom[2] + bottom[3]) / 2.0;
    const Vector3d normal = cross(normalise(bottom[1] - back), normalise(bottom[0] - back));
    const double half = std::acos(std::clamp(dot(up, normal), -1.0, 1.0)) / 2;
    const Vector3d axis = cross(up, normal) * std::sin(half);
    m.qCarRot = normalise(m.qCarRot * normalise(Quatd{axis.x, axis.y, axis.z, std::cos(half)}));

    const Vector3d down = rotate(m.qBodyRot, Vector3d{0, -1, 0});
    const double slant = dot(down, normal);
    if (std::abs(slant) > 1e-9)
        m.vCarPos = m.vBodyPos + down * (dot(back - m.vBodyPos, normal) / slant);
}

Quatd CCarCam::wheelRotation(std::size_t i, double spin, double yaw, const Quatd& body) const
{
    const double sp = std::sin(spin / 2);
    const double cp = std::cos(spin / 2);
    const double sy = std::sin(yaw / 2);
    const double cy = std::cos(yaw / 2);
    const Quatd turned = Quatd{cy * sp, cp * sy, -sp * sy, cy * cp} * body;
    const Quatd halfTurn{0, 1, 0, 0};
    return p.rig.dWheelX[i] > 0.0 ? halfTurn * turned : turned;
}

Quatd CCarCam::wheelRotation(std::size_t i) const
{
    return wheelRotation(i, m.wheel[i].pfTotalPitch, m.wheel[i].dYaw, m.qBodyRot);
}

} // namespace tvw::rgs::addon::carextended
