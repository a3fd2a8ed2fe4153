// The actuators: what a channel does with its input, and where that puts the node.
#include "plugins/common/actuator_channel.h"
#include "tests/runs/run_fixture.h"

#include <functional>
#include <numbers>
#include <utility>

namespace tvw::rgs::tests {
namespace {

constexpr double kPi = std::numbers::pi;

TEST(ActuatorLatch, ATapHoldsAndTheNextOneLetsGo)
{
    struct Case
    {
        const char* name;
        std::vector<double> raw; ///< one value a frame
        std::vector<double> held;
    };
    for (const Case& c : {Case{"held while and after the press", {1, 1, 0, 0}, {1, 1, 1, 1}},
                          {"the second tap clears", {1, 0, 1, 0}, {1, 1, 0, 0}},
                          {"the opposite tap clears too", {1, 0, -1, 0, -1}, {1, 1, 0, 0, -1}},
                          {"a half is no press", {0.5, -0.5, 0.51}, {0, 0, 1}},
                          {"from side to side without rest is one press", {1, -1, 0}, {1, 1, 1}}}) {
        ActuatorChannel channel;
        std::vector<double> held;
        for (const double raw : c.raw) {
            channel.raw = raw;
            held.push_back(channel.latched(true));
        }
        EXPECT_EQ(held, c.held) << c.name;
    }
}

class Actuators : public RunTest
{
protected:
    void make(const char* type, double fps = 25.0)
    {
        open(fps);
        tool_ = &create(type);
        auto& inputs = tool_->properties();
        pad = &session->addDevice("Sticks", {.axes = inputs.count()});
        for (int i = 0, axis = 0; i < inputs.count(); ++i) {
            if (inputs.propertyAt(i)->name().starts_with("Spinner: "))
                continue;
            inputs.propertyAt(i)->bind(pad->controlAt(axis++));
            inputs.propertyAt(i)->deadzone = 0.0;
            inputs.propertyAt(i)->multiplier = 1.0;
        }
        for (const stage::ToolItem& item : stage::toolItems(*tool_)) { // straight through
            if (item.label().ends_with("Response Factor") || item.label().ends_with("Change Limit"))
                (void)stage::setToolItem(item, 0.0);
        }
    }

    void again()
    {
        session->stage().hostUndo();
        session->stage().setTime(0.0);
    }

    Matrix4 pose(double time) { return node(*tool_, "ActuatorMesh").local(time); }

