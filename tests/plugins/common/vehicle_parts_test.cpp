#include "plugins/common/counter_noise.h"
#include "plugins/common/follow_camera.h"
#include "plugins/common/input_channel.h"
#include "plugins/common/spin_keys.h"
#include "plugins/common/sprung_body.h"
#include "plugins/common/target_follower.h"
#include "plugins/common/vehicle_meshes.h"
#include "plugins/common/wheel_unit.h"
#include "tests/support/ground_meshes.h"

#include <gtest/gtest.h>

#include <numbers>
#include <set>
#include <vector>

namespace tvw::rgs {
namespace {

constexpr double kPi = std::numbers::pi;

TEST(SpinKeys, AsManyAsTheTurnNeeds)
{
    struct Case
    {
        const char* name;
        double increment;
        std::vector<double> left; ///< shares of the frame
    };
    const Case cases[] = {
        {"a still wheel", 0.0, {}},
        {"just short of the limit", 0.98 * kPi, {}},
        {"one turn", 2 * kPi, {1.01 / 2, 0.02 / 2}},
        {"two and a half turns", -5 * kPi, {4.01 / 5, 3.02 / 5, 2.03 / 5, 1.04 / 5, 0.05 / 5}},
    };
    for (const Case& c : cases) {
        std::vector<double> left;
        double angle = 1.0;
        forSpinKeys(1.0, c.increment, [&](double at, double share) {
            const double step = std::remainder(at - angle, 2 * kPi);
            EXPECT_NEAR(step, std::copysign(0.99 * kPi, c.increment), 1e-9) << c.name;
            angle = at;
            left.push_back(share);
        });
        ASSERT_EQ(left.size(), c.left.size()) << c.name;
        for (std::size_t i = 0; i < left.size(); ++i)
            EXPECT_NEAR(left[i], c.left[i], 1e-9) << c.name << ", key " << i;
    }
}

TEST(SpinKeys, AnglesStayWithinOneTurn)
{
    for (const double angle : {-1e-300, -0.5, 0.0, 6.0, 7.0, -700.0, 2 * kPi}) {
        EXPECT_GE(wrapTurn(angle), 0.0) << angle;
        EXPECT_LT(wrapTurn(angle), 2 * kPi) << angle;
        EXPECT_NEAR(std::remainder(wrapTurn(angle) - angle, 2 * kPi), 0.0, 1e-9) << angle;
    }
}

TEST(CounterNoise, RepeatsAndFillsItsRange)
{
    std::int32_t counter = 1000;
    std::int32_t again = 1000;
    double sum = 0.0;
    std::set<double> values;
    constexpr int kDraws = 4000;
    for (int i = 0; i < kDraws; ++i) {
        const double value = counterNoise(counter);
        ASSERT_EQ(value, counterNoise(again));
        ASSERT_GE(value, 0.0);
        ASSERT_LT(value, 1.0);
        sum += value;
        values.insert(value);
    }
    EXPECT_EQ(counter, 1000 + kDraws);
    EXPECT_NEAR(sum / kDraws, 0.5, 0.02);
    EXPECT_GT(values.size(), kDraws - 10U);
    std::int32_t first = 0; // n = 0: x = 0, 0 x anything - 771171059 in 31 bits
    EXPECT_EQ(counterNoise(first), (2147483648.0 - 771171059.0) / 2147483648.0);
}

TEST(SprungBody, ASpringSwingsWithItsFrequency)
{
    // k = 400 1/s^2, no damping: half a swing takes pi / 20 s and ends at the other side.
    SprungAxis axis{.value = 0.1, .rate = 0.0};
    double acceleration = -40.0;
    constexpr double kStep = 0.0005;
    for (double t = 0; t < kPi / 20 - kStep / 2; t += kStep) {
        const double before = acceleration;
        const bool limited = moveVerlet(axis, before, 1.0, kStep);
        acceleration = springForce(axis.value, 0.0, 400.0, 0.0);
        finishVerlet(axis, before, acceleration, limited, kStep);
    }
    EXPECT_NEAR(axis.value, -0.1, 1e-4);
    EXPECT_NEAR(axis.rate, 0.0, 0.02);
}

TEST(SprungBody, TheLimitStopsTheRate)
{
    SprungAxis axis{.value = 0.09, .rate = 10.0};
    const bool limited = moveVerlet(axis, 0.0, 0.1, 0.01);
    finishVerlet(axis, 0.0, 5.0, limited, 0.01);
    EXPECT_EQ(axis.value, 0.1);
    EXPECT_EQ(axis.rate, 0.0);
}

TEST(SprungBody, FlightSettlesAlikeWhateverTheStep)
{
    for (const double step : {0.001, 0.003, 0.006}) {
        SprungAxis axis{.value = 1.0, .rate = 1.0};
        for (int i = 0; i < 12.001e-3 / step; ++i)
            settleInFlight(axis, 0.8, step);
        const double steps = std::ceil(12.001e-3 / step) * step / 0.003;
        EXPECT_NEAR(axis.value, std::pow(0.8, steps), 1e-12) << step;
        EXPECT_NEAR(axis.rate, std::pow(0.5, steps), 1e-12) << step;
    }
}

TEST(SprungBody, MomentsTurnTheBodyAgainstThem)
{
    // A push up at the nose (z = -1): the springs' way of counting gives a negative moment, and
    // pitch, which is its opposite, lifts the nose. Likewise a push up on the right, x = 1.
    const SprungWheel wheels[] = {{.x = 1.0, .z = -1.0, .force = 2.0}};
    const SpringLoad load = springLoad(wheels);
    EXPECT_EQ(load.pitchMoment, -2.0);
    EXPECT_EQ(load.rollMoment, -2.0);
    const ExternalForce force{{0, 2, 0}, {1, 0.5, -1}};
    EXPECT_EQ(pitchMomentOf(force), -2.0);
    EXPECT_EQ(rollMomentOf(force), -2.0);
    EXPECT_GT(rotate(attitude(0.1, 0.0), Vector3d{0, 0, -1}).y, 0.0) << "pitch lifts the nose";
    EXPECT_GT(rotate(attitude(0.0, 0.1), Vector3d{1, 0, 0}).y, 0.0) << "roll lifts the right";
}

TEST(TargetFollower, SteersToTheTargetAndReachesIt)
{
    const FollowerLimits limits{.gasMaximum = 3.0,
                                .steeringMaximum = 0.7,
                                .steeringRate = 1e9,
                                .radiusReduction = 0.0,
                                .bodyLength = 2.0};
    TargetFollowerSettings settings;
    settings.dFollowAccRespFact = settings.dAutoSteeringValueRespFact = 1.0;
    struct Case
    {
        const char* name;
        Vector3d target;
        double gas, steering;
        bool reached;
    };
    // Gas: 0.5 x (distance - 1) / 2 x 3.5, to at most 3 with distances cut at 6.
    const Case cases[] = {
        {"ahead", {0, 5, -3}, 1.75, 0.0, false},
        {"far ahead", {0, 0, -100}, 3.0, 0.0, false},
        {"behind, at half the gas", {0, 0, 3}, -0.875, 0.0, false},
        {"to the right", {3, 0, 0}, 0.0, 0.7, false},
        {"inside the sphere", {0, 0, -0.5}, 0.0, 0.0, true},
        {"on the spot", {0, 0, 0}, 0.0, 0.0, true},
    };
    for (const Case& c : cases) {
        TargetFollower follower;
        EXPECT_EQ(follower.follow(c.target, settings, limits, 0.04), c.reached) << c.name;
        EXPECT_NEAR(follower.dFollowAccMem, c.gas, 1e-12) << c.name;
        EXPECT_NEAR(follower.dAutoSteeringValueMem, c.steering, 1e-12) << c.name;
    }
}

TEST(FollowCamera, TrailsBehindAndArrives)
{
    FollowCamera camera;
    camera.place({});
    const QTransformd goal{{1, 0, 0}, {}};
    camera.follow(goal, {}, 0.02); // one round of half the shares: 0.3, and of that 0.3
    EXPECT_NEAR(camera.first.translation.x, 0.3, 1e-12);
    EXPECT_NEAR(camera.second.translation.x, 0.09, 1e-12);
    for (int i = 0; i < 200; ++i)
        camera.follow(goal, {}, 0.02);
    EXPECT_NEAR(camera.second.translation.x, 1.0, 1e-9);
}

constexpr WheelMount kMount{.X = {1, 0, 0},
                            .Y = {0, 1, 0},
                            .Z = {0, 0, 1},
                            .rest = {0, 0.25, 0},
                            .radius = 0.25,
                            .width = 0.2,
                            .lift = 1.0,
                            .bodyLength = 3.0,
                            .gravityOn = true};

TEST(WheelUnit, StandsOnThePlaneAndLetsGoOfIt)
{
    WheelMount mount = kMount;
    struct Case
    {
        const char* name;
        double height; ///< of the place of rest
        double lastDrop, drop;
        bool inTheAir, outOfReach;
    };
    // Radius 0.25 m: travel 0.125 m, extension 0.75 m/s, 0.03 m in a tick.
    const Case cases[] = {
        {"at rest", 0.25, 0.0, 0.0, false, false},
        {"pressed in", 0.15, 0.0, -0.1, false, false},
        {"follows a dip", 0.27, 0.0, 0.02, false, false},
        {"lags behind a deep dip", 0.35, 0.0, 0.03, true, false},
        {"hangs on its spring", 1.0, 0.125, 0.125, true, true},
    };
    GroundSensor plane;
    for (const Case& c : cases) {
        WheelUnit wheel;
        wheel.memory.CurrDelta = c.lastDrop;
        mount.rest.y = c.height;
        wheel.update(mount, {}, plane, 0.04);
        EXPECT_NEAR(wheel.memory.CurrDelta, c.drop, 1e-12) << c.name;
        EXPECT_NEAR(wheel.contact.centre.y, c.height - c.drop, 1e-12) << c.name;
        EXPECT_EQ(wheel.contact.bInTheAir, c.inTheAir) << c.name;
        EXPECT_EQ(wheel.contact.outOfReach, c.outOfReach) << c.name;
    }
}

TEST(WheelUnit, LimitsOfZeroAreNone)
{
    GroundSensor plane;
    WheelUnit wheel;
    WheelMount mount = kMount;
    mount.rest.y = 5.0;
    wheel.update(mount, {.fRelMaxBumperLen = 0.0, .dMaximumSpringChangeVelocityRel = 0.0}, plane,
                 0.04);
    EXPECT_NEAR(wheel.contact.centre.y, 0.25, 1e-12);
    EXPECT_FALSE(wheel.contact.bInTheAir);
}

TEST(VehicleMeshes, AreSoundAndFaceOutward)
{
    for (const auto& [name, make] : {std::pair("body", &shape::carBody),
                                     {"wheel", &shape::wheel},
                                     {"relocator", &shape::wheelRelocator},
                                     {"centre", &shape::wheelCentre},
                                     {"suspension", &shape::wheelSuspension},
                                     {"plate", &shape::attachPlate},
                                     {"gravity", &shape::gravityArrow},
                                     {"force", &shape::forceArrow},
                                     {"steering wheel", &shape::steeringWheel},
                                     {"turn base", &shape::turnBase},
                                     {"base", &shape::basePlane}}) {
        EXPECT_TRUE(make().isSound()) << name;
        EXPECT_GT(tests::volume(make()), 0.0) << name;
    }
}

} // namespace
} // namespace tvw::rgs
