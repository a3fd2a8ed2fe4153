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

} // namespace
} // namespace tvw::rgs::tests