    core::Instance* tool_ = nullptr;
};

TEST_F(Actuators, ALinkMovesAndTurnsByItsSigns)
{
    struct Case
    {
        const char* name;
        std::array<double, 6> input;
        Vector3d position, forward, up;
    };
    make("DirectInputLink");
    for (const Case& c : {Case{"forward", {1}, {0, 0, -1}, {0, 0, -1}, {0, 1, 0}},
                          {"right", {0, 1}, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
                          {"up", {0, 0, 1}, {0, 1, 0}, {0, 0, -1}, {0, 1, 0}},
                          {"yaw to the right", {0, 0, 0, 1}, {}, {1, 0, 0}, {0, 1, 0}},
                          {"pitch up", {0, 0, 0, 0, 1}, {}, {0, 1, 0}, {0, 0, 1}},
                          {"roll to the right", {0, 0, 0, 0, 0, 1}, {}, {0, 0, -1}, {1, 0, 0}},
                          {"yaw turns the pitched one about the upright",
                           {0, 0, 0, 1, 1},
                           {},
                           {0, 1, 0},
                           {-1, 0, 0}}}) {
        record(0.2, [&](double) {
            for (int i = 0; i < 6; ++i)
                pad->set("Axis", i, c.input[i]);
        });
        const Matrix4 at = pose(0.2);
        EXPECT_NEAR(length(translationOf(at) - c.position), 0.0, 1e-9) << c.name;
        EXPECT_NEAR(length(-at.axis(2) - c.forward), 0.0, 1e-9) << c.name;
        EXPECT_NEAR(length(at.axis(1) - c.up), 0.0, 1e-9) << c.name;
        const Matrix4 camera = node(*tool_, "Camera").world(0.2);
        EXPECT_EQ(camera, node(*tool_, "ActuatorMesh").world(0.2)) << c.name;
        again();
    }
}

TEST_F(Actuators, AChannelsItemsShapeItsWay)
{
    struct Case
    {
        const char* name;
        double factor, limit, maximum;
        bool integrate;
        double fps, seconds, expected; ///< way forward for an input of 1
    };
    for (const Case& c : {Case{"straight through", 0, 0, 3, false, 25, 0.04, 3},
                          {"a maximum of 0 is off", 0, 0, 0, false, 25, 0.4, 0},
                          {"the limit is one of the input", 0, 2, 3, false, 25, 0.4, 2.4},
                          {"and ends at the stop", 0, 2, 3, false, 25, 1.0, 3},
                          {"two filters", 0.2, 0, 1, false, 25, 0.04, 0.19 * 0.19},
                          {"a sum", 0, 0, 2, true, 25, 1.0, 2},
                          {"a sum at another rate", 0, 0, 2, true, 50, 1.0, 2}}) {
        make("1DPositioner", c.fps);
        set(*tool_, "Forw/Backw Transl Response Factor", c.factor);
        set(*tool_, "Forw/Backw Transl Change Limit", c.limit);
        set(*tool_, "Forw/Backw Transl Maximum", c.maximum);
        set(*tool_, "Forw/Backw Transl Integrate", c.integrate);
        record(c.seconds, [&](double) { pad->set("Axis", 0, 1.0); });
        EXPECT_NEAR(-pose(c.seconds)[14], c.expected, 1e-9) << c.name;
        session.reset();
    }
}

TEST_F(Actuators, ARotatorTurnsOnPastAFullTurn)
{
    make("1DRotator");
    set(*tool_, "Roll (Right/Left) Integrate", 1.0);
    set(*tool_, "Roll (Right/Left) Maximum", 5.0); // [rad/s]
    record(2.0, [&](double) { pad->set("Axis", 0, 1.0); });
    const Vector3d x = pose(2.0).axis(0);
    EXPECT_NEAR(x.x, std::cos(10.0), 1e-9);
    EXPECT_NEAR(x.y, -std::sin(10.0), 1e-9) << "to the right as seen along -Z";
}

TEST_F(Actuators, AScalerKeepsAboveItsMinimum)
{
    make("ActiveScaler");
    set(*tool_, "Up/Down Scale Maximum", 4.0);
    set(*tool_, "Forw/Backw Scale Minimum", 0.5);
    const auto scale = [&](double time) { return scaleOf(pose(time)); };
    record(0.4, [&](double t) {
        pad->set("Axis", 0, t < 0.2 ? -1.0 : 0.25);
        pad->set("Axis", 2, t < 0.2 ? 0.0 : 1.0);
    });
    EXPECT_NEAR(scale(0.0).z, 0.5, 1e-12) << "from the first key on";
    EXPECT_NEAR(scale(0.12).z, 0.5, 1e-12);
    EXPECT_NEAR(scale(0.4).z, 0.5, 1e-12);
    EXPECT_NEAR(scale(0.12).y, 1e-06, 1e-15);
    EXPECT_NEAR(scale(0.4).y, 4.0, 1e-12);
    EXPECT_NEAR(scale(0.4).x, 1e-06, 1e-15);
}

TEST_F(Actuators, RidesOnItsCage)
{
    make("1DPositioner");
    Matrix4 cage = scaled(rotationMatrix(90, 0, 1, 0), {1, 1, 2}); // its -Z points along -X
    setTranslation(cage, {10, 0, 0});
    node(*tool_, "RelativeCageMesh").setWorld(cage, 0.0, false);
    record(0.2, [&](double) { pad->set("Axis", 0, 1.0); });
    const Vector3d at = translationOf(node(*tool_, "ActuatorMesh").world(0.2));
    EXPECT_NEAR(length(at - Vector3d{8, 0, 0}), 0.0, 1e-9);
}

TEST_F(Actuators, HoldsWhatItsLostDeviceGaveLastAndPlaysItBack)
{
    make("1DPositioner");
    tool_->properties().findProperty("Forw/Backw Transl")->offset = 0.25;
    record(0.4, [&](double t) {
        if (pad)
            pad->set("Axis", 0, 0.7);
        if (t > 0.1 && pad)
            session->removeDevice(*std::exchange(pad, nullptr));
    });
    EXPECT_NEAR(-pose(0.4)[14], 0.95, 1e-12);
    session->stage().setTime(0.2);
    record(0.2); // on from here with nothing in hand
    const Matrix4 empty = pose(0.4);
    EXPECT_NEAR(-empty[14], 0.25, 1e-12);
    resimulate(0.2, 0.4);
    EXPECT_EQ(pose(0.4), empty);
}

} // namespace
} // namespace tvw::rgs::tests
