/// What the user sets of the four-wheeler: the configuration's side of `CCarCam`.
///
/// Lengths in metres, times in seconds, angles in rad. "Relative" is to the body's length unless
/// said. A response is the share of the way per 0.04 s.
#pragma once

#include "plugins/common/input_channel.h"
#include "plugins/common/target_follower.h"
#include "plugins/common/wheel_unit.h"

#include <array>
#include <cstddef>

namespace tvw::rgs::addon::carextended {

inline constexpr std::size_t kWheels = 4; ///< front left, front right, back left, back right

enum Channel : std::size_t {
    GAS_PEDAL,
    STEERING_WHEEL,
    BOOSTER,
    ABS_BRAKE,
    SKIDDING,
    SKID_BRAKE,
    GRAVEL_SHAKE,
    BURNOUT,
    EXTERNAL_FORCE,
    kChannels
};

inline constexpr std::array<InputChannel, kChannels> kChannelDefaults{{
    {.name = "Gas Pedal (Forw/Backw)",
     .tooltip = "How strong and fast the engine is. 0.0 gives an instant velocity.",
     .dResponseFactor = 0.01,
     .dMaximum = 3.0},
    {.name = "Steering Wheel (Right/Left)",
     .tooltip = "How much and how smoothly the wheels turn",
     .dResponseFactor = 0.1,
     .dMaximum = 0.7},
    {.bUnipolar = true,
     .name = "Booster",
     .tooltip = "How much and how fast the velocity will multiply",
     .dResponseFactor = 0.02,
     .dMaximum = 6.0},
    {.bUnipolar = true,
     .name = "ABS Brake",
     .tooltip = "Brakes as strong as possible until a full stop",
     .dResponseFactor = 1.0,
     .dMaximum = 0.03},
    {.bUnipolar = true,
     .name = "Skidding",
     .tooltip = "How much skidding and how fast it applies",
     .dResponseFactor = 0.1,
     .dMaximum = 0.9},
    {.bUnipolar = true,
     .name = "Skid Brake",
     .tooltip = "Locks the wheels",
     .dResponseFactor = 0.1,
     .dMaximum = 1.0},
    {.bUnipolar = true,
     .name = "Gravel Shake Amplitude",
     .tooltip = "Gravel Shake Amplitude",
     .dResponseFactor = 1.0,
     .dMaximum = 0.05},
    {.bUnipolar = true,
     .name = "Burnout",
     .tooltip = "Creates a burnout where the back wheel(s) spin",
     .dResponseFactor = 0.03,
     .dMaximum = 3.0},
    {.bUnipolar = true,
     .name = "External Force",
     .tooltip =
         "This input will apply a force in the direction of the 'ExternalForceMesh' direction",
     .dResponseFactor = 1.0,
     .dMaximum = 100.0},
}};

/// Where the rig has its wheels and how large they are; read from the scene when the car starts
/// anew.
struct CarRig
{
    double dCarHeight = 1.002;
    double dCarWidth = 1.361;
    double dCarLength = 3.522;
    double dBodyHeight = 0.15; ///< of the body's origin over the plane of the wheel bottoms
    std::array<double, kWheels> dWheelRadiusRel{0.26, 0.26, 0.26, 0.26};
    std::array<double, kWheels> dWheelZ{-1.05, -1.05, 1.044, 1.044}; ///< in the body; -Z is forward
    std::array<double, kWheels> dWheelX{-0.64, 0.64, -0.64, 0.64};
    std::array<double, kWheels> dWheelWidth{0.2, 0.2, 0.2, 0.2};

    /// The nominal front axle.
    double halfLengthZ() const { return -dCarLength / 2; }
};

struct CarParameters
{
    std::array<InputChannel, kChannels> pcInput = kChannelDefaults;
    CarRig rig;
    double dGasPedalMaxRateOfChange = 2.0; ///< [1/s^2], body lengths

    bool bAutonomousMode = false;
    TargetFollowerSettings follow;

    double dVelRelMaxSteeringChangeVel = 2.0; ///< [rad/s]
    double dSpeedDependentTurnRadiusReductionFactor = 0.2;
    double dSteeringNoise = 0.0;
    double dTurnBase = 0.0; ///< half lengths ahead of the back wheels

    double fStiffnessFront = 2000.0;
    double fDampingFront = 200.0;
    double fStiffnessBack = 2000.0;
    double fDampingBack = 200.0;
    double dMaximumForwardTiltAngle = 0.06;
    double dMaximumSideTiltAngle = 0.07;
    double dBoosterStiffnessMult = 0.3;
    double dMassMult = 2.0;

    bool bUseReverseAsAbsBrake = true;
    double dSkiddingOffset = 0.0;
    double dSkiddingReleaseThresh = 0.04; ///< sideways speed, of the maximum
    double dSkidReleaseRespFact = 1.0;
    double dGravelShakeOffset = 0.5;
    double dGravelRoughness = 0.9; ///< a response
    double dForceOffset = 0.0;
    double dSkidBrakeStopFactor = 1.0;
    double dSkidBrakeRotBrakeMult = 1.0;
    double dBurnoutShake = 0.2;
    double dBurnoutTiltForce = 1.0;
    double dBurnoutFadeoutFactor = 0.99; ///< what is left after 0.003 s
    std::int32_t iRandomSeedAdder = 0;
    double dWorldAvoidanceSphereRadius = 0.0; ///< body lengths; 0: none
    double dWheelRadiusMult = 0.95;
    double fGravity = 1.0;

    WheelSettings wheels;

    // Saved, but without an item.
    bool bGravityOn = true;
    double dGravityAcc = 9.81;                ///< [m/s^2]
    double dScaleRelMaxJumpVelocity = 10.0;   ///< body lengths per s
    double dLandingNeutralizer = 0.8;         ///< what is left after 0.003 s of flight
    double dHorizontalRestoringFactor = 0.05; ///< a response
    double dLandingSkiddingFactor = 0.05;
    double dMinGroundDistance = 0.3; ///< of the body's height

    /// Effective radius of wheel i [m].
    double radius(std::size_t i) const { return rig.dWheelRadiusRel[i] * dWheelRadiusMult; }
    double meanRadius() const
    {
        return (radius(0) + radius(1) + radius(2) + radius(3)) / static_cast<double>(kWheels);
    }
};

} // namespace tvw::rgs::addon::carextended
