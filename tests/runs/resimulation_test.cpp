// The promise of a take: with nothing changed, a second pass lays the same keys to the bit.
#include "core/record_manager.h"
#include "tests/runs/run_fixture.h"

namespace tvw::rgs::tests {
namespace {

class Resimulation : public RunTest
{
protected:
    void SetUp() override
    {
        open(30.0);
        tool_ = &create("Sinusoid");
        set(*tool_, "Amplitude", 2.0);
        set(*tool_, "Angular Frequency", 3.0);
        bindAxis(*tool_, "Spinner: Amplitude", 0);
        bindAxis(*tool_, "Spinner: Angular Frequency", 1);
        hand_ = [this](double t) {
            pad->set("Axis", 0, wobble(t));
            pad->set("Axis", 1, wobble(t + 7.0));
        };
    }

    core::Instance* tool_ = nullptr;
    std::function<void(double)> hand_;
};

TEST_F(Resimulation, RepeatsATakePunchedIntoTheMiddleOfAnother)
{
    record(3.0, hand_);
    session->stage().setTime(1.0);
    record(1.0, [this](double t) { pad->set("Axis", 0, -wobble(3.0 * t)); });
    const auto take = allKeys();
    resimulate(1.0, 2.0);
    EXPECT_EQ(allKeys(), take) << "from the punch-in";
    resimulate(0.0, 2.0);
    EXPECT_EQ(allKeys(), take) << "from the start of the older take";
}

TEST_F(Resimulation, ATakeContinuedByAPunchInEqualsOneInOnePiece)
{
    session->stage().setFramesPerSecond(25.0);
    record(2.0, hand_);
    const auto whole = keysOf(node(*tool_, "SinusNode"));
    for (const double frame : {25.0, 29.0, 47.0}) { // the last two are less than so many steps
        session->stage().setTime(frame / 25.0);
        record(2.0 - frame / 25.0, hand_);
        EXPECT_EQ(keysOf(node(*tool_, "SinusNode")), whole) << "from frame " << frame;
    }
}

TEST_F(Resimulation, AChangedParameterChangesTheKeysAndUndoBringsThemBack)
{
    record(2.0, hand_);
    const auto take = allKeys();
    set(*tool_, "Response Factor", 0.6);
    resimulate(0.0, 2.0);
    EXPECT_NE(allKeys(), take);
    ASSERT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(allKeys(), take);
    set(*tool_, "Response Factor", 0.1);
    resimulate(0.0, 2.0);
    EXPECT_EQ(allKeys(), take);
}

TEST_F(Resimulation, TheInputSettingsOfTheSecondPassCount)
{
    record(2.0, hand_);
    const auto take = allKeys();
    tool_->properties().findProperty("Spinner: Amplitude")->multiplier = 0.5;
    resimulate(0.0, 2.0);
    EXPECT_NE(allKeys(), take);
}

TEST_F(Resimulation, TheDevicesAreBoundAgainAndTheTimeGoesBack)
{
    record(1.0, hand_);
    resimulate(0.0, 1.0);
    EXPECT_EQ(tool_->properties().findProperty("Spinner: Amplitude")->control(), pad->controlAt(0));
    EXPECT_EQ(session->stage().getTime(), 0.0);
    EXPECT_FALSE(session->core().isResimulating());
}

TEST_F(Resimulation, StopsWhereItIsToldTo)
{
    record(2.0, hand_);
    core::RecordManager& records = session->core().records();
    ASSERT_EQ(records.startResimulation(0.0, 2.0), 0);
    EXPECT_EQ(records.startRecord(), core::kAlreadyRunning);
    records.stopRecord();
    EXPECT_TRUE(records.isResimulating()) << "what stops a take does not stop a second pass";
    records.finishResimulation();
    EXPECT_EQ(node(*tool_, "SinusNode").poseKeyTimes().size(), 1u);
}

TEST_F(Resimulation, OutputsDriveOtherToolsAndAreReplayed)
{
    core::Instance& driven = create("Sinusoid");
    driven.properties().findProperty("Spinner: Amplitude")->bind(tool_->controlAt(0));
    record(2.0, hand_);
    const auto take = allKeys();
    tool_->reference()->setState(core::Column::Run, core::ColumnState::Off, false);
    resimulate(0.0, 2.0);
    EXPECT_EQ(allKeys(), take) << "the source need not run";
}

/// A second pass ticks tools that don't see each other several frames on end. These do.
TEST_F(Resimulation, ToolsThatSeeEachOtherStayInStep)
{
    core::Instance& eye = create("LookAtCam");
    core::Instance& wave = create("Sinusoid"); // ticks behind the camera that looks at it
    set(wave, "Angular Frequency", 5.0);
    core::Instance& rider = create("LookAtCam"); // its camera hangs below a tool that ticks before
    ASSERT_TRUE(node(eye, "TargetMesh").setParent(&node(wave, "SinusNode")));
    stage::StageNode& between = session->stage().addEmpty("Between");
    ASSERT_TRUE(between.setParent(&node(*tool_, "SinusNode")));
    ASSERT_TRUE(node(rider, "TargetMesh").setParent(&between));
    record(4.0, hand_);
    const auto take = allKeys();
    resimulate(0.0, 4.0);
    EXPECT_EQ(allKeys(), take);
    ASSERT_GT(take.at(node(eye, "LookAtCam").name()).poses.size(), 100u);

    const auto sets = session->stage().separate({tool_, &eye, &wave, &rider});
    EXPECT_EQ(sets, (std::vector<std::size_t>{0, 1, 1, 0}));
}

TEST_F(Resimulation, ATemplateThatTurnsAnotherToolsItemStaysInStep)
{
    auto amplitude = stage::findToolItem(*tool_, "Amplitude");
    ASSERT_TRUE(amplitude) << amplitude.reason();
    const std::string id = std::to_string(amplitude->node->id());
    ASSERT_TRUE(session->createFromXml(
        "<RGT><RGT_Plugin><type>Sinusoid</type><name>Wave</name></RGT_Plugin><RGT_Plugin>"
        "<type>template</type><name>Hand</name><customdata><input><property name=\"Gas\"><finite/>"
        "</property></input><logic><trigger type=\"property\" id=\"0\"><target id=\"" +
            id +
            "\" external=\"Wave\"><parameters><source type=\"property\" id=\"0\"/></parameters>"
            "<script><mul><parameter>0</parameter><constant>3</constant></mul></script></target>"
            "</trigger></logic></customdata></RGT_Plugin></RGT>",
        nullptr));
    bindAxis(session->tool("Hand")->instance(), "Gas", 0);
    record(4.0, hand_);
    core::Instance& wave = session->tool("Wave")->instance();
    const auto take = keysOf(node(wave, "SinusNode"));
    ASSERT_FALSE(take.poses[40] == take.poses[80]) << "the wave must swing";
    set(wave, "Amplitude", 0.0); // as before the take
    resimulate(0.0, 4.0);
    EXPECT_EQ(keysOf(node(wave, "SinusNode")), take);
}

} // namespace
} // namespace tvw::rgs::tests
