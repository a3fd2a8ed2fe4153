/// Drives a vehicle after a target: how much gas, how much steering.
#pragma once

#include "util/vector3.h"

namespace tvw::rgs {

struct TargetFollowerSettings
{
    double dFollowAccelerationMult = 0.5;
    double dFollowAccRespFact = 0.02;        ///< share of the way per 0.04 s
    double dAutoSteeringValueRespFact = 0.2; ///< share of the way per 0.04 s
    double dReverseMaxVelMult = 0.5;
    double dIgnoreSphereRadius = 0.5; ///< body lengths: nearer than that the target is reached
};

/// What the vehicle can do.
struct FollowerLimits
{
    double gasMaximum;      ///< body lengths per s
    double steeringMaximum; ///< [rad]
    double steeringRate;    ///< change of the steering [rad/s]
    double radiusReduction; ///< less steering with speed, per body length per s
    double bodyLength;      ///< [m]
};

struct TargetFollower
{
    double dFollowAccMem = 0.0;         ///< filtered gas [body lengths per s]
    double dAutoSteeringValueMem = 0.0; ///< filtered steering [rad]
    double dAutoSteeringPrev = 0.0;     ///< wanted steering of the last tick [rad]

    /// toTarget: from the middle of the front, in the vehicle's axes (+X right, -Z forward) [m];
    /// its height does not count. dt: step [s]. True when the target is reached: brake, keep the
    /// steering.
    bool follow(Vector3d toTarget, const TargetFollowerSettings& settings,
                const FollowerLimits& limits, double dt);
};

} // namespace tvw::rgs
