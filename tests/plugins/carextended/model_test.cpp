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
        car.update(dt);
        car.guardBody();
        const Matrix4 body = toMatrix(car.m.qBodyRot);
        for (std::size_t i = 0; i < kWheels; ++i)
            car.followGround(i, body.axis(0), body.axis(1), body.axis(2), plane, dt);
        car.updateWheelRotation();
        car.alignToWheels();
    }

    double gasValue() const { return p.pcInput[GAS_PEDAL].dValue; }

    CarParameters p;
    CCarCam car{p};
    GroundSensor plane;
    double gas = 0.0, steering = 0.0, booster = 0.0, brake = 0.0;
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

} // namespace
} // namespace tvw::rgs::addon::carextended
