#include "tests/plugins/carextended/car_fixture.h"

namespace tvw::rgs::tests {
namespace {

/// Full gas, pressed just behind the start: a pedal that is down at the start is an initial
/// velocity.
Hands fullGas(double time)
{
    return {.gas = time > 0.0 ? 1.0 : 0.0};
}

TEST_F(CarTest, ReachesTheSpeedsOfItsFiltersOnThePlane)
{
    // Gas moves 1/3 of the way per half second (2 body lengths/s^2 of 3), then by 1 % per 0.04 s.
    struct Case
    {
        double time, speed; // [s], [body lengths/s]
    };
    for (const double fps : {10.0, 25.0, 50.0, 100.0, 1000.0}) {
        place(fps);
        drive(20.0, fullGas);
        for (const Case& c : {Case{2.0, 0.80}, {5.0, 1.97}, {10.0, 2.70}, {20.0, 2.98}})
            EXPECT_NEAR(speed(c.time) / kLength, c.speed, 0.03)
                << fps << " fps, " << c.time << " s";
    }
}

TEST_F(CarTest, LeftMirrorsRight)
{
    set(*car, "Gravel Shake Offset Value", 0.0);
    const auto turning = [](double side) {
        return [side](double t) { return Hands{.gas = 0.8, .steering = t > 1.0 ? side : 0.0}; };
    };
    drive(6.0, turning(0.7));
    const Matrix4 right = body(6.0);
    session->stage().hostUndo();
    session->stage().setTime(0.0);
    drive(6.0, turning(-0.7));
    const Matrix4 left = body(6.0);
    EXPECT_GT(right[12], 5.0) << "a positive input turns right, and right is +X";
    for (int i = 0; i < 16; ++i) {
        const bool acrossX = (i % 4 == 0) != (i / 4 == 0);
        EXPECT_NEAR(left[i], acrossX ? -right[i] : right[i], 1e-9) << "element " << i;
    }
}

TEST_F(CarTest, RestsWithoutDriftOrTremble)
{
    drive(60.0, [](double) { return Hands{}; });
    EXPECT_LT(length(position(60.0) - position(0.0)), 1e-5);
    for (const double t : {20.0, 40.0, 60.0}) {
        EXPECT_LT(std::abs(pitch(t)), 1e-9) << t;
        EXPECT_LT(std::abs(roll(t)), 1e-9) << t;
    }
}

TEST_F(CarTest, BrakesToAStandWithADippingNose)
{
    set(*car, "Gravel Shake Offset Value", 0.0);
    struct Case
    {
        const char* name;
        Hands brake;
    };
    for (const Case& c : {Case{"brake pedal", {.brake = 1.0}}, {"reverse gas", {.gas = -1.0}}}) {
        session->stage().setTime(0.0);
        drive(20.0, [&](double t) { return t < 10.0 ? Hands{.gas = 1.0} : c.brake; });
        double deepest = 0.0;
        for (double t = 10.0; t < 14.0; t += 0.04)
            deepest = std::min(deepest, pitch(t));
        EXPECT_NEAR(deepest, -0.03, 0.01) << c.name;
        EXPECT_GT(speed(10.6), 1.0) << c.name << ": not at once";
        // A gas of 1e-8 is what stands for zero.
        EXPECT_LT(length(position(20.0) - position(17.0)), 1e-5)
            << c.name << ": held, not reversed";
    }
}

TEST_F(CarTest, ReversesAfterTheSecondPress)
{
    drive(14.0, [](double t) {
        return Hands{.gas = t < 3.0 ? 1.0 : t > 7.0 && t < 7.5 ? 0.0 : -1.0};
    });
    EXPECT_LT(speed(7.0), 0.01) << "braked and held";
    EXPECT_GT(position(14.0).z, position(7.5).z + 1.0) << "backward is +Z";
}

TEST_F(CarTest, LeansOutwardInATurn)
{
    set(*car, "Gravel Shake Offset Value", 0.0);
    set(*car, "Skidding Release Value (Lateral Vel Rel)", 100.0);
    drive(6.0, [](double t) { return Hands{.gas = 1.0, .steering = t > 1.0 ? 1.0 : 0.0}; });
    EXPECT_GT(roll(4.0), 0.03) << "to the right: the right side rises";
    EXPECT_LE(roll(4.0), 0.0701) << "the limit";
}

TEST_F(CarTest, WheelsRollAsFarAsTheCarDrives)
{
    set(*car, "Gravel Shake Offset Value", 0.0);
    set(*car, "Gas Pedal (Forw/Backw) Maximum", 9.0); // 31.7 m/s: 5.1 rad a frame
    drive(2.0, [](double) { return Hands{.gas = 1.0}; });
    const stage::StageNode& wheel = node(*car, "WheelMesh_FL");
    constexpr double kRadius = 0.26 * 0.95;
    // Between any two keys the turn is less than half, so that summing them up gives the whole.
    double rolled = 0.0;
    const std::vector<double> times = wheel.poseKeyTimes();
    EXPECT_GT(times.size(), 90U) << "one key more for each frame";
    for (std::size_t i = 1; i < times.size(); ++i) {
        if (times[i] <= 1.0)
            continue;
        const Quatd turn = toQuat(orthonormalise(wheel.world(times[i]))) *
                           conjugate(toQuat(orthonormalise(wheel.world(times[i - 1]))));
        const Vector3d angle = toRotationVector(turn);
        EXPECT_LE(angle.x, 1e-6) << "rolling forward turns about -X, at " << times[i];
        rolled += length(angle);
    }
    EXPECT_NEAR(rolled * kRadius, position(1.0).z - position(2.0).z, 0.3);
}

TEST_F(CarTest, ASkidBrakeStopsByItselfAndStaysWhenItIsLetGo)
{
    drive(16.0, [](double t) {
        const double steering = t > 4.5 && t < 7.0 ? 0.8 : 0.0;
        const double brake = t >= 5.0 && t < 9.0 ? 1.0 : 0.0;
        return Hands{.gas = t < 5.0 ? 1.0 : 0.0, .steering = steering, .skidBrake = brake};
    });
    EXPECT_GT(speed(5.5), 3.0) << "3 % per frame";
    for (const double t : {8.0, 9.5, 11.0, 16.0}) {
        EXPECT_LT(speed(t), 0.05) << t;
        EXPECT_LT(length(position(t) - position(8.0)), 0.02) << t;
        EXPECT_GT(dot(body(t).axis(2), body(8.0).axis(2)), 0.9999 * kLength * kLength) << t;
    }
}

TEST_F(CarTest, FrameRatesAgree)
{
    std::vector<Vector3d> ends;
    for (const double fps : {25.0, 50.0, 100.0, 200.0}) {
        place(fps);
        set(*car, "Gravel Shake Offset Value", 0.0);
        drive(8.0, [](double t) {
            return Hands{.gas = 0.7,
                         .steering = t > 2.0 && t < 4.0 ? 0.4 : 0.0,
                         .skidBrake = t > 6.0 ? 1.0 : 0.0};
        });
        ends.push_back(position(8.0));
    }
    for (std::size_t i = 1; i < ends.size(); ++i)
        EXPECT_LT(length(ends[i] - ends[0]), 1.0) << i;
}

TEST_F(CarTest, FollowsTheTargetAndStopsAtIt)
{
    Matrix4 goal;
    setTranslation(goal, {20.0, 0.0, -30.0});
    node(*car, "TargetMesh").setWorld(goal, 0.0, false);
    set(*car, "Autonomous Mode", 1.0);
    drive(40.0, [](double) { return Hands{}; });
    const Vector3d left = position(40.0) - translationOf(goal);
    EXPECT_LT(std::hypot(left.x, left.z), 1.5 * kLength);
    EXPECT_LT(speed(40.0), 0.05);
}

TEST_F(CarTest, NothingEverBecomesNotANumber)
{
    struct Case
    {
        const char* name;
        std::map<std::string, double> items;
    };
    const std::vector<Case> cases{
        {"as shipped", {}},
        {"no springs",
         {{"Front Stiffness", 0},
          {"Back Stiffness", 0},
          {"Front Damping", 0},
          {"Back Damping", 0}}},
        {"stiffest", {{"Front Stiffness", 10000}, {"Back Damping", 10000}, {"Mass Multiplier", 0}}},
        {"no gas", {{"Gas Pedal (Forw/Backw) Maximum", 0}, {"Autonomous Mode", 1}}},
        {"wild",
         {{"Booster Maximum", 1000},
          {"Burnout Maximum", 1000},
          {"Tire Pressure", 1000},
          {"Gravel Shake Amplitude Maximum", 1000},
          {"Steering Noise", 1000}}},
        {"no suspension",
         {{"Suspension Length (Radius Relative)", 0},
          {"Maximum Wheel Extension Velocity (Radius Rel)", 0}}},
    };
    for (const Case& c : cases) {
        place(25.0);
        for (const auto& [label, value] : c.items)
            set(*car, label, value);
        drive(12.0, [](double t) {
            return Hands{.gas = wobble(t),
                         .steering = wobble(2 * t),
                         .booster = t > 9 ? 1.0 : 0.0,
                         .brake = wobble(3 * t) > 0.7 ? 1.0 : 0.0,
                         .skid = wobble(t + 9) > 0.6 ? 1.0 : 0.0,
                         .skidBrake = wobble(t + 3) > 0.8 ? 1.0 : 0.0,
                         .burnout = wobble(t + 5) > 0.6 ? 1.0 : 0.0,
                         .force = wobble(t + 7)};
        });
        for (const auto& [name, keys] : allKeys()) {
            for (const Matrix4& pose : keys.poses) {
                for (const double element : pose.m)
                    ASSERT_TRUE(std::isfinite(element)) << c.name << ": " << name;
            }
        }
    }
}

} // namespace
} // namespace tvw::rgs::tests
