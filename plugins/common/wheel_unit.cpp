#include "plugins/common/wheel_unit.h"

#include "util/filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace tvw::rgs {

namespace {

constexpr double kRayReach = 1000.0;  // how far a ray looks, in its own scale
constexpr std::size_t kUsualFan = 64; // rays: three fans of 19
constexpr double kLeastSlant = 1e-3;  // a wheel nearer to lying flat finds no plane

double reachOf(const WheelMount& mount, const WheelSettings& settings)
{
    return (settings.fRelMaxBumperLen + 1.0) * mount.radius * kRayReach;
}

/// The furthest drop of a wheel that touches; no limit with a suspension of length 0.
double travelOf(const WheelMount& mount, const WheelSettings& settings)
{
    return settings.fRelMaxBumperLen != 0.0 ? settings.fRelMaxBumperLen * mount.radius
                                            : std::numeric_limits<double>::infinity();
}

double extensionOf(const WheelMount& mount, const WheelSettings& settings, double dt)
{
    return settings.dMaximumSpringChangeVelocityRel * mount.radius * dt;
}

} // namespace

/// What a wheel asks in one tick. All wheels of a thread ask in turn and share the room, which so
/// stays in the nearest cache: a hundred cars with their own would fetch 28 kB for each car.
struct WheelUnit::Fan
{
    static Fan& shared()
    {
        static thread_local Fan fan;
        return fan;
    }

    Fan()
    {
        directions.reserve(kUsualFan);
        rays.reserve(kUsualFan);
        rimOf.reserve(kUsualFan);
        hits.reserve(kUsualFan);
        for (Rim& rim : rims_)
            rim.rays.reserve(kUsualFan);
    }

    /// The rays of one row under these settings, straight down in the middle. All cars of one make
    /// have the same; live spinners change them now and then.
    const std::vector<RimRay>& rim(const WheelSettings& settings);

    std::vector<Vector3d> directions; ///< of one row; the three share them
    std::vector<GroundRay> rays;      ///< these grow to the longest fan and stay
    std::vector<const RimRay*> rimOf; ///< of each ray
    std::vector<GroundHit> hits;

private:
    struct Rim
    {
        std::int32_t multiplier = 0;
        double step = 0.0; ///< degrees
        std::vector<RimRay> rays;
    };
    std::array<Rim, 4> rims_;
    std::size_t oldest_ = 0;
};

WheelUnit::WheelUnit()
{
    (void)Fan::shared(); // a tick allocates nothing
}

void WheelUnit::settle(const Vector3d& centre, const Vector3d& bottom)
{
    memory = {};
    memory.height = memory.heightBefore = centre.y;
    memory.bottom = bottom;
    contact = {.centre = centre, .hit = bottom};
}

void WheelUnit::update(const WheelMount& mount, const WheelSettings& settings, GroundSensor& ground,
                       double dt)
{
    contact.normal = {0, 1, 0};
    contact.outOfReach = false;
    memory.lastDrop = memory.CurrDelta;
    if (ground.isPlane()) {
        standOnPlane(mount);
    } else {
        const bool found = findGround(mount, settings, ground);
        takeDrop(mount, settings, found, dt);
        climbEdges(mount, settings, ground);
        if (!contact.bInTheAir) {
            // A factor of 1 and more is "at once"; beyond the number of sub-steps it would
            // overshoot.
            double drop = memory.lastDrop + mount.risen;
            response(drop, memory.CurrDeltaW, std::min(settings.fSurfaceEdgeResponseFactor, 1.0),
                     dt);
            memory.CurrDelta = drop;
        }
    }
    if (settings.bGroundReleaseOn)
        releaseGround(mount, settings, dt);
    contact.centre = mount.rest - mount.Y * memory.CurrDelta;
    if (contact.outOfReach || ground.isPlane())
        contact.hit = contact.centre - mount.Y * mount.radius;
}

