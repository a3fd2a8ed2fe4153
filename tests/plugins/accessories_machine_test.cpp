// The machine of states: what is chosen, how it gets there, and what it carries along.
#include "core/tool.h"
#include "plugins/common/state_machine.h"
#include "tests/runs/run_fixture.h"

namespace tvw::rgs::tests {
namespace {

Matrix4 at(double x, double y = 0.0, double z = 0.0)
{
    Matrix4 pose;
    setTranslation(pose, {x, y, z});
    return pose;
}

TEST(Travel, GoesItsShareWithinItsLimits)
{
    using machine::StateLimits;
    struct Case
    {
        const char* name;
        StateLimits limits;
        double dt, expected; ///< of a way of 10
    };
    // A frame of 0.04 s is two sub-steps of half the factor each.
    const double kept = 0.9 * 0.9; // of the way, by a factor of 0.2
    const double memory = 10.0 * (1.0 - kept);
    const double softly = memory * (1.0 - kept);
    for (const Case& c : {Case{"two filters in series", {.dVelRespFactor = 0.2}, 0.04, softly},
                          {"no filter", {.dVelRespFactor = 0.0}, 0.04, 10.0},
                          {"a factor above the frame rate", {.dVelRespFactor = 1000.0}, 0.04, 10.0},
                          {"a limit alone", {.dMaxVel = 5.0, .dVelRespFactor = 0.0}, 0.04, 0.2},
                          {"a limit that is not reached",
                           {.dMaxVel = 50.0, .dVelRespFactor = 0.2},
                           0.04,
                           softly}}) {
        QTransformd current;
        QTransformd first;
        machine::travel(current, first, {{10, 0, 0}, {}}, c.limits, c.dt);
        EXPECT_NEAR(current.translation.x, c.expected, 1e-12) << c.name;
    }
}

TEST(Travel, TurnsTheShortWayWithinItsLimit)
{
    const auto about = [](double degrees) {
        return fromRotationVector(Vector3d{0, degrees * std::acos(-1.0) / 180.0, 0});
    };
    struct Case
    {
        const char* name;
        double from, to, limit, expected; ///< [degrees], [degrees/s]
    };
    for (const Case& c : {Case{"no limit", 0, 90, 0, 90},
                          {"a limit", 0, 90, 100, 4},
                          {"over the half turn", 170, -170, 100, 174},
                          {"a negative quaternion", -170, 170, 100, -174}}) {
        QTransformd current{{}, about(c.from)};
        QTransformd memory = current;
        machine::travel(current, memory, {{}, -about(c.to)},
                        {.dMaxAngVel = c.limit, .dRotVelRespFactor = 0.0}, 0.04);
        EXPECT_NEAR(std::abs(dot(current.rotation, about(c.expected))), 1.0, 1e-12) << c.name;
        EXPECT_GE(current.rotation.w, 0.0) << c.name;
    }
}

class Machine : public RunTest
{
protected:
    void make(const char* type)
    {
        open();
        tool_ = &create(type);
        pad = &session->addDevice("Keys", {.axes = 10});
        for (int i = 0; i < 10; ++i) {
            auto* const input =
                tool_->properties().findProperty(machine::inputRows()[i].fullName());
            input->bind(pad->controlAt(i));
            input->deadzone = 0.0;
        }
        for (const stage::ToolItem& item : stage::toolItems(*tool_)) { // at once
            if (item.label().find("Response Factor") != std::string::npos)
                (void)stage::setToolItem(item, 1000.0);
            else if (item.label().find("Maximum") != std::string::npos)
                (void)stage::setToolItem(item, 0.0);
        }
        for (int i = 0; i < 10; ++i)
            state(i + 1).setLocal(at(i + 1), 0.0, false);
    }

    stage::StageNode& state(int number)
    {
        return node(*tool_, machine::inputRows()[number - 1].fullName());
    }
    double x(double time) { return node(*tool_, "CurrentState").local(time)[12]; }

