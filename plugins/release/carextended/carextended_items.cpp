#include "plugins/release/carextended/carextended_items.h"

namespace tvw::rgs::addon::carextended {

namespace {

using S = Settings;
using I = Items<Settings>;

/// A member of the model's parameters, or of a struct in them.
template <auto Member>
constexpr auto car = [](S& s) -> auto&
{
    return s.car.*Member;
};
template <auto Member>
constexpr auto wheels = [](S& s) -> auto&
{
    return s.car.wheels.*Member;
};
template <auto Member>
constexpr auto follow = [](S& s) -> auto&
{
    return s.car.follow.*Member;
};

using P = CarParameters;
using W = WheelSettings;
using F = TargetFollowerSettings;

constexpr std::array kGauges{
    I::group("Gauges (read only)"),
    I::spinner<&S::dInitialVelocity>(
        "Initital Velocity (% of max)",
        "This is the first of three ways to have an initial velocity. It is specified as a "
        "percentage of the maximum velocity. If this parameter is zero it will be ignored. (The "
        "second way is to use a keyframed initial velocity. The third way is to use a non-zero "
        "input value - moving the gas pedal when the recording starts.)",
        {0, 1000, 1}),
    I::spinner<&S::dVelocityConversionMult>(
        kMultiplier,
        "Meters per second will be multiplied by this value, so to convert from m/s to km/h use "
        "multiplier value 3.6, from m/s to mph use multiplier value 2.2369.",
        {0.001, 1e7, 0.001}, kHeard),
    I::spinner<&S::maximumVelocity>("World Space Maximum Velocity Gauge",
                                    "The maximum velocity of the 4-wheeler.", {0, 100000, 1}),
    I::spinner<&S::currentVelocity>("Current Velocity", "The current velocity of the 4-wheeler.",
                                    {-1e7, 1e7, 0.01}),
    I::spinner<&S::currentPercent>("Current Velocity (% of max)",
                                   "The current velocity in percent of the maximum velocity.",
                                   {-1e7, 1e7, 0.01}),
    I::spinner<&S::secondsTo100>("World Space Acceleration Gauge (seconds from 0 to 100)",
                                 "How long the 4-wheeler takes from 0 to 100.", {0, 1e6, 0.01}),
    I::spinner<&S::secondsTo60>("World Space Acceleration Gauge (seconds from 0 to 60)",
                                "How long the 4-wheeler takes from 0 to 60.", {0, 1e6, 0.01}),
    I::end(),
};

constexpr std::array kGeneralModes{
    I::group("General Modes"),
    I::button(kReInitialize, "Press to enable re-initialization of the car's physical attributes"),
    I::checkBox<&GeneralModes::hideHelpers>("Hide Helpers", "Hides the helper meshes.", kHeard),
    I::checkBox<&GeneralModes::hideDuringRecording>("Hide Helpers During Recording",
                                                    "Hides the helper meshes during a recording."),
    I::checkBox<&S::hideFollowCam>(kHideFollowCam, "Hides the follow camera.", kHeard),
    I::checkBox<&S::hideDriverCam>(kHideDriverCam, "Hides the driver camera.", kHeard),
    I::checkBox<&S::hideTopViewCam>(kHideTopViewCam, "Hides the top view camera.", kHeard),
    I::checkBox<&S::bSaveDynamicData>("Enable Seamless Transitions",
                                      "Enable Seamless Transitions requires more memory usage."),
    I::checkBox<&S::bKeyframeOnlyEssential>(
        "Keyframe only essential objects",
        "Only the the body, the wheels and the gravityDirectionMesh will be keyframed."),
    I::end(),
};

constexpr std::array kAutonomous{
    I::group("Autonomous Mode Properties",
             "In Autonomous mode the 4-wheeler will automatically follow the TargetMesh.\n"
             "Constrain the TargetMesh to a path/spline.\n"
             "Use an input device to apply features and to deviate from the follow path in "
             "real-time."),
    I::checkBox<car<&P::bAutonomousMode>>("Autonomous Mode",
                                          "The 4-wheeler follows the TargetMesh."),
    I::spinner<follow<&F::dFollowAccelerationMult>>("Autonomous mode follow strength",
                                                    "How strongly the 4-wheeler is drawn to the "
                                                    "TargetMesh.",
                                                    {0.01, 30, 0.01}),
    I::spinner<follow<&F::dFollowAccRespFact>>(
        "Follow Strength Response Factor", "How fast the velocity follows.", {0.0001, 1, 0.001}),
    I::spinner<follow<&F::dAutoSteeringValueRespFact>>(
        "Auto-Steering Response Factor", "How fast the steering follows.", {0.0001, 1, 0.001}),
    I::spinner<follow<&F::dReverseMaxVelMult>>("Reverse Max Vel Mult",
                                               "Multiplies the velocity when the 4-wheeler "
                                               "reverses to the TargetMesh.",
                                               {0, 1000, 0.001}),
    I::spinner<follow<&F::dIgnoreSphereRadius>>("Ignore Sphere Radius (length relative)",
                                                "The distance at which the car will begin to react "
                                                "to the TargetMesh",
                                                {0.001, 100, 0.001}),
    I::end(),
};

constexpr std::array kSteering{
    I::group("Steering Properties"),
    I::spinner<car<&P::dVelRelMaxSteeringChangeVel>>("Maximum Steering Change Velocity",
                                                     "How fast the wheels can turn in rads per "
                                                     "sec.",
                                                     {0.001, 100, 0.001}),
    I::spinner<car<&P::dSpeedDependentTurnRadiusReductionFactor>>(
        "Speed Dependent Turn Radius Reduction Factor",
        "How much less the wheels turn at high velocity.", {0, 10, 0.001}),
    I::spinner<car<&P::dSteeringNoise>>("Steering Noise", "Shakes the steering with the velocity.",
                                        {0, 1000, 0.001}),
    I::spinner<&S::dSteeringWheelRotMult>("Steering Wheel Rot Mult",
                                          "How far the SteeringWheelMesh turns.", {0, 1000, 0.001}),
    I::spinner<car<&P::dTurnBase>>(kTurnBase,
                                   "Moves the point that the 4-wheeler turns round, from the back "
                                   "wheels.",
                                   {-2, 2, 0.001}, kHeard),
    I::end(),
};

constexpr std::array kSuspension{
    I::group("Suspension Properties"),
    I::spinner<car<&P::fStiffnessFront>>("Front Stiffness", "Stiffness of the front springs.",
                                         {0, 10000, 1}),
    I::spinner<car<&P::fDampingFront>>("Front Damping", "Damping of the front springs.",
                                       {0, 10000, 0.1}),
    I::spinner<car<&P::fStiffnessBack>>("Back Stiffness", "Stiffness of the back springs.",
                                        {0, 10000, 1}),
    I::spinner<car<&P::fDampingBack>>("Back Damping", "Damping of the back springs.",
                                      {0, 10000, 0.1}),
    I::spinner<wheels<&W::fSurfaceEdgeResponseFactor>>(
        "Tire Pressure",
        "How hard the tires take the edges of the ground. The parameter may cause instability when "
        "too low.",
        {0, 1000, 0.001}),
    I::spinner<car<&P::dMaximumForwardTiltAngle>>(
        "Maximum Forward Tilt Angle", "Limits the pitch of the body.", {0, 1.5, 0.0001}),
    I::spinner<car<&P::dMaximumSideTiltAngle>>("Maximum Side Tilt Angle",
                                               "Limits the roll of the body.", {0, 1.5, 0.0001}),
    I::spinner<car<&P::dBoosterStiffnessMult>>("Booster Stiffness Multiplier",
                                               "How much harder the springs get with the booster.",
                                               {0, 10, 0.001}),
    I::spinner<car<&P::dMassMult>>("Mass Multiplier",
                                   "The weight of the body against the springs. The parameter may "
                                   "cause instability when too low.",
                                   {0, 1000, 0.001}),
    I::end(),
};

constexpr std::array kGeneral{
    I::group("General Properties"),
    I::checkBox<&S::bFixateWheelBottomNodes>(
        "Fixate Wheel Center Nodes",
        "When checked the WheelCenterMesh will not turn with the wheel yaw."),
    I::checkBox<&S::bMoveWheelCenterNodeToGroundHitPoint>(
        "Move WheelCenterMesh to ground hit point",
        "The WheelCenterMesh:es stand where the wheels touch the ground."),
    I::checkBox<&S::bAlignWheelCenterToGroundNormal>(
        "Align WheelCenterMesh to ground incline",
        "The WheelCenterMesh:es stand upright on the ground."),
    I::checkBox<car<&P::bUseReverseAsAbsBrake>>(
        "Use Reverse as ABS Brake",
        "The velocity change effect of gravity is only active if 'Use Reverse as ABS Brake' is "
        "unchecked."),
    I::spinner<car<&P::dSkiddingOffset>>("Skidding Offset Value",
                                         "This value is added to the input device value as an "
                                         "offset.",
                                         {0, 100, 0.001}),
    I::spinner<car<&P::dSkiddingReleaseThresh>>(
        "Skidding Release Value (Lateral Vel Rel)",
        "When the car reaches this sideway velocity during a turn the car will automatically "
        "generate a 'Skidding' input device signal.",
        {0, 100, 0.001}),
    I::spinner<car<&P::dSkidReleaseRespFact>>("Skidding Release Response Factor",
                                              "How fast the wheels grip again after a skid.",
                                              {1e-8, 1, 0.001}),
    I::spinner<car<&P::dGravelShakeOffset>>("Gravel Shake Offset Value",
                                            "This value is added to the input device value as an "
                                            "offset.",
                                            {0, 100, 0.001}),
    I::spinner<car<&P::dGravelRoughness>>("Gravel Roughness", "How abruptly the gravel shakes.",
                                          {0, 1, 0.001}),
    I::spinner<car<&P::dForceOffset>>("External Force Offset Value",
                                      "This value is added to the input device value as an "
                                      "offset.",
                                      {0, 10000, 0.001}),
    I::spinner<car<&P::dSkidBrakeStopFactor>>("Skid Brake Stop Factor",
                                              "How fast the wheels grip again after a skid brake.",
                                              {1e-8, 100, 0.001}),
    I::spinner<car<&P::dSkidBrakeRotBrakeMult>>("Skid Brake Rot Brake Mult",
                                                "How strongly a skid brake stops the turning.",
                                                {0, 1000, 0.001}),
    I::spinner<car<&P::dBurnoutShake>>("Burnout Shake", "How much a burnout shakes the body.",
                                       {0, 100, 0.01}),
    I::spinner<car<&P::dBurnoutTiltForce>>(
        "Burnout Tilting Force", "How strongly a burnout tilts the body.", {0, 100, 0.01}),
    I::spinner<car<&P::dBurnoutFadeoutFactor>>("Burnout Fadeout Factor",
                                               "How slowly a burnout fades out.", {0, 1, 0.001}),
    I::intSpinner<car<&P::iRandomSeedAdder>>("Random Seed Adder",
                                             "Another value gives another shaking.", {0, 10000, 1}),
    I::spinner<car<&P::dWorldAvoidanceSphereRadius>>("World Avoidance Sphere (scale relative)",
                                                     "Outside of this sphere the 4-wheeler turns "
                                                     "back. Zero turns it off.",
                                                     {0, 2e9, 1}),
    I::spinner<car<&P::dWheelRadiusMult>>("Wheel Radius Multiplier",
                                          "Multiplies the radius of the wheels.", {0.01, 10, 0.01}),
    I::spinner<car<&P::fGravity>>("Gravity", "How strongly inclines tilt the body.",
                                  {0, 10000, 0.001}),
    I::end(),
};

constexpr std::array kGround{
    I::group("Wheel Ground Release Properties"),
    I::checkBox<wheels<&W::bGroundReleaseOn>>("Enable Wheel Ground Release",
                                              "The wheels may leave the ground."),
    I::spinner<wheels<&W::fRelMaxBumperLen>>("Suspension Length (Radius Relative)",
                                             "How far a wheel may hang down.", {0, 100, 0.001}),
    I::spinner<wheels<&W::dMaximumSpringChangeVelocityRel>>(
        "Maximum Wheel Extension Velocity (Radius Rel)", "How fast a wheel may move down.",
        {0, 100, 0.001}),
    I::end(),
    I::group("Ray Cast Properties"),
    I::intSpinner<wheels<&W::iRayMultiplier>>("Ray Multiplier",
                                              "How many rays find the ground under the rim of a "
                                              "wheel.",
                                              {1, 100, 1}),
    I::checkBox<wheels<&W::bAddRaysAtWheelEdges>>("Cast Rays at Wheel Edges",
                                                  "Both edges of the tires find the ground too."),
    I::spinner<wheels<&W::dDegsPerRay>>("Degrees Per Ray", "The angle between two rays.",
                                        {0.1, 89, 0.01}),
    I::checkBox<&S::bUseStaticMesh>(
        kFastRayCast,
        "Makes considerably faster calculations, but only non-animated surfaces may be used. The "
        "method also requires much more memory.",
        kHeard),
    I::checkBox<&S::bStoreGroundMeshData>(kStoreGround,
                                          "Keeps a copy of the ground's mesh in the tool.", kHeard),
    I::end(),
};

constexpr auto kChannelsOf = [](S& s) -> std::array<InputChannel, kChannels>& {
    return s.car.pcInput;
};

template <std::size_t... Index>
constexpr auto channelRows(std::index_sequence<Index...>)
{
    constexpr Bounds kResponse{0, 1, 0.001};
    return join(channelItems<S, kChannelsOf, Index>(
        kChannelDefaults[Index], kResponse,
        Index == STEERING_WHEEL ? Bounds{0, 1.57, 0.001} : Bounds{0, 1e16, 0.001})...);
}

constexpr std::array kInputsHead{
    I::group("Input Property Parameters"),
    I::spinner<car<&P::dGasPedalMaxRateOfChange>>(
        kAcceleration,
        "How fast the 4-wheeler can accelerate (Acceleration*((units per second per "
        "second)*multiplier)*(the scale of the car).",
        {0.001, 1e6, 0.01}, kHeard),
};
constexpr std::array kInputsEnd{I::end()};

constexpr auto kItems =
    join(kGauges, kGeneralModes, kAutonomous, kSteering, kSuspension, kGeneral, kGround,
         kInputsHead, channelRows(std::make_index_sequence<kChannels>()), kInputsEnd);
static_assert(isSound(kItems));

} // namespace

std::span<const Item<Settings>> items()
{
    return kItems;
}

} // namespace tvw::rgs::addon::carextended
