/// The four-wheeler's model: inputs in, poses of body and wheels out. No node, no host.
///
/// The car is a plane that moves along a path given by speed and steering, and a body on springs
/// above it. The wheels measure the ground; after each tick the plane is laid onto their lowest
/// points, so that hills tilt and lift the car. All is integrated in sub-steps of about 0.003 s.
///
/// Axes: +Y up, -Z forward, +X right; metres, seconds, rad. "Car" is the plane's frame, "body" that
/// of the sprung body. An increment is what a sub-step adds. `tick` order: `update`, then for each
/// wheel `followGround`, then `updateWheelRotation` and `alignToWheels`.
#pragma once

#include "plugins/common/sprung_body.h"
#include "plugins/release/carextended/carextended_parameters.h"
#include "util/transform.h"

namespace tvw::rgs::addon::carextended {

/// A wheel's part of the state that is not `WheelMemory`.
struct CarWheel
{
    double dSpringForce = 0.0;  ///< of the last sub-step; positive lifts the body
    Vector3d vWorldPos;         ///< centre, world
    Vector3d vWorldPosPrev;     ///< at the last tick
    Vector3d vBottom;           ///< lowest point
    double fSuspZeroDiff = 0.0; ///< compression: the mount above its rest
    double fSuspZeroDiff_prev = 0.0;
    double pfTotalPitch = 0.0; ///< spin angle, 0 to 2 pi
    double dPitchIncr = 0.0;   ///< spin of this tick; negative rolls forward
    double dYaw = 0.0;         ///< steering angle; positive to the left
    double dYawPrev = 0.0;
    double dGravelOffset = 0.0; ///< height added by the ground's shaking
    double dWheelHeight = 0.0;  ///< of the centre in the car's frame, as measured
};

/// What a tick leaves for the next beside the variables with names of their own. Flags are bytes:
/// the record is its bytes in a file.
struct CarMemory
{
    std::array<CarWheel, kWheels> wheel;
    Vector3d vCarPos;          ///< in the plane of the wheel bottoms, world
    Quatd qCarRot;             ///< the plane's rotation
    Vector3d vPreviousIncr;    ///< world translation of the sub-step before
    Vector3d vCarAccel;        ///< of the plane, world [m/s^2]
    Vector3d vLocalAccel;      ///< the same in the car's frame
    Vector3d vBodyPos;         ///< world
    Quatd qBodyRot;            ///< world
    Quatd qLevelRot;           ///< heading alone: to what a flying car returns
    Vector3d vSkidBrakeDecel;  ///< increment at the start of a skid brake / dt
    Vector3d vSkidBrakeRotVel; ///< turn at its start / dt
    double iSkidSignVel = 1.0;
    double iSkidSignSteer = 1.0;
    double dSteeringMem = 0.0;   ///< last shaped steering input
    double dAbsStartValue = 0.0; ///< gas value when the brake was pressed
    double dBrakeGasVal = 0.0;   ///< gas value at the end of the last tick
    double dSteeringRsp = -1.0;  ///< the steering's response in a burnout; below 0: the user's own
    std::array<std::uint8_t, kWheels> inTheAir{};
    std::array<std::uint8_t, kWheels> outOfReach{};
    std::uint8_t bAbsArmed = 1;
    std::uint8_t bBoosterOn = 0;
    std::uint8_t bCarFirstInAir = 1;
    std::uint8_t bSkiddingArmed = 0;
    std::uint8_t bSkidFading = 0;
    std::array<std::uint8_t, 3> unused{};
};

/// What the scene says at the start of a run, or in a tick.
struct CarSurroundings
{
    Vector3d vGravityDir{0, -1, 0}; ///< of unit length, world
    ExternalForce force{{0, 0, 1}, {}};
};

/// The wheel's place when the car starts anew.
struct WheelPlace
{
    Vector3d centre; ///< world
    Vector3d up;     ///< of the body, of unit length
};

class CCarCam
{
public:
    explicit CCarCam(CarParameters& parameters) : p(parameters) {}

    /// Stands at rest where its body and wheels are; the rig in the parameters is there already.
    void prepare(const Vector3d& bodyOrigin, const std::array<WheelPlace, kWheels>& places);

    /// gas: initial value [body lengths/s].
    void startMoving(double gas, double dt);

    /// Wheels look where the steering has them, at both ends of the tick.
    void prepareWheels(double dt);

    /// Autonomous mode: gas and steering towards a target [world].
    void followTarget(const Vector3d& target, double dt);

    /// One tick of inputs, path and springs. dt: step [s].
    void update(double dt);

    /// Wheel i measures the ground under the guarded body; X, Y, Z: its axes.
    void followGround(std::size_t i, const Vector3d& X, const Vector3d& Y, const Vector3d& Z,
                      GroundSensor& ground, double dt);

    void updateWheelRotation();

    /// Lays the plane onto the four wheels, unless all are in the air.
    void alignToWheels(double dt);

    /// The body's position in this tick, raised where it would scrape the ground. Before the
    /// wheels.
    Vector3d guardBody();
    Vector3d wheelCentre(std::size_t i) const { return unit[i].contact.centre; }

