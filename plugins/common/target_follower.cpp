#include "plugins/common/target_follower.h"

#include "util/filters.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs {

namespace {

constexpr double kForce = 3.5; // gas per body length of distance, tuned on the four-wheeler

double sign(double value)
{
    return value < 0.0 ? -1.0 : 1.0;
}

} // namespace

bool TargetFollower::follow(Vector3d toTarget, const TargetFollowerSettings& settings,
                            const FollowerLimits& limits, double dt)
{
    toTarget.y = 0.0;
    double distance = length(toTarget);
    const Vector3d direction = distance > 0.0 ? toTarget / distance : Vector3d{0, 0, -1};
    distance = std::min(distance, limits.bodyLength * limits.gasMaximum);
    double sphere = limits.bodyLength * settings.dIgnoreSphereRadius;
    const bool reached = distance < sphere;
    if (reached)
        distance = sphere = 0.0;

    double gas = -direction.z * settings.dFollowAccelerationMult * (distance - sphere) /
                 limits.bodyLength * kForce;
    if (gas < 0.0)
        gas *= settings.dReverseMaxVelMult;
    gas = std::clamp(gas, -limits.gasMaximum, limits.gasMaximum);
    response(dFollowAccMem, gas, settings.dFollowAccRespFact, dt);

    double steering = sign(gas) * direction.x * limits.steeringMaximum /
                      (1.0 + std::abs(dFollowAccMem) * limits.radiusReduction * 0.5);
    const double change = dt * limits.steeringRate;
    steering = std::clamp(steering, dAutoSteeringPrev - change, dAutoSteeringPrev + change);
    dAutoSteeringPrev = steering;
    response(dAutoSteeringValueMem, steering, settings.dAutoSteeringValueRespFact, dt);
    return reached;
}

} // namespace tvw::rgs
