/// The model alone: no node, no host.
#include "plugins/release/carextended/carextended_CCarCam.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tvw::rgs::addon::carextended {
namespace {

/// A car on the plane y = 0.
class CarModel : public testing::Test
{
protected:
    static constexpr double kFrame = 0.04;

    void SetUp() override
    {
        std::array<WheelPlace, kWheels> places;
        for (std::size_t i = 0; i < kWheels; ++i)
            places[i] = {{p.rig.dWheelX[i], p.radius(i), p.rig.dWheelZ[i]}, {0, 1, 0}};
        car.prepare({0, p.rig.dBodyHeight, 0}, places);
        p.dGravelShakeOffset = 0.0;
    }

    void tick(double dt = kFrame)
    {
        p.pcInput[GAS_PEDAL].dInput = gas;
        p.pcInput[STEERING_WHEEL].dInput = steering;
        p.pcInput[BOOSTER].dInput = booster;
        p.pcInput[ABS_BRAKE].dInput = brake;
        p.pcInput[SKIDDING].dInput = 0.0;
        p.pcInput[GRAVEL_SHAKE].dInput = gravel;
        p.pcInput[BURNOUT].dInput = burnout;
        p.pcInput[EXTERNAL_FORCE].dInput = force;
        car.update(dt);
        car.guardBody();
        const Matrix4 body = toMatrix(car.m.qBodyRot);
        for (std::size_t i = 0; i < kWheels; ++i)
            car.followGround(i, body.axis(0), body.axis(1), body.axis(2), plane, dt);
        car.updateWheelRotation();
        car.alignToWheels(dt);
    }

    double gasValue() const { return p.pcInput[GAS_PEDAL].dValue; }

    CarParameters p;
    CCarCam car{p};
    GroundSensor plane;
    void ticks(double seconds, double dt = kFrame)
    {
        for (double t = dt / 2; t < seconds; t += dt)
            tick(dt);
    }