double WheelUnit::roll(const Vector3d& centre, const Vector3d& bottom)
{
    const double travelled = length(bottom - memory.bottom);
    memory.bottom = bottom;
    memory.heightBefore = memory.height;
    memory.height = centre.y;
    return travelled;
}

void WheelUnit::standOnPlane(const WheelMount& mount)
{
    const double down = mount.Y.y; // -D.y
    contact.bInTheAir = false;
    if (down > kLeastSlant)
        memory.CurrDelta = mount.rest.y / down - mount.radius;
    memory.CurrDeltaW = memory.CurrDelta;
}

/// Where a wheel has fallen fast, its ray must start above the ground that it may have passed.
double WheelUnit::firstLift(const WheelMount& mount) const
{
    const double fall = memory.heightBefore - memory.height;
    return fall > 2.0 * mount.radius ? mount.lift + 2.0 * fall : mount.lift;
}

bool WheelUnit::castHub(const WheelMount& mount, const WheelSettings& settings,
                        GroundSensor& ground, std::size_t surface, double& drop,
                        GroundHit& hit) const
{
    const double highest = 2.0 * mount.bodyLength;
    const double raise = std::max(mount.lift, 0.01 * mount.bodyLength);
    for (double above = firstLift(mount);; above += raise) {
        const GroundRay ray{mount.rest + mount.Y * above, -mount.Y};
        hit.hit = ground.castGroundRay(surface, ray, reachOf(mount, settings) + above,
                                       &hit.distance, &hit.normal);
        if (hit.hit) {
            drop = hit.distance - above - mount.radius;
            return true;
        }
        if (!(above < highest))
            return false;
    }
}

/// The highest ground under the hub: the drop as measured, its normal and point.
bool WheelUnit::findGround(const WheelMount& mount, const WheelSettings& settings,
                           GroundSensor& ground)
{
    bool found = false;
    for (std::size_t surface = 0; surface < ground.surfaceCount(); ++surface) {
        double drop = 0.0;
        GroundHit hit;
        if (!castHub(mount, settings, ground, surface, drop, hit))
            continue;
        if (found && drop >= memory.CurrDeltaW)
            continue;
        found = true;
        memory.CurrDeltaW = drop;
        contact.normal = hit.normal;
        contact.hit = mount.rest - mount.Y * (drop + mount.radius);
    }
    return found;
}

/// A wheel in reach takes the drop that was measured; one that hangs sinks no faster than it may.
void WheelUnit::takeDrop(const WheelMount& mount, const WheelSettings& settings, bool found,
                         double dt)
{
    const double furthest = settings.fRelMaxBumperLen * mount.radius;
    const bool reaches =
        found && (!mount.gravityOn || memory.CurrDeltaW < travelOf(mount, settings));
    contact.bInTheAir = !reaches;
    contact.outOfReach = !reaches;
    if (reaches)
        memory.CurrDelta = memory.CurrDeltaW;
    else if (!found)
        memory.CurrDelta = memory.CurrDeltaW = furthest;
    else
        memory.CurrDelta = memory.CurrDeltaW =
            std::min(furthest, memory.lastDrop + extensionOf(mount, settings, dt));
    if (!found)
        contact.normal = {0, 1, 0};
}

const std::vector<WheelUnit::RimRay>& WheelUnit::Fan::rim(const WheelSettings& settings)
{
    for (const Rim& known : rims_) {
        if (known.multiplier == settings.iRayMultiplier && known.step == settings.dDegsPerRay)
            return known.rays;
    }
    Rim& rim = rims_[oldest_];
    oldest_ = (oldest_ + 1) % rims_.size();
    rim.multiplier = settings.iRayMultiplier;
    rim.step = settings.dDegsPerRay;
    constexpr double kQuarter = std::numbers::pi / 2;
    const double step = rim.step / 180.0 * std::numbers::pi;
    int count = rim.multiplier - 1;
    if (count * step > kQuarter)
        count = static_cast<int>(kQuarter / step);
    rim.rays.clear();
    for (int k = -count; k <= count; ++k) {
        const double angle = k * step;
        rim.rays.push_back(
            {std::sin(angle), std::cos(angle), std::sin(angle / 2), std::cos(angle / 2)});
    }
    return rim.rays;
}

