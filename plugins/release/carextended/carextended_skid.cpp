/// Where the wheels lose the ground: skidding, the skid brake, flight.
#include "plugins/release/carextended/carextended_CCarCam.h"
#include "util/filters.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon::carextended {

namespace {

constexpr double kFrame = 0.04; // [s], for which the rates per frame were tuned

double sign(double value)
{
    return value < 0.0 ? -1.0 : 1.0;
}

double manhattan(const Quatd& a, const Quatd& b)
{
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z) + std::abs(a.w - b.w);
}

} // namespace

/// 1 follows the wheels at once. Never 0, which the filters take as "at once".
double CCarCam::grip() const
{
    return std::clamp(1.0 - in(SKIDDING).dValue, 1e-12, 1.0);
}

/// A sharp turn skids by itself.
void CCarCam::shapeSkidding(double dt)
{
    InputChannel& skid = in(SKIDDING);
    const double raw = skid.dInput;
    if (raw == 1.0)
        return;
    skid.dInput += p.dSkiddingOffset;
    const double top = p.rig.dCarLength * in(GAS_PEDAL).dMaximum;
    if (std::abs(m.vLocalAccel.x) * dt > p.dSkiddingReleaseThresh * top)
        skid.dInput = 1.0 + raw;
}

void CCarCam::updateSkiddingState()
{
    const InputChannel& skid = in(SKIDDING);
    if (!bCarInTheAir && !bSkidBreakingOn) {
        if (skid.dInput == 0.0) {
            m.bSkiddingArmed = 1;
        } else if (m.bSkiddingArmed) {
            bSkiddingOn = true;
            m.bSkiddingArmed = 0;
        }
    }
    bSkiddingOn = !(skid.share() <= 0.05 && skid.dInput == 0.0);
}

void CCarCam::updateInAir(double dt)
{
    const bool allInTheAir =
        std::all_of(m.inTheAir.begin(), m.inTheAir.end(), [](auto flies) { return flies != 0; });
    if (!allInTheAir) {
        justLanded_ = bCarInTheAir;
        bCarInTheAir = false;
        m.bCarFirstInAir = 1;
        inAirThisTick_ = false;
        return;
    }
    justLanded_ = false;
    bCarInTheAir = true;
    if (m.bCarFirstInAir) {
        m.bCarFirstInAir = 0;
        QGravityFilterMem = m.qCarRot;
    }
    const double h = subStepLength(dt);
    const double length = p.rig.dCarLength;
    Vector3d& step = qTransCarAbsIncr.translation;
    if (p.bGravityOn) // a quarter of the fall in body lengths, tuned
        step += scene.vGravityDir * (p.dGravityAcc * h * dt * length * 0.25);
    const double longest = p.dScaleRelMaxJumpVelocity * length * h;
    if (const double size = tvw::length(step); size > longest)
        step *= longest / size;
    returnToLevel(dt);
    inAirThisTick_ = true;
    if (p.dLandingSkiddingFactor > in(SKIDDING).dInput + p.dSkiddingOffset)
        dWantedSkiddingValue = p.dLandingSkiddingFactor;
}

void CCarCam::returnToLevel(double dt)
{
    const Quatd level = upperHemisphere(m.qLevelRot);
    if (manhattan(QGravityFilterMem, level) >= 2.0)
        QGravityFilterMem = -QGravityFilterMem;
    if (manhattan(m.qCarRot, QGravityFilterMem) >= 2.0)
        m.qCarRot = -m.qCarRot;
    response(QGravityFilterMem, level, p.dHorizontalRestoringFactor, dt);
    response(m.qCarRot, QGravityFilterMem, p.dHorizontalRestoringFactor, dt);
}