    double gas = 0.0, steering = 0.0, booster = 0.0, brake = 0.0;
    double gravel = 0.0, burnout = 0.0, force = 0.0;
};

TEST_F(CarModel, StandsInThePlaneOfItsWheels)
{
    EXPECT_NEAR(p.rig.dBodyHeight, 0.15, 1e-12);
    EXPECT_NEAR(length(car.m.vCarPos), 0.0, 1e-12);
    EXPECT_NEAR(car.turnBaseZ(), 1.044, 1e-12) << "the back axle";
}

TEST(SubStep, IsNeverLongerThanTwiceItsAim)
{
    struct Case
    {
        double dt, expected;
    };
    for (const Case& c : {Case{0.04, 0.04 / 13},
                          {0.02, 0.02 / 6},
                          {0.0059, 0.0059},
                          {0.001, 0.001},
                          {0.1, 0.1 / 33}})
        EXPECT_NEAR(subStepLength(c.dt), c.expected, 1e-15) << c.dt;
}

TEST_F(CarModel, TheBrakeTakesAFixedShareOfTheStart)
{
    car.startMoving(3.0, kFrame);
    brake = 1.0;
    tick();
    // The pedal's own filter comes first: 3 x 0.995^2 is what the brake starts from.
    const double start = 3.0 * 0.995 * 0.995;
    double expected = 3.0;
    for (int i = 0; i < 20; ++i) {
        expected -= start * kFrame * 30.0 * 0.03;
        EXPECT_NEAR(gasValue(), expected, 1e-9) << i;
        tick();
    }
    for (int i = 0; i < 20; ++i)
        tick();
    EXPECT_EQ(gasValue(), 1e-8) << "what stands for zero";
}

TEST_F(CarModel, AccelerationLimitsThePedal)
{
    p.pcInput[GAS_PEDAL].dResponseFactor = 0.0; // at once
    gas = 1.0;
    for (int i = 1; i <= 10; ++i) {
        tick();
        EXPECT_NEAR(gasValue(), std::min(3.0, 2.0 * kFrame * i), 1e-9) << i;
    }
}

TEST_F(CarModel, TheBoosterStaysBelowItsMaximum)
{
    gas = booster = 1.0;
    for (int i = 0; i < 2000; ++i) {
        tick();
        ASSERT_LE(gasValue(), 6.0 * 3.0);
    }
    EXPECT_NEAR(gasValue(), (0.02 * 18.0 + 0.01 * 3.0) / 0.03, 0.1) << "the pedal pulls back to 3";
}

TEST_F(CarModel, TheSteeringReturnsAtTwiceTheRate)
{
    p.pcInput[STEERING_WHEEL].dResponseFactor = 0.0;
    p.pcInput[STEERING_WHEEL].dMaximum = 1.0;
    steering = 1.0;
    for (int i = 1; i <= 5; ++i) {
        tick();
        EXPECT_NEAR(car.steerAngle(), 0.08 * i, 1e-6) << i;
    }
    steering = 0.0;
    tick();
    EXPECT_NEAR(car.steerAngle(), 0.4 - 0.16, 1e-6);
    tick();
    EXPECT_NEAR(car.steerAngle(), 0.4 - 0.32, 1e-6);
    tick();
    EXPECT_EQ(car.steerAngle(), 0.0);
}

/// The wheels' axes meet in one point: cot(outer) - cot(inner) = track / wheelbase (Ackermann).
TEST_F(CarModel, WheelsTurnRoundOnePoint)
{
    for (const double side : {-1.0, 1.0}) {
        p.pcInput[STEERING_WHEEL].dValue = 0.35 * side;
        car.startMoving(0.1, kFrame);
        car.prepareWheels(kFrame);
        const double left = car.m.wheel[0].dYaw;
        const double right = car.m.wheel[1].dYaw;
        EXPECT_LT(left * side, 0.0) << "a positive input turns right, which is a negative yaw";
        EXPECT_NEAR(1 / std::tan(right) - 1 / std::tan(left), 1.28 / (1.05 + 1.044), 1e-6) << side;
        EXPECT_EQ(car.m.wheel[2].dYaw, 0.0);
    }
}

/// A slow car turns by its way over the radius; the radius is wheelbase over tan(steering), the
/// nominal front axle being half a length ahead.
TEST_F(CarModel, TheYawIsTheWayOverTheRadius)
{
    p.dSkiddingReleaseThresh = 100.0;
    p.pcInput[STEERING_WHEEL].dResponseFactor = 0.0;
    p.pcInput[STEERING_WHEEL].dMaximum = 0.3;
    p.dSpeedDependentTurnRadiusReductionFactor = 0.0;
    steering = 1.0;
    for (int i = 0; i < 50; ++i)
        tick(); // the wheels turn in while it stands
    car.startMoving(0.05, kFrame);
    p.pcInput[GAS_PEDAL].dResponseFactor = 1e-9;
    double way = 0.0;
    const Quatd before = car.m.qCarRot;
    Vector3d back = car.m.vCarPos + rotate(car.m.qCarRot, Vector3d{0, 0, car.turnBaseZ()});
    for (int i = 0; i < 100; ++i) {
        tick();
        const Vector3d now = car.m.vCarPos + rotate(car.m.qCarRot, Vector3d{0, 0, car.turnBaseZ()});
        way += length(now - back);
        back = now;
    }
    const double radius = (1.761 + 1.044) / std::tan(0.3);
    const double yaw = length(toRotationVector(car.m.qCarRot * conjugate(before)));
    EXPECT_NEAR(yaw, way / radius, 0.01 * way / radius);
}

TEST_F(CarModel, AFlyingCarFallsAndFindsItsLevel)
{
    car.m.inTheAir = {1, 1, 1, 1};
    car.m.outOfReach = {1, 1, 1, 1};
    car.heave.value = 0.05;
    car.pitch.value = 0.03;
    car.m.qCarRot = fromRotationVector(Vector3d{0.3, 0, 0});
    const double h = subStepLength(kFrame);
    for (int i = 1; i <= 25; ++i) {
        p.pcInput[SKIDDING].dInput = 0.0;
        car.update(kFrame);
        EXPECT_NEAR(car.qTransCarAbsIncr.translation.y / h, -9.81 * 3.522 / 4 * kFrame * i, 1e-9);
    }
    EXPECT_TRUE(car.bCarInTheAir);
    EXPECT_LT(length(toRotationVector(car.m.qCarRot)), 0.25);
    EXPECT_NEAR(car.heave.value, 0.0, 1e-9);
    EXPECT_NEAR(car.pitch.value, 0.0, 1e-9);
}

TEST_F(CarModel, TurnsBackAtTheEdgeOfItsWorld)
{
    p.dWorldAvoidanceSphereRadius = 10.0;
    gas = 1.0;
    steering = 0.01; // a car that heads straight out has no side
    double furthest = 0.0;
    for (int i = 0; i < 25 * 60; ++i) {
        tick();
        furthest = std::max(furthest, length(car.m.vCarPos));
    }
    EXPECT_GT(furthest, 10.0 * 3.522);
    EXPECT_LT(furthest, 25.0 * 3.522);
}

/// Of 100 x input x length [N] against springs of 2000 N/m at z = -1.05 and 1.044, x = -0.64 and
/// 0.64: heave = force / 8000; an arm of 1 m counts a length more, 124 Nm at an input of 0.1, over
/// 2000 times the sum of z^2 (or x^2) less the weight's own moment, 10 x 50 kg x length / 4 x 0.49.
TEST_F(CarModel, AnExternalForceLiftsAndTiltsAgainstTheSprings)
{
    struct Case
    {
        const char* name;
        double input;
        Vector3d direction, point;
        double heave, pitch, roll;
    };
    constexpr double kLift = 352.2 / 8000;
    const Case cases[] = {
        {"up", 1.0, {0, 1, 0}, {}, kLift, 0, 0},
        {"down", 1.0, {0, -1, 0}, {}, -kLift, 0, 0},
        {"up at the nose", 0.1, {0, 1, 0}, {0, 0, -1}, kLift / 10, 124.04 / 8554, 0},
        {"up at the right", 0.1, {0, 1, 0}, {1, 0, 0}, kLift / 10, 0, 124.04 / 3061},
        {"ahead, over the body", 0.1, {0, 0, -1}, {0, 1, 0}, 0, -124.04 / 8554, 0},
        {"to the right, over the body", 0.1, {1, 0, 0}, {0, 1, 0}, 0, 0, -124.04 / 3061},
        {"none", 0.0, {0, 1, 0}, {1, 0, -1}, 0, 0, 0},
    };
    for (const Case& c : cases) {
        car.scene.force = {c.direction, c.point};
        force = c.input;
        ticks(6.0);
        EXPECT_NEAR(car.heave.value, c.heave, 5e-4) << c.name; // a tilt takes 0.247 m x its square
        EXPECT_NEAR(car.pitch.value, c.pitch, 3e-4) << c.name;
        EXPECT_NEAR(car.roll.value, c.roll, 5e-4) << c.name;
    }
}

/// A wheel's offset is speed x (amplitude x u)^2 with the sign of u, u even in +-0.5: never beyond
/// a quarter of speed x amplitude^2, 0 in the mean, and 1 / sqrt(80) of it in root mean square. A
/// frame of 0.04 s takes two steps of half the way, so 3/4 of it: 0.7746 of that remain.
TEST_F(CarModel, GravelShakesTheWheelsWithTheSpeed)
{
    p.pcInput[GRAVEL_SHAKE].dMaximum = 0.2;
    p.dGravelRoughness = 1.0;
    gravel = 1.0;
    for (const double lengthsPerSecond : {0.0, 1.0, 3.0}) {
        gas = lengthsPerSecond / 3.0;
        car.startMoving(lengthsPerSecond, kFrame);
        ticks(1.0);
        const double unit = lengthsPerSecond * 3.522 * 0.2 * 0.2;
        double sum = 0.0, squares = 0.0;
        constexpr int kTicks = 1000;
        for (int i = 0; i < kTicks; ++i) {
            tick();
            for (const CarWheel& wheel : car.m.wheel) {
                ASSERT_LE(std::abs(wheel.dGravelOffset), 0.25 * unit + 1e-9);
                sum += wheel.dGravelOffset;
                squares += wheel.dGravelOffset * wheel.dGravelOffset;
            }
        }
        const double rms = std::sqrt(squares / (4 * kTicks));
        EXPECT_NEAR(rms, 0.7746 * unit / std::sqrt(80.0), 0.05 * rms + 1e-9) << lengthsPerSecond;
        EXPECT_NEAR(sum / (4 * kTicks), 0.0, 4 * rms / std::sqrt(4.0 * kTicks) + 1e-9);
    }
}

/// A value of 3: the back wheels turn by 3 x 0.49 half turns in 0.04 s, whatever the frame rate.
/// The body squats: 3 x L^2 / 46875 x (0.2 x r^5 + 1), r even in 0 to 20, 84.7 Nm in the mean.
TEST_F(CarModel, ABurnoutSpinsTheBackWheelsAndSquats)
{
    p.pcInput[BURNOUT].dResponseFactor = 0.0; // at once
    burnout = 1.0;
    for (const double dt : {0.04, 0.02}) {
        ticks(2.0, dt);
        double mean = 0.0;
        const int count = static_cast<int>(20.0 / dt);
        for (int i = 0; i < count; ++i) {
            const std::array before{car.m.wheel[0].pfTotalPitch, car.m.wheel[2].pfTotalPitch};
            tick(dt);
            const double turned = car.m.wheel[2].pfTotalPitch - before[1];
            const double expected = 3 * 0.49 * 3.141592653589793 * dt / 0.04;
            ASSERT_NEAR(std::remainder(turned + expected, 2 * 3.141592653589793), 0.0, 1e-6) << dt;
            ASSERT_NEAR(car.m.wheel[0].pfTotalPitch, before[0], 1e-6) << "a front wheel stands";
            mean += car.pitch.value / count;
        }
        EXPECT_NEAR(mean, 84.7 / 8554, 0.1 * 84.7 / 8554) << dt;
    }
    p.pcInput[BURNOUT].dResponseFactor = 1e-12;
    burnout = 0.0;
    tick();
    EXPECT_NEAR(p.pcInput[BURNOUT].dValue, 3 * std::pow(0.99, 0.04 / 0.003), 1e-6) << "fades";
}

/// With the wheels turned in the tail swings out at value x steering, 0.6 rad/s, round the front
/// axle.
TEST_F(CarModel, ABurnoutSwingsTheTailRoundTheFrontAxle)
{
    const auto place = [&](double z) {
        return car.m.vCarPos + rotate(car.m.qCarRot, Vector3d{0, 0, z});
    };
    p.pcInput[STEERING_WHEEL].dResponseFactor = 0.0;
    p.pcInput[BURNOUT].dResponseFactor = 0.0;
    p.pcInput[STEERING_WHEEL].dMaximum = 0.2;
    steering = 1.0;
    ticks(2.0);
    burnout = 1.0;
    ticks(1.0);
    const Vector3d nose = place(-1.05);
    const Vector3d tail = place(1.044);
    const Quatd before = car.m.qCarRot;
    ticks(1.0);
    EXPECT_NEAR(toRotationVector(car.m.qCarRot * conjugate(before)).y, -0.6, 0.006)
        << "to the right";
    EXPECT_NEAR(length(place(-1.05) - nose), 0.0, 0.02);
    EXPECT_NEAR(length(place(1.044) - tail), 2 * (1.05 + 1.044) * std::sin(0.3), 0.03);
}

} // namespace
} // namespace tvw::rgs::addon::carextended
