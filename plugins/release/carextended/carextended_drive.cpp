/// From the pedals to a speed: gas, booster, brake; and the ground's shaking.
#include "plugins/common/counter_noise.h"
#include "plugins/release/carextended/carextended_CCarCam.h"
#include "util/filters.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon::carextended {

namespace {

constexpr double kBrakeUnit = 30.0; // 1/s of the start value at a brake value of 1, tuned

bool isNegative(double value)
{
    return value < 0.0;
}

} // namespace

void CCarCam::updateInputs(double dt)
{
    shapeGas(dt);
    in(GAS_PEDAL).follow(dt);
    shapeSteering(dt);
    InputChannel& steering = in(STEERING_WHEEL);
    smoothing(steering.dValue, steering.dMaximum * steering.dInput,
              m.dSteeringRsp >= 0.0 ? m.dSteeringRsp : steering.dResponseFactor, dt);
    shapeSkidding(dt);
    in(GRAVEL_SHAKE).dInput += p.dGravelShakeOffset;
    in(EXTERNAL_FORCE).dInput += p.dForceOffset;
    for (const Channel channel :
         {BOOSTER, ABS_BRAKE, SKIDDING, SKID_BRAKE, GRAVEL_SHAKE, BURNOUT, EXTERNAL_FORCE})
        in(channel).follow(dt);
}

void CCarCam::shapeGas(double dt)
{
    InputChannel& gas = in(GAS_PEDAL);
    if (p.bAutonomousMode) {
        response(dGasPedalInputFilterMem, gas.dMaximum * gas.dInput, gas.dResponseFactor, dt);
        gas.dValue += dGasPedalInputFilterMem;
        gas.dInput = gas.share();
    } else {
        dGasPedalInputFilterMem = 0.0;
    }
    if (!p.bUseReverseAsAbsBrake) {
        const Vector3d forward = rotate(m.qCarRot, Vector3d{0, 0, -1});
        gas.dInput -= p.rig.dCarLength * p.fGravity * forward.y; // a climb slows down
    }
    if (gas.dInput != 0.0 && m.bAbsArmed && !m.bBoosterOn)
        limitGasRate(dt);
}

/// Speeding up and slowing down by gas stay within "Acceleration".
void CCarCam::limitGasRate(double dt)
{
    InputChannel& gas = in(GAS_PEDAL);
    if (!(gas.dMaximum > 0.0))
        return;
    const double change = dt * p.dGasPedalMaxRateOfChange / gas.dMaximum;
    const double target = gas.dMaximum * gas.dInput;
    if (target > gas.dValue)
        gas.dInput = std::min(gas.dInput, gasInputPrev + change);
    else if (target < gas.dValue)
        gas.dInput = std::max(gas.dInput, gasInputPrev - change);
}

/// Beyond full gas the springs get harder with the speed.
void CCarCam::updateBooster(double dt)
{
    constexpr double kNoticeable = 0.001; // of full gas
    InputChannel& gas = in(GAS_PEDAL);
    const InputChannel& booster = in(BOOSTER);
    m.bBoosterOn = booster.dInput != 0.0 && !bSkidBreakingOnDisableFeatures;
    if (m.bBoosterOn)
        smoothing(gas.dValue, booster.dMaximum * gas.dMaximum, booster.dResponseFactor, dt);
    const double excess = gas.dValue - gas.dMaximum;
    const bool stiffens = m.bBoosterOn && excess > kNoticeable * gas.dMaximum;
    stiffening_ = stiffens ? 1.0 + excess * p.dBoosterStiffnessMult : 1.0;
}

/// A reverse input brakes a moving car and holds it until the pedal is let go.
void CCarCam::updateAbsBrake(double dt)
{
    const double pressed = in(ABS_BRAKE).dInput;
    const double gas = in(GAS_PEDAL).dInput;
    const double strength = in(ABS_BRAKE).dMaximum;
    if (pressed > 0.0) {
        brake(std::abs(pressed * strength), dt);
    } else if (p.bUseReverseAsAbsBrake) {
        const bool held = gas != 0.0;
        if (bIsReverseVelAbsBraking)
            bIsReverseVelAbsBraking = held && isNegative(gas) == isNegative(gasInputPrev);
        else
            bIsReverseVelAbsBraking = held && isNegative(gas) != isNegative(in(GAS_PEDAL).dValue);
        if (bIsReverseVelAbsBraking)
            brake(std::abs(gas * strength), dt);
        else
            m.bAbsArmed = 1;
    } else {
        m.bAbsArmed = 1;
    }
    gasInputPrev = gas;
    m.dBrakeGasVal = in(GAS_PEDAL).dValue;
}

void CCarCam::brake(double share, double dt)
{
    double& value = in(GAS_PEDAL).dValue;
    if (m.bAbsArmed) {
        m.dAbsStartValue = value;
        m.bAbsArmed = 0;
    }
    const double braked = m.dBrakeGasVal - share * (m.dAbsStartValue * dt * kBrakeUnit);
    value = isNegative(braked) == isNegative(m.dAbsStartValue) ? braked : 0.0;
}

void CCarCam::updateGravel(double dt)
{
    const double amplitude = std::abs(in(GRAVEL_SHAKE).dValue);
    const bool shakes = amplitude > 1e-5;
    const double roughness = std::min(p.dGravelRoughness, 1.0);
    for (CarWheel& wheel : m.wheel) {
        double target = 0.0;
        if (shakes) {
            const double kick = std::sqrt(std::abs(speed())) *
                                (counterNoise(randomValue_gravelShake) - 0.5) * amplitude;
            target = std::copysign(kick * kick, kick);
        }
        smoothing(wheel.dGravelOffset, target, roughness, dt);
    }
}

} // namespace tvw::rgs::addon::carextended
