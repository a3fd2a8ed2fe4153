// Plays: where the walls are, what they do to the slider, and what the slider does by itself.
#include "plugins/common/play.h"
#include "tests/runs/run_fixture.h"

#include <numbers>

namespace tvw::rgs::tests {
namespace {

constexpr double kDt = 0.04;

Matrix4 box(const Vector3d& position, const Vector3d& halfSizes)
{
    Matrix4 pose = scaled({}, halfSizes);
    setTranslation(pose, position);
    return pose;
}

TEST(Glide, WallsHoldPushAndStop)
{
    struct Case
    {
        const char* name;
        Clearance shape;
        Matrix4 before, now;
        Slider start;
        PlaySettings settings;
        Vector3d position, velocity;
    };
    const Matrix4 still = box({}, {2, 1, 1});
    const Matrix4 moved = box({0.4, 0, 0}, {2, 1, 1}); // at 10 units/s
    const Matrix4 mirrored = scaled(still, {-1, 1, 1});
    const Matrix4 turned = rotationMatrix(90, 0, 0, 1) * still; // 2 high
    const double rim = std::sqrt(0.5);
    for (const Case& c : {Case{"glides on for ever",
                               Clearance::Box,
                               still,
                               still,
                               {{0, 0, 0}, {5, 1, 0}},
                               {0.0},
                               {0.2, 0.04, 0},
                               {5, 1, 0}},
                          {"a friction of 1 halves",
                           Clearance::Box,
                           still,
                           still,
                           {{0, 0, 0}, {5, 0, 0}},
                           {1.0},
                           {0.2, 0, 0},
                           {2.5, 0, 0}},
                          {"stops at a wall and slides along it",
                           Clearance::Box,
                           still,
                           still,
                           {{1.9, 0, 0}, {5, 1, 0}},
                           {0.0},
                           {2, 0.04, 0},
                           {0, 1, 0}},
                          {"is taken along",
                           Clearance::Box,
                           still,
                           moved,
                           {{-2, 0, 0}, {0, 3, 0}},
                           {0.0},
                           {-1.6, 0.12, 0},
                           {10, 3, 0}},
                          {"is not held back by a wall that leaves",
                           Clearance::Box,
                           still,
                           moved,
                           {{1.9, 0, 0}, {5, 0, 0}},
                           {0.0},
                           {2.1, 0, 0},
                           {5, 0, 0}},
                          {"in a corner",
                           Clearance::Box,
                           still,
                           still,
                           {{1.95, 0.95, 0}, {5, 5, 0}},
                           {0.0},
                           {2, 1, 0},
                           {0, 0, 0}},
                          {"in a mirrored box",
                           Clearance::Box,
                           mirrored,
                           mirrored,
                           {{1.9, 0, 0}, {5, 0, 0}},
                           {0.0},
                           {2, 0, 0},
                           {0, 0, 0}},
                          {"in a turned box",
                           Clearance::Box,
                           turned,
                           turned,
                           {{0, 1.9, 0}, {0, 5, 0}},
                           {0.0},
                           {0, 2, 0},
                           {0, 0, 0}},
                          {"rebounds a little",
                           Clearance::Box,
                           still,
                           still,
                           {{1.9, 0, 0}, {5, 0, 0}},
                           {0.0, true},
                           {1.94, 0, 0},
                           {-1.5, 0, 0}},
                          {"no tremble on a wall that pushes",
                           Clearance::Box,
                           still,
                           moved,
                           {{-2, 0, 0}, {9, 0, 0}},
                           {0.0, true},
                           {-1.6, 0, 0},
                           {10, 0, 0}},
                          {"at a sphere's wall",
                           Clearance::Sphere,
                           box({}, {1, 1, 1}),
                           box({}, {1, 1, 1}),
                           {{rim, rim, 0}, {5, 5, 0}},
                           {0.0},
                           {rim, rim, 0},
                           {0, 0, 0}},
                          {"at an ellipsoid's wall, by its own normal",
                           Clearance::Sphere,
                           still,
                           still,
                           {{2.2 * rim, 1.1 * rim - 0.2, 0}, {0, 5, 0}},
                           {0.0},
                           {2 * rim, rim, 0},
                           {-2, 1, 0}},
                          {"a flattened clearance holds it in the middle",
                           Clearance::Box,
                           box({3, 0, 0}, {0, 1, 1}),
                           box({3, 0, 0}, {0, 1, 1}),
                           {{9, 0, 0}, {0, 0, 0}},
                           {0.0},
                           {3, 0, 0},
                           {0, 0, 0}}}) {
        Slider slider = c.start;
        glide(slider, c.shape, c.before, c.now, c.settings, kDt);
        EXPECT_NEAR(length(slider.position - c.position), 0.0, 1e-9) << c.name;
        EXPECT_NEAR(length(slider.velocity - c.velocity), 0.0, 1e-9) << c.name;
    }
}

TEST(HeldInCone, MovesTheShortWayToItsEdge)
{
    constexpr double kEighth = std::numbers::pi / 4;
    const double edge = std::sqrt(0.5);
    struct Case
    {
        const char* name;
        Vector3d wanted, expected;
    };
    for (const Case& c : {Case{"inside", {0.6, 0, -0.8}, {0.6, 0, -0.8}},
                          {"across", {1, 0, 0}, {edge, 0, -edge}},
                          {"behind, upward", {0, 0.6, 0.8}, {0, edge, -edge}}}) {
        const Vector3d held = heldInCone(c.wanted, {0, 0, -1}, kEighth);
        EXPECT_NEAR(length(held - c.expected), 0.0, 1e-12) << c.name;
    }
    EXPECT_NEAR(heldInCone({0, 0, 1}, {0, 0, -1}, kEighth).z, -edge, 1e-12) << "straight behind";
}

class Plays : public RunTest
{
protected:
    void make(const char* type)
    {
        open();
        tool_ = &create(type);
    }

