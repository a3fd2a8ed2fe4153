/// From the steering wheel to an angle, and the burnout that turns the car on its front axle.
#include "plugins/common/counter_noise.h"
#include "plugins/release/carextended/carextended_CCarCam.h"
#include "util/filters.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tvw::rgs::addon::carextended {

void CCarCam::shapeSteering(double dt)
{
    InputChannel& steering = in(STEERING_WHEEL);
    double& input = steering.dInput;
    input /= 1.0 + std::abs(in(GAS_PEDAL).dValue) * p.dSpeedDependentTurnRadiusReductionFactor;
    avoidWorldEdge();
    const double rate = p.dVelRelMaxSteeringChangeVel * (input == 0.0 ? 2.0 : 1.0);
    input = std::clamp(input, m.dSteeringMem - dt * rate, m.dSteeringMem + dt * rate);
    if (p.dSteeringNoise > 0.0)
        input += std::sqrt(std::abs(speed())) * (counterNoise(randomValue_steeringNoise) - 0.5) *
                 p.dSteeringNoise;
    m.dSteeringMem = input;
    if (p.bAutonomousMode) {
        response(dInputFilterMem, steering.dMaximum * input, steering.dResponseFactor, dt);
        steering.dValue += dInputFilterMem;
        input = steering.share();
    } else {
        dInputFilterMem = 0.0;
    }
}

/// Far out, a car that heads further out is turned back in.
void CCarCam::avoidWorldEdge()
{
    const double radius = p.dWorldAvoidanceSphereRadius;
    if (p.bAutonomousMode || !(radius > 0.0) || !(length(m.vCarPos) > radius * p.rig.dCarLength))
        return;
    const Vector3d outward = normalise(m.vCarPos);
    const double heading = -dot(rotate(m.qCarRot, Vector3d{0, 0, 1}), outward);
    if (heading > 0.0) {
        const double side = dot(rotate(m.qCarRot, Vector3d{1, 0, 0}), outward);
        in(STEERING_WHEEL).dInput -= 2.0 * heading * (side < 0.0 ? -1.0 : 1.0);
    }
}

/// The back wheels spin, the nose rises, and the steering gets lazy while it lasts.
void CCarCam::burnOut(double h)
{
    constexpr double kNoticeable = 0.001;
    constexpr double kFadeBase = 0.003;                      // [s]
    constexpr double kSpin = 0.49 * std::numbers::pi / 0.04; // [rad/s] per unit: just below what a
                                                             // film at 25 frames shows as forward
    constexpr double kLazyResponse = 0.05;
    constexpr double kTiltUnit = 46875.0; // tuned
    InputChannel& burnout = in(BURNOUT);
    burnoutMoment_ = 0.0;
    if (!(burnout.dValue > kNoticeable)) {
        m.dSteeringRsp = -1.0;
        return;
    }
    if (m.dSteeringRsp < 0.0)
        m.dSteeringRsp = in(STEERING_WHEEL).dResponseFactor;
    if (burnout.dInput == 0.0)
        burnout.dValue *= std::pow(p.dBurnoutFadeoutFactor, h / kFadeBase);
    else
        response(m.dSteeringRsp, kLazyResponse, 0.1, h);
    for (const std::size_t back : {2, 3})
        m.wheel[back].dPitchIncr -= burnout.dValue * kSpin * h;
    const double r = counterNoise(randomValue_burnout) * 20.0;
    const double length = p.rig.dCarLength;
    burnoutMoment_ = (r * r * r * r * r * p.dBurnoutShake + 1.0) *
                     (burnout.dValue * p.dBurnoutTiltForce * length * length / kTiltUnit);
}

} // namespace tvw::rgs::addon::carextended
