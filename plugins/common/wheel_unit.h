/// A wheel that follows the ground by rays.
///
/// A wheel is no body of its own: its height is measured. A ray down through the hub finds the
/// ground, a fan of rays over the rim lets the wheel climb an edge before the hub is there. What
/// the wheel knows from tick to tick is how far its centre hangs below its place of rest: the drop,
/// along -Y of its mount [m]. Lengths in metres, world space.
#pragma once

#include "plugins/common/ground_sensor.h"

#include <cstdint>

namespace tvw::rgs {

/// "Ray Cast Properties" and "Wheel Ground Release Properties".
struct WheelSettings
{
    std::int32_t iRayMultiplier = 10;             ///< 1: the ray through the hub alone
    bool bAddRaysAtWheelEdges = true;             ///< fans at both edges of the tyre too
    double dDegsPerRay = 2.0;                     ///< between two rays of a fan
    bool bGroundReleaseOn = true;                 ///< the limits below hold
    double fRelMaxBumperLen = 0.5;                ///< furthest drop, in radii; 0: no limit
    double dMaximumSpringChangeVelocityRel = 3.0; ///< of a growing drop, radii per s; 0: no limit
    double fSurfaceEdgeResponseFactor = 0.8; ///< share of the way to the measured drop per 0.04 s
};

/// Where a wheel hangs in this tick.
struct WheelMount
{
    Vector3d X, Y, Z; ///< its axes, of unit length: Y up, -Z forward
    Vector3d rest;    ///< centre of the wheel at rest
    double radius;    ///< effective
    double width;
    double lift;       ///< how far above `rest` the first ray starts
    double bodyLength; ///< bounds the search upward
    bool gravityOn;
    double risen = 0.0; ///< of `rest` since the last tick, over the plane that the wheels stand in:
                        ///< the body's own motion, which is no edge in the ground
};

/// What one tick leaves for the next.
struct WheelMemory
{
    double CurrDelta = 0.0;    ///< drop of the centre, filtered
    double CurrDeltaW = 0.0;   ///< drop as measured
    double lastDrop = 0.0;     ///< of the tick before
    double height = 0.0;       ///< of the centre in the world, last tick
    double heightBefore = 0.0; ///< and the tick before that
    Vector3d bottom;           ///< lowest point at the end of the last tick
};

/// What a tick found.
struct WheelContact
{
    Vector3d centre;
    Vector3d normal{0, 1, 0};
    Vector3d hit;
    bool bInTheAir = false;  ///< the tyre does not touch
    bool outOfReach = false; ///< nor does the ground lie within the travel of the spring
};

class WheelUnit
{
public:
    WheelUnit();

    /// One tick: asks the ground and moves the drop. ground: between its `beginTick` and `endTick`.
    /// dt: step of the tick [s].
    void update(const WheelMount& mount, const WheelSettings& settings, GroundSensor& ground,
                double dt);

    /// The end of the tick: bottom is the lowest point [world] once the ground's shaking is in it.
    /// Answers how far it has travelled since the last tick [m].
    double roll(const Vector3d& centre, const Vector3d& bottom);

    /// At rest at that place, as at the start of a run.
    void settle(const Vector3d& centre, const Vector3d& bottom);

    WheelMemory memory;
    WheelContact contact;

private:
    bool findGround(const WheelMount& mount, const WheelSettings& settings, GroundSensor& ground);
    double firstLift(const WheelMount& mount) const;
    bool castHub(const WheelMount& mount, const WheelSettings& settings, GroundSensor& ground,
                 std::size_t surface, double& drop, GroundHit& hit) const;
    void takeDrop(const WheelMount& mount, const WheelSettings& settings, bool found, double dt);
    void standOnPlane(const WheelMount& mount);
    void climbEdges(const WheelMount& mount, const WheelSettings& settings, GroundSensor& ground);
    struct Fan;
    Fan& fillFan(const WheelMount& mount, const WheelSettings& settings, const Vector3d& centre);
    void releaseGround(const WheelMount& mount, const WheelSettings& settings, double dt);

    /// A ray of one fan, by its angle to straight down.
    struct RimRay
    {
        double sine, cosine;
        double halfSine, halfCosine;
    };
};

} // namespace tvw::rgs