WheelUnit::Fan& WheelUnit::fillFan(const WheelMount& mount, const WheelSettings& settings,
                                   const Vector3d& centre)
{
    Fan& fan = Fan::shared();
    const std::vector<RimRay>& rim = fan.rim(settings);
    fan.directions.clear();
    for (const RimRay& ray : rim) {
        const Vector3d half = mount.X * ray.halfSine;
        fan.directions.push_back(rotate(Quatd{half.x, half.y, half.z, ray.halfCosine}, -mount.Y));
    }
    const std::size_t down = rim.size() / 2; // the hub's own ray was cast
    const int outer = settings.bAddRaysAtWheelEdges ? 1 : 0;
    fan.rays.clear();
    fan.rimOf.clear();
    for (int side = -outer; side <= outer; ++side) {
        const Vector3d origin = centre + mount.X * (mount.width * 0.5 * side);
        for (std::size_t k = 0; k < rim.size(); ++k) {
            if (side == 0 && k == down)
                continue;
            fan.rays.push_back({origin, fan.directions[k]});
            fan.rimOf.push_back(&rim[k]);
        }
    }
    fan.hits.resize(fan.rays.size());
    return fan;
}

/// Ground that the tyre would cut into lifts the wheel: by as much as the deepest cut asks for.
void WheelUnit::climbEdges(const WheelMount& mount, const WheelSettings& settings,
                           GroundSensor& ground)
{
    if (settings.iRayMultiplier <= 1)
        return;
    const Vector3d centre = mount.rest - mount.Y * memory.CurrDeltaW;
    Fan& fan = fillFan(mount, settings, centre);
    const double radius = mount.radius;
    double highest = 0.0;
    bool touches = false;
    for (std::size_t surface = 0; surface < ground.surfaceCount(); ++surface) {
        ground.castFan(surface, fan.rays, radius, fan.hits);
        for (std::size_t i = 0; i < fan.rays.size(); ++i) {
            const double q = fan.hits[i].distance;
            if (!fan.hits[i].hit || q >= radius)
                continue;
            const double across = q * fan.rimOf[i]->sine;
            const double lift =
                std::sqrt(radius * radius - across * across) - q * fan.rimOf[i]->cosine;
            if (touches && lift <= highest)
                continue;
            touches = true;
            highest = lift;
            contact.normal = fan.hits[i].normal;
            contact.hit = fan.rays[i].origin + fan.rays[i].direction * q;
        }
    }
    if (!touches)
        return;
    contact.bInTheAir = contact.outOfReach = false;
    memory.CurrDeltaW -= highest;
    memory.CurrDelta = memory.CurrDeltaW;
}

/// Neither further than the spring is long, nor faster than it extends. A wheel with ground in
/// reach stays on it while the body rises: the plane is laid onto the wheels, and would rise too.
void WheelUnit::releaseGround(const WheelMount& mount, const WheelSettings& settings, double dt)
{
    const double travel = travelOf(mount, settings);
    if (memory.CurrDelta > travel) {
        contact.outOfReach = true;
        contact.bInTheAir = true;
        memory.CurrDelta = travel;
    }
    const double extension = extensionOf(mount, settings, dt);
    const double last = memory.lastDrop + (contact.outOfReach ? 0.0 : std::max(0.0, mount.risen));
    if (extension != 0.0 && memory.CurrDelta - last > extension) {
        memory.CurrDelta = last + extension;
        contact.bInTheAir = true;
    }
}

} // namespace tvw::rgs
