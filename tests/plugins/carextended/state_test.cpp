#include "tests/plugins/carextended/car_fixture.h"

namespace tvw::rgs::tests {
namespace {

/// Every pedal at some time.
Hands lively(double t)
{
    return {.gas = t < 4.0 ? 1.0 : wobble(t),
            .steering = wobble(1.7 * t),
            .booster = t > 2.0 && t < 3.0 ? 1.0 : 0.0,
            .brake = t > 5.0 && t < 5.3 ? 1.0 : 0.0,
            .skid = t > 1.0 && t < 1.4 ? 1.0 : 0.0,
            .skidBrake = t > 3.4 && t < 3.8 ? 1.0 : 0.0,
            .burnout = t > 4.2 && t < 4.7 ? 1.0 : 0.0,
            .force = t > 2.5 && t < 2.9 ? 1.0 : 0.0};
}

class CarState : public CarTest
{
};

TEST_F(CarState, ResimulatesBitForBit)
{
    drive(6.0, lively);
    const auto take = allKeys();
    for (const double from : {0.0, 0.0, 3.0, 3.6, 4.4}) {
        resimulate(from, 6.0);
        for (const auto& [name, keys] : allKeys())
            ASSERT_TRUE(keys == take.at(name)) << name << " from " << from;
    }
}

TEST_F(CarState, APunchInContinuesTheTake)
{
    drive(6.0, lively);
    const auto take = allKeys();
    for (const double from : {1.2, 2.6, 3.0, 3.6, 4.4, 5.2}) {
        session->stage().setTime(from);
        hold(lively(from));
        record(6.0 - from, [this](double t) { hold(lively(t)); });
        for (const auto& [name, keys] : allKeys()) {
            if (!(keys == take.at(name)))
                FAIL() << name << ", continued at " << from;
        }
    }
}

/// The nodes of the new scene have no keys, so the force, which hangs on the body, stays off.
TEST_F(CarState, ACarFromAFileContinuesWhereTheTakeWas)
{
    const auto hands = [](double t) {
        Hands h = lively(t);
        h.force = 0.0;
        return h;
    };
    drive(6.0, hands);
    ASSERT_EQ(car->tool()->save(), 0);
    const auto saved = car->saveData();
    const std::map<std::string, Keys> take = allKeys();
    for (const double from : {1.2, 3.0, 3.6, 4.4}) {
        place(25.0);
        car->setSaveData(saved.data(), static_cast<std::int32_t>(saved.size()));
        ASSERT_EQ(car->tool()->load(), 0);
        session->stage().setTime(from);
        hold(hands(from));
        record(6.0 - from, [&](double t) { hold(hands(t)); });
        const Keys& body = take.at(node(*car, "CarBodyMesh").name());
        const Keys now = keysOf(node(*car, "CarBodyMesh"));
        const std::size_t count = static_cast<std::size_t>((6.0 - from) * 25.0 + 0.5);
        ASSERT_GE(now.poses.size(), count);
        for (std::size_t i = 1; i <= count; ++i)
            ASSERT_TRUE(now.poses[now.poses.size() - i] == body.poses[body.poses.size() - i])
                << i << " frames before the end, from " << from;
    }
}

TEST_F(CarState, AnotherStartAnswersTheSame)
{
    drive(3.0, lively);
    const auto take = allKeys();
    session->stage().setTime(0.0);
    drive(3.0, lively);
    EXPECT_EQ(allKeys(), take) << "a retake";
    ASSERT_TRUE(session->stage().hostUndo());
    ASSERT_TRUE(session->stage().hostUndo());
    session->stage().setTime(0.0);
    drive(3.0, lively);
    EXPECT_EQ(allKeys(), take) << "after both takes were undone";
}

TEST_F(CarState, WithoutSeamlessTransitionsACarStartsAnew)
{
    set(*car, "Enable Seamless Transitions", 0.0);
    drive(3.0, [](double) { return Hands{.gas = 1.0}; });
    session->stage().setTime(2.0);
    drive(1.0, [](double) { return Hands{}; });
    // The gas fades by 1 % per 0.04 s.
    EXPECT_NEAR(speed(2.5), 3.0 * kLength * std::exp(-0.125), 0.2)
        << "the keys before the start give the speed";
}

TEST_F(CarState, AnUnevenBodyBecomesEvenFromItsLength)
{
    Matrix4 pose = scaled({}, {1.0, 1.0, 2.0});
    setTranslation(pose, {0.0, 0.15, 0.0});
    node(*car, "CarBodyMesh").setWorld(pose, 0.0, false);
    drive(0.4, [](double) { return Hands{}; });
    const Vector3d scale = scaleOf(body(0.4));
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(scale[axis], 2.0, 1e-9) << axis;
}

TEST_F(CarState, GaugesFollowTheirFactors)
{
    set(*car, "Multiplier", 2.0);
    // 2 x 3.522 m x 3 body lengths/s; 100 / 2 / 2 / 3.522
    EXPECT_NEAR(get(*car, "World Space Maximum Velocity Gauge"), 21.132, 1e-9);
    EXPECT_NEAR(get(*car, "World Space Acceleration Gauge (seconds from 0 to 100)"), 7.098239,
                1e-6);
    drive(2.0, [](double) { return Hands{.gas = 1.0}; });
    session->stage().setTime(1.0);
    EXPECT_NEAR(get(*car, "Current Velocity (% of max)"), 100.0, 0.1);
}

} // namespace
} // namespace tvw::rgs::tests