    core::Instance* tool_ = nullptr;
};

TEST_F(Machine, TheLastInputAboveHalfIsWantedAndStaysSo)
{
    struct Case
    {
        const char* name;
        double second, fifth; ///< inputs in the first frame
        double expected;
    };
    make("MultiStateCam");
    for (const Case& c : {Case{"silent: the first state", 0, 0, 1},
                          {"a half chooses nothing", 0.5, 0, 1},
                          {"above a half", 0.500001, 0, 2},
                          {"two at once: the later one", 1, 1, 5}}) {
        record(0.4, [&](double t) {
            pad->set("Axis", 1, t < 0.1 ? c.second : 0.0);
            pad->set("Axis", 4, t < 0.1 ? c.fifth : 0.0);
        });
        EXPECT_NEAR(x(0.4), c.expected, 1e-12) << c.name;
        session->stage().hostUndo();
        session->stage().setTime(0.0);
    }
}

TEST_F(Machine, ATakeGoesOnInItsStateAndTheUndoneOneIsForgotten)
{
    make("MultiStateCam");
    record(0.4, [&](double) { pad->set("Axis", 2, 1.0); });
    pad->set("Axis", 2, 0.0);
    record(0.4);
    EXPECT_NEAR(x(0.8), 3.0, 1e-12);
    core::InstanceReference* const copy = tool_->reference()->clone();
    ASSERT_TRUE(copy);
    core::Instance* const original = tool_;
    tool_ = &copy->instance();
    record(0.2);
    EXPECT_NEAR(x(session->stage().getTime()), 3.0, 1e-12) << "a copy begins where the original is";
    for (int i = 0; i < 4; ++i)
        session->stage().hostUndo();
    tool_ = original;
    session->stage().setTime(0.0);
    record(0.4);
    EXPECT_NEAR(x(0.4), 1.0, 1e-12);
}

TEST_F(Machine, AStatesNodeThatIsGoneHoldsTheMachine)
{
    make("MultiStateCam");
    record(0.2, [&](double) { pad->set("Axis", 3, 1.0); });
    ASSERT_NEAR(x(0.2), 4.0, 1e-12);
    session->stage().beginUndo("Delete");
    session->stage().remove(state(6));
    session->stage().endUndo();
    record(0.2, [&](double) { pad->set("Axis", 5, 1.0); });
    EXPECT_NEAR(x(0.4), 4.0, 1e-12) << "a deleted goal";
    session->stage().hostUndo();
    session->stage().hostUndo();
    session->stage().setTime(0.2);
    record(0.2, [&](double) { pad->set("Axis", 5, 1.0); });
    EXPECT_NEAR(x(0.4), 6.0, 1e-12) << "the goal is back";
}

TEST_F(Machine, LivesInItsCage)
{
    struct Case
    {
        const char* name;
        Matrix4 cage;
    };
    make("MultiStateCam");
    Matrix4 turned = rotationMatrix(90, 0, 1, 0);
    setTranslation(turned, {100, 5, -3});
    const Vector3d mirror{-1, 1, 1};
    for (const Case& c : {Case{"moved and turned", turned},
                          {"scaled", scaled({}, {3, 2, 0.5})},
                          {"mirrored", scaled(turned, mirror)}}) {
        node(*tool_, "RelativeCageMesh").setWorld(c.cage, 0.0, false);
        state(4).setLocal(rotationMatrix(30, 0, 1, 0), 0.0, false);
        record(0.4, [&](double) { pad->set("Axis", 3, 1.0); });
        const Matrix4 local = node(*tool_, "CurrentState").local(0.4);
        const Matrix4 expected = rotationMatrix(30, 0, 1, 0);
        for (int i = 0; i < 16; ++i)
            EXPECT_NEAR(local[i], expected[i], 1e-9) << c.name << " " << i;
        session->stage().hostUndo();
        session->stage().setTime(0.0);
    }
}

TEST_F(Machine, TheLensComesAlongAtItsOwnRate)
{
    make("MultiStateCam");
    node(*tool_, "CurrentState").setFov(50.0, 0.0, false);
    node(*tool_, "CurrentState").setTargetDistance(4.0, 0.0, false);
    state(2).setFov(30.0, 0.0, false);
    state(2).setTargetDistance(10.0, 0.0, false);
    set(*tool_, "MultiStateCam Parameters/FOV Maximum Rate of Change (units/sec)", 10.0);
    record(0.4, [&](double) { pad->set("Axis", 1, 1.0); });
    const stage::StageNode& camera = node(*tool_, "CurrentState");
    EXPECT_NEAR(camera.fov(0.0), 50.0, 1e-12) << "the start has a key of its own";
    EXPECT_NEAR(camera.fov(0.2), 48.0, 1e-9);
    EXPECT_NEAR(camera.targetDistance(0.04), 10.0, 1e-12) << "no limit: at once";
}

TEST_F(Machine, InitializeForgetsTheMemory)
{
    make("StateMachine"); // its factors end at 1: softly
    record(1.0, [&](double) { pad->set("Axis", 8, 1.0); });
    pad->set("Axis", 8, 0.0);
    session->stage().setTime(0.0);
    node(*tool_, "CurrentState").setLocal(at(-20.0), 0.0, true);
    state(1).setLocal(at(-20.0), 0.0, false);
    const auto button = stage::findToolItem(*tool_, "Initialize");
    ASSERT_TRUE(button) << button.reason();
    button->node->press();
    record(0.4);
    EXPECT_NEAR(x(0.04), -20.0, 1e-9);
    EXPECT_NEAR(x(0.4), -20.0, 1e-9);
}

} // namespace
} // namespace tvw::rgs::tests
