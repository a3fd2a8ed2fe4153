// The life around a tool's hooks, by the smallest tool there is.
#include "adaptor/stage/tool_items.h"
#include "tests/support/session_test.h"

namespace tvw::rgs::tests {

namespace {

class ToolObjects : public SessionTest
{
protected:
    core::Instance& car() { return session->tool("Car")->instance(); }
    bool isVisible(const char* name) { return scene().find(name)->state().visible; }
    double x(double time) { return scene().find("Car_Base")->world(time).m[12]; }

    void set(const std::string& label, double value)
    {
        auto item = stage::findToolItem(car(), label);
        ASSERT_TRUE(item) << item.reason();
        const Status done = stage::setToolItem(*item, value);
        ASSERT_TRUE(done) << done.reason();
    }
};

} // namespace

TEST_F(ToolObjects, ASwitchHidesItsNodesAndTurnsBackOnUndo)
{
    make("Car");
    set("Hide Helpers", 1.0);
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(isVisible("Car_Base"));
        EXPECT_TRUE(isVisible("Car_Arm")) << "is no helper";
        EXPECT_EQ(car().configuration()->valueOf(1), 1.0);
        ASSERT_TRUE(scene().hostUndo());
        EXPECT_TRUE(isVisible("Car_Base"));
        EXPECT_EQ(car().configuration()->valueOf(1), 0.0);
        ASSERT_TRUE(scene().hostRedo());
    }
}

TEST_F(ToolObjects, HelpersHiddenForARunComeBackUnlessTheyAreHiddenAnyway)
{
    make("Car");
    for (const bool hidden : {false, true}) {
        set("Hide Helpers", hidden ? 1.0 : 0.0);
        set("Hide Helpers During Recording", 1.0);
        bool shownInRun = false;
        ASSERT_TRUE(
            session->record({.seconds = 0.2,
                             .beforeFrame = [&](double) { shownInRun |= isVisible("Car_Base"); },
                             .progress = {}}));
        EXPECT_FALSE(shownInRun);
        EXPECT_EQ(isVisible("Car_Base"), !hidden);
    }
    set("Hide Helpers", 0.0);
    scene().find("Car_Base")->setVisible(false);
    drive(*session, 0.2);
    EXPECT_FALSE(isVisible("Car_Base")) << "was hidden by hand";
}

TEST_F(ToolObjects, TheStateGoesWithTheKeysOfItsTake)
{
    make("Car");
    set("Speed", 10.0);
    drive(*session, 1.0);
    const double travelled = x(1.0);
    EXPECT_NEAR(travelled, 10.0, 0.41) << "a frame is 0.4 m";
    set("Speed", 0.0);
    for (const double start : {0.4, 1.0}) {
        scene().setTime(start);
        drive(*session, 0.2);
    }
    EXPECT_NEAR(x(1.2), 4.0, 0.41) << "the retake ends the first one, and stands";
    scene().hostUndo();
    scene().hostUndo();
    set("Speed", 0.0);
    scene().setTime(1.0);
    drive(*session, 0.2);
    EXPECT_NEAR(x(1.2), travelled, 1e-9) << "the undone state does not linger";
}

TEST_F(ToolObjects, ANodeThatTheUserDeletedIsGoneAroundInARun)
{
    make("Car");
    scene().remove(*scene().find("Car_Base"));
    drive(*session, 0.2);
    EXPECT_EQ(scene().find("Car_Base"), nullptr);
    ASSERT_NE(scene().find("Car_Arm"), nullptr);
    EXPECT_TRUE(std::isfinite(scene().find("Car_Arm")->world(0.2).m[12]));
}

} // namespace tvw::rgs::tests
