#include "plugins/common/state_machine.h"

#include "util/filters.h"

#include <cmath>
#include <numbers>

namespace tvw::rgs::machine {

namespace {

void limitVelocity(Vector3d& position, const Vector3d& last, double maxVelocity, double dt)
{
    const Vector3d step = position - last;
    const double reach = maxVelocity * dt;
    if (maxVelocity != 0.0 && length(step) > reach)
        position = last + normalise(step) * reach;
}

/// maxVelocity: [degrees/s].
void limitRotation(Quatd& rotation, const Quatd& last, double maxVelocity, double dt)
{
    if (maxVelocity == 0.0)
        return;
    const double reach = maxVelocity * std::numbers::pi / 180.0 * dt;
    const Vector3d turn = toRotationVector(rotation * conjugate(last));
    if (length(turn) > reach)
        rotation = upperHemisphere(fromRotationVector(normalise(turn) * reach) * last);
}

} // namespace

void travel(QTransformd& current, QTransformd& memory, const QTransformd& wanted,
            const StateLimits& limits, double dt)
{
    const QTransformd last = current;
    smoothing(memory.translation, wanted.translation, limits.dVelRespFactor, dt);
    smoothing(current.translation, memory.translation, limits.dVelRespFactor, dt);
    smoothing(memory.rotation, wanted.rotation, limits.dRotVelRespFactor, dt);
    smoothing(current.rotation, memory.rotation, limits.dRotVelRespFactor, dt);
    current.rotation = upperHemisphere(current.rotation);
    memory.rotation = upperHemisphere(memory.rotation);
    limitVelocity(current.translation, last.translation, limits.dMaxVel, dt);
    limitRotation(current.rotation, last.rotation, limits.dMaxAngVel, dt);
}

void travel(Lens& current, const Lens& wanted, const StateLimits& limits, double dt)
{
    limitedResponse(current.fieldOfView, wanted.fieldOfView, limits.dFovRespFactor, limits.dMaxFov,
                    dt);
    limitedResponse(current.targetDistance, wanted.targetDistance, limits.dTDistRespFactor,
                    limits.dMaxTargetDist, dt);
}

Matrix4 placeOnCircle(std::size_t index)
{
    constexpr double kRadius = 5.0;
    const double turn = static_cast<double>(index) * -2.0 * std::numbers::pi / kStates;
    Matrix4 outward;
    setTranslation(outward, {0, 0, -kRadius});
    return toMatrix(fromRotationVector(Vector3d{0, turn, 0})) * outward;
}

} // namespace tvw::rgs::machine
