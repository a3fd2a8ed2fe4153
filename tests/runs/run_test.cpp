#include "core/record_manager.h"
#include "tests/runs/run_fixture.h"

namespace tvw::rgs::tests {
namespace {

TEST_F(RunTest, LaysAKeyAtTheStartAndAtEachFrame)
{
    open();
    core::Instance& tool = create("Sinusoid");
    core::Instance& rests = create("Sinusoid");
    rests.reference()->setState(core::Column::Run, core::ColumnState::Off, false);
    record(2.0);
    EXPECT_TRUE(node(rests, "SinusNode").poseKeyTimes().empty()) << "is switched off";
    const Keys keys = keysOf(node(tool, "SinusNode"));
    ASSERT_EQ(keys.times.size(), 51u);
    for (int frame = 0; frame <= 50; ++frame) {
        EXPECT_NEAR(keys.times[static_cast<std::size_t>(frame)], frame * 0.04, 1e-9);
        const double y = keys.poses[static_cast<std::size_t>(frame)][13];
        EXPECT_NEAR(y, frame == 0 ? 0.0 : std::sin(frame * 0.04), 1e-12) << "frame " << frame;
    }
    EXPECT_NEAR(session->stage().getTime(), 2.0, 1e-9);
    EXPECT_EQ(session->stage().range().end, 10.0) << "a take within the range leaves it alone";
}

TEST_F(RunTest, TimeToFrameGoesTowardMinusInfinity)
{
    for (const auto& [time, expected] :
         {std::pair{0.0, 0}, {0.039, 0}, {0.04, 1}, {-0.01, -1}, {-0.04, -1}, {-0.05, -2}})
        EXPECT_EQ(core::RecordManager::timeToFrame(time, 0.04), expected) << time;
    for (const double fps : {24.0, 25.0, 30.0, 50.0, 60.0, 120.0}) {
        for (int frame = -500; frame < 5000; ++frame)
            ASSERT_EQ(core::RecordManager::timeToFrame(frame / fps, 1.0 / fps), frame) << fps;
    }
}

TEST_F(RunTest, WithoutACountdownTheFirstTickIsTwoStepsBehindTheStart)
{
    open();
    core::Instance& tool = create("Sinusoid");
    record(1.0, {}, 0);
    const std::vector<double> times = node(tool, "SinusNode").poseKeyTimes();
    ASSERT_GE(times.size(), 2u);
    EXPECT_NEAR(times[1], 0.08, 1e-9);

    const auto before = allKeys();
    resimulate(0.0, 1.0);
    EXPECT_EQ(allKeys(), before);
}

TEST_F(RunTest, TheRangeGrowsWhenItsEndIsReached)
{
    open();
    create("Sinusoid");
    session->stage().setRange({0.0, 1.0});
    record(2.5);
    EXPECT_EQ(session->stage().range().end, 4.0);
    EXPECT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(session->stage().range().end, 1.0);
}

TEST_F(RunTest, SlowMotionSimulatesTheSameFrames)
{
    open();
    core::Instance& tool = create("Sinusoid");
    record(1.0);
    const Keys atFullSpeed = keysOf(node(tool, "SinusNode"));
    session->stage().hostUndo();
    session->stage().setTime(0.0);
    session->core().setTimeScale(3);
    record(1.0);
    EXPECT_EQ(keysOf(node(tool, "SinusNode")), atFullSpeed);
    EXPECT_EQ(session->core().getTimeScale(), 3);
    EXPECT_EQ(session->stage().getFramesPerSecond(), 25.0);
    EXPECT_EQ(session->stage().timeScale(), 1);
}

TEST_F(RunTest, OneTakeIsOneUndoStep)
{
    open();
    core::Instance& tool = create("Sinusoid");
    bindAxis(tool, "Spinner: Amplitude", 0);
    const auto before = allKeys();
    const double amplitude = get(tool, "Amplitude");
    record(1.0, [&](double t) { pad->set("Axis", 0, wobble(t)); });
    const auto after = allKeys();
    ASSERT_NE(after, before);

    ASSERT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(allKeys(), before);
    EXPECT_EQ(session->stage().getTime(), 0.0);
    EXPECT_TRUE(tool.recordedInputs().lines().empty());
    EXPECT_EQ(get(tool, "Amplitude"), amplitude);

    ASSERT_TRUE(session->stage().hostRedo());
    EXPECT_EQ(allKeys(), after);
}

TEST_F(RunTest, RefusesASecondRunAndBadLengths)
{
    open();
    create("Sinusoid");
    EXPECT_FALSE(session->record({.seconds = -1.0}));
    EXPECT_FALSE(session->record({.seconds = std::nan("")}));
    int refused = 0;
    record(0.2, [&](double) {
        refused += session->core().startRecord() == core::kAlreadyRunning;
        refused += session->core().startResimulation(0, 1) == core::kAlreadyRunning;
    });
    EXPECT_EQ(refused, 10);
}

TEST_F(RunTest, RefusesATakeByAClockThatItDoesNotDrive)
{
    core::VirtualClock another;
    auto started = stage::Session::start({.isolated = true, .clock = &another});
    ASSERT_TRUE(started) << started.reason();
    session = *std::move(started);
    create("Sinusoid");
    const Status refused = session->record({.seconds = 0.2});
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.reason().find("clock"), std::string::npos) << refused.reason();
    EXPECT_FALSE(session->core().isRunning());
    session.reset(); // before its clock
}

TEST_F(RunTest, WhatAScriptThrowsEndsTheRunAndPassesOn)
{
    open();
    core::Instance& tool = create("Sinusoid");
    const auto throwAtHalf = [](double t) {
        if (t > 0.5)
            throw std::runtime_error("enough");
    };
    EXPECT_THROW((void)session->record({.seconds = 1.0, .beforeFrame = throwAtHalf}),
                 std::runtime_error);
    EXPECT_FALSE(session->core().isRunning());
    EXPECT_EQ(node(tool, "SinusNode").poseKeyTimes().size(), 13u) << "the frames so far stand";
    record(0.2);
}

TEST_F(RunTest, SpaceStopsAndCtrlZStartsOver)
{
    open();
    create("Sinusoid");
    core::KeyHook& keys = session->core().records().keyHook();
    EXPECT_FALSE(keys.event(core::key::space, false, 0)) << "no run, no hook";
    record(5.0, [&](double t) {
        if (t > 0.9)
            keys.event(core::key::space, false, 0);
    });
    EXPECT_NEAR(session->stage().getTime(), 0.92, 1e-9);

    session->stage().hostUndo();
    int starts = 0;
    double last = 0.0;
    record(1.0, [&](double t) {
        if (t < last)
            ++starts;
        last = t;
        if (starts == 0 && t > 0.5)
            keys.event(core::key::z, false, core::modifier::ctrl);
    });
    EXPECT_EQ(starts, 1);
}

} // namespace
} // namespace tvw::rgs::tests