    void carry(const char* outer, const std::function<Matrix4(double)>& pose, double seconds)
    {
        for (int i = 0; i * kDt <= seconds; ++i)
            node(*tool_, outer).setWorld(pose(i * kDt), i * kDt, true);
    }

    core::Instance* tool_ = nullptr;
};

TEST_F(Plays, TheSliderStaysInItsClearanceAndKeepsItsScale)
{
    make("RectangularPlay");
    const auto carrier = [](double t) {
        const Matrix4 turn = rotationMatrix(40.0 * t, 0, 1, 0) * rotationMatrix(25.0 * t, 0, 0, 1);
        Matrix4 pose = scaled(turn, {0.5, 0.2, 1.0});
        setTranslation(pose, {3 * std::sin(4 * t), std::cos(3 * t) - 1, 10 * t});
        return pose;
    };
    for (const bool rebound : {false, true}) {
        set(*tool_, "Allow Slight Rebounce", rebound);
        node(*tool_, "InnerSlider").setWorld(box({}, {0.5, 2, 1}), 0.0, false);
        carry("RectanglePlay", carrier, 3.0);
        record(3.0);
        for (int i = 1; i <= 75; ++i) {
            const Matrix4 slider = node(*tool_, "InnerSlider").world(i * kDt);
            const Vector3d local = transformPoint(inverse(carrier(i * kDt)), translationOf(slider));
            for (int axis = 0; axis < 3; ++axis)
                ASSERT_LE(std::abs(local[axis]), 1.0 + 1e-9) << "frame " << i << rebound;
            ASSERT_NEAR(length(scaleOf(slider) - Vector3d{0.5, 2, 1}), 0.0, 1e-9);
        }
        session->stage().hostUndo();
        session->stage().setTime(0.0);
    }
}

TEST_F(Plays, ATakeBeginsAtRestAndGoesOnAtItsSpeed)
{
    make("SphericalPlay");
    set(*tool_, "Play Friction", 0.0);
    // For 0.4 s the carrier pushes at 10 units/s, then it stands at x = 4.
    carry(
        "SphericPlay",
        [](double t) {
            return box({std::min(10 * t, 4.0), 0, 0}, {3, 3, 3});
        },
        2.0);
    record(0.48);
    const auto x = [&](double time) { return node(*tool_, "InnerSlider").world(time)[12]; };
    ASSERT_NEAR(x(0.28), 0.0, 1e-9);
    ASSERT_NEAR(x(0.4), 1.0, 1e-9) << "the rear wall";
    ASSERT_NEAR(x(0.48), 1.8, 1e-9);
    record(0.4);
    EXPECT_NEAR(x(0.88), 5.8, 1e-9) << "a second take goes on";
    record(0.4);
    EXPECT_NEAR(x(1.28), 7.0, 1e-9) << "the front wall";
    ASSERT_TRUE(session->stage().hostUndo()); // it moves at 10 units/s
    session->stage().setTime(1.6);
    record(0.2);
    EXPECT_NEAR(x(1.8), x(1.6), 1e-9) << "away from the take: at rest";
}

TEST_F(Plays, AConeTakesItsSliderAlong)
{
    struct Case
    {
        const char* name;
        double degrees;  ///< the outer node's heading at the end, turned at a steady rate
        Vector3d scale;  ///< of the outer node
        double expected; ///< heading of the slider [degrees]
    };
    const double wide = std::atan(2.0) * 180.0 / std::numbers::pi;
    for (const Case& c : {Case{"within the cone it keeps its direction", 40, {1, 1, 1}, 0},
                          {"the wall takes it along", 80, {1, 1, 1}, 35},
                          {"the other wall", -80, {1, 1, 1}, -35},
                          {"twice as wide opens it", 80, {2, 1, 1}, 80 - wide},
                          {"mirrored", 80, {-1, 1, 1}, 35}}) {
        make("AngularPlay");
        const auto outer = [&](double t) {
            Matrix4 pose = scaled(rotationMatrix(c.degrees * t, 0, 1, 0), c.scale);
            setTranslation(pose, {0, 0, 5 * t});
            return pose;
        };
        node(*tool_, "InnerSlider").setWorld(box({0, 1, 0}, {1, 1, 1}), 0.0, false);
        carry("AngularPlay", outer, 1.0);
        record(1.0);
        const Matrix4 slider = node(*tool_, "InnerSlider").world(1.0);
        const double heading = std::atan2(slider[8], slider[10]) * 180.0 / std::numbers::pi;
        EXPECT_NEAR(heading, c.expected, 1e-6) << c.name;
        EXPECT_NEAR(length(translationOf(slider) - Vector3d{0, 1, 5}), 0.0, 1e-9) << c.name;
        session.reset();
    }
}

TEST_F(Plays, ACopyOfAConeKeepsItsMiddle)
{
    make("AngularPlay");
    node(*tool_, "InnerSlider").setWorld(rotationMatrix(90, 0, 1, 0), 0.0, false);
    const auto button = stage::findToolItem(*tool_, "Initialize");
    ASSERT_TRUE(button) << button.reason();
    button->node->press();
    node(*tool_, "InnerSlider").setWorld(rotationMatrix(60, 0, 1, 0), 0.0, false);
    core::InstanceReference* const copy = tool_->reference()->clone();
    ASSERT_TRUE(copy);
    core::Instance& other = copy->instance();
    node(other, "InnerSlider").setWorld({}, 0.0, false);
    record(0.2);
    const Matrix4 slider = node(other, "InnerSlider").world(0.2);
    EXPECT_NEAR(std::atan2(slider[8], slider[10]), std::numbers::pi / 4, 1e-9);
}

} // namespace
} // namespace tvw::rgs::tests