void CCarCam::updateSkidBrake(double dt)
{
    if (bCarInTheAir || justLanded_)
        return;
    if (in(SKID_BRAKE).dInput > 0.0) {
        if (bSkidFirstTime)
            startSkidBrake(dt);
        in(GAS_PEDAL).dValue = 0.0;
        in(SKIDDING).dValue = 0.0;
        dWantedSkiddingValue = 1.0;
        in(BURNOUT).dInput = 0.0;
        in(BOOSTER).dValue = 0.0;
    } else if (!bSkidFirstTime) {
        endSkidBrake(dt);
    }
    m.bSkidFading = in(SKID_BRAKE).share() > 0.0001;
    if (bSkidBreakingOn)
        fadeSkidBrake(dt);
    else if (m.bSkidFading)
        fadeSkidYaw(dt);
    else
        dSkidBrakeLocalYawIncr = 0.0;
}

void CCarCam::startSkidBrake(double dt)
{
    bSkidFirstTime = false;
    bSkidBreakingOn = bSkidBreakingOnDisableFeatures = true;
    m.vSkidBrakeDecel = qTransCarAbsIncr.translation / dt;
    m.vSkidBrakeRotVel = toRotationVector(qTransCarAbsIncr.rotation) / dt;
    m.iSkidSignVel = sign(speed());
    m.iSkidSignSteer = sign(-in(STEERING_WHEEL).dValue);
    vSkidBrakePosIncr = m.vSkidBrakeDecel * dt;
    dSkidBrakeLocalYawIncr = length(m.vSkidBrakeRotVel) * m.iSkidSignVel * m.iSkidSignSteer * dt;
}

/// The gas takes over what speed is left along the car.
void CCarCam::endSkidBrake(double dt)
{
    if (vSkidBrakePosIncr != Vector3d{}) {
        dWantedSkiddingValue = 0.0;
        in(SKIDDING).dValue = 1.0;
        const Vector3d velocity = qTransCarAbsIncr.translation / subStepLength(dt);
        const double ahead = -rotate(conjugate(m.qCarRot), velocity).z;
        const double gas = in(GAS_PEDAL).dInput;
        double share = sign(gas) == sign(ahead) ? std::abs(gas) : 0.0;
        if (in(BOOSTER).dInput > 0.0 && ahead > 0.0)
            share = 1.0;
        fSkidWantedGasPedalValue = share * ahead / p.rig.dCarLength;
        in(GAS_PEDAL).dValue = fSkidWantedGasPedalValue;
    }
    fCarLocalYawIncr = dSkidBrakeLocalYawIncr;
    bSkidFirstTime = true;
    bSkidBreakingOn = bSkidBreakingOnDisableFeatures = false;
}

/// 3 % of the start's motion go per frame at 25 frames a second.
void CCarCam::fadeSkidBrake(double dt)
{
    constexpr double kRate = 0.001 * 30.0;
    const double share = kRate * in(SKID_BRAKE).dMaximum * dt * (dt / kFrame);
    vSkidBrakePosIncr -= m.vSkidBrakeDecel * share;
    fadeSkidYaw(dt);
    if (dot(vSkidBrakePosIncr, m.vSkidBrakeDecel) < 0.0)
        stopSkidBrake();
}

/// Never past 0: a car that stands does not begin to turn while the pedal's filter runs out.
void CCarCam::fadeSkidYaw(double dt)
{
    constexpr double kRate = 0.001 * 30.0;
    const double share = kRate * in(SKID_BRAKE).dMaximum * dt * (dt / kFrame);
    const double loss = length(m.vSkidBrakeRotVel) * p.dSkidBrakeRotBrakeMult * share;
    const double left = std::max(0.0, std::abs(dSkidBrakeLocalYawIncr) - loss);
    dSkidBrakeLocalYawIncr = std::copysign(left, dSkidBrakeLocalYawIncr);
}

void CCarCam::stopSkidBrake()
{
    vSkidBrakePosIncr = {};
    dSkidBrakeLocalYawIncr = 0.0;
    in(SKID_BRAKE).dInput = 0.0;
    in(GAS_PEDAL).dValue = 0.0;
    in(SKIDDING).dValue = 0.0;
    in(BURNOUT).dInput = 0.0;
    in(BOOSTER).dValue = 0.0;
    dWantedSkiddingValue = 1.0;
}

} // namespace tvw::rgs::addon::carextended