    /// The rotation of wheel i with the given spin, yaw and body rotation, world; mirrored on the
    /// right.
    Quatd wheelRotation(std::size_t i, double spin, double yaw, const Quatd& body) const;
    Quatd wheelRotation(std::size_t i) const;

    double speed() const { return p.rig.dCarLength * p.pcInput[GAS_PEDAL].dValue; } ///< [m/s]
    double steerAngle() const;
    double turnBaseZ() const; ///< of the turn base in the car [m]
    bool wheelInTheAir(std::size_t i) const { return m.inTheAir[i] != 0; }

    /// The three counters at their start, moved by the seed.
    void seed(std::int32_t adder);

    CarParameters& p;
    CarSurroundings scene;
    CarMemory m;
    std::array<WheelUnit, kWheels> unit;

    // The state that is recorded under names of its own.
    SprungAxis heave;                      ///< fRelYPos, fRelYVel
    SprungAxis pitch;                      ///< fRelXAng, fRelXAngVel
    SprungAxis roll;                       ///< fRelZAng, fRelZAngVel
    Vector3d vAcceleration;                ///< of heave, pitch and roll, in the last sub-step
    QTransformd qTransCarAbsIncr;          ///< world translation and yaw of a sub-step
    double fCarLocalYawIncr = 0.0;         ///< yaw of a sub-step
    double dWantedSkiddingValue = 1.0;     ///< grip: 1 follows the wheels at once
    double fSkidWantedGasPedalValue = 0.0; ///< what the gas was worth when a skid brake let go
    double dInputFilterMem = 0.0;
    double dGasPedalInputFilterMem = 0.0;
    double gasInputPrev = 0.0; ///< last shaped gas input
    TargetFollower follower;
    Vector3d vSkidBrakePosIncr;
    double dSkidBrakeLocalYawIncr = 0.0;
    Quatd QGravityFilterMem;
    bool bIsReverseVelAbsBraking = false;
    bool bSkidBreakingOn = false;
    bool bSkidBreakingOnDisableFeatures = false;
    bool bSkidFirstTime = true;
    bool bSkiddingOn = false;
    bool bCarInTheAir = false;
    std::int32_t randomValue_gravelShake = 1000;
    std::int32_t randomValue_burnout = 10000;
    std::int32_t randomValue_steeringNoise = 100000;

private:
    /// The circle on which the car turns.
    struct TurnGeometry
    {
        double radius;   ///< signed: negative to the right for forward motion
        double backAxle; ///< turn base behind the middle, half lengths
    };
    struct PlannedIncrement
    {
        Vector3d translation; ///< world
        Quatd yaw;
    };

    InputChannel& in(Channel channel) const { return p.pcInput[channel]; }
    double yawAlongPath(const TurnGeometry& turn, double swing, double h) const;

    // Inputs (steering.cpp, drive.cpp)
    void updateInputs(double dt);
    void shapeGas(double dt);
    void limitGasRate(double dt);
    void shapeSteering(double dt);
    void avoidWorldEdge();
    void shapeSkidding(double dt);
    void updateBooster(double dt);
    void updateAbsBrake(double dt);
    void brake(double share, double dt);
    void updateGravel(double dt);

    // Skidding and flight (skid.cpp)
    void updateInAir(double dt);
    void returnToLevel(double dt);
    void updateSkidBrake(double dt);
    void startSkidBrake(double dt);
    void endSkidBrake(double dt);
    void fadeSkidBrake(double dt);
    void fadeSkidYaw(double dt);
    void stopSkidBrake();
    void updateSkiddingState();
    double grip() const;

    // Sub-step (CCarCam.cpp, suspension.cpp)
    void keepWheelHeights();
    void subStep(double h);
    void keepMoving();
    TurnGeometry turnGeometry() const;
    void yawTowards(const TurnGeometry& turn, double swing, double h);
    void burnOut(double h);
    double burnoutYaw(double h) const;
    PlannedIncrement plannedIncrement(const TurnGeometry& turn, double swing, double h) const;
    void blendWithGrip(const PlannedIncrement& planned, double h);
    void moveAlongPlane(double h);
    void steerWheels(const TurnGeometry& turn, double h);
    std::array<Vector3d, kWheels> footing(const Vector3d& up, double dt) const;
    SpringLoad springs(double h);
    bool flies() const;
    double mass() const;
    double massHeight() const;
    void heaveBody(const SpringLoad& load, double h);
    void pitchBody(const SpringLoad& load, double h);
    void rollBody(const SpringLoad& load, double h);
    void placeBodyAndWheels();
    void compressSprings();

    std::array<double, kWheels> rollDistance_{}; ///< of this tick [m]
    std::array<double, kWheels> wheelHeight_{}; ///< of the centre in the plane before this tick [m]
    Vector3d guardedBody_;
    double burnoutMoment_ = 0.0; ///< of this sub-step; lifts the nose
    double stiffening_ = 1.0;    ///< of the springs, by the booster in this tick
    bool inAirThisTick_ = false;
    bool justLanded_ = false;
};

/// Sub-steps of a tick: [s] each.
double subStepLength(double dt);

} // namespace tvw::rgs::addon::carextended
