#include "tests/runs/run_fixture.h"

#include "util/datachunk.h"

namespace tvw::rgs::tests {
namespace {

class Sinusoid : public RunTest
{
protected:
    void SetUp() override
    {
        open();
        tool_ = &create("Sinusoid");
    }
    double y(double time) { return node(*tool_, "SinusNode").world(time)[13]; }

    core::Instance* tool_ = nullptr;
};

TEST_F(Sinusoid, MovesAlongTheReferencesOwnAxis)
{
    Matrix4 reference = rotationMatrix(90.0, 0.0, 0.0, 1.0); // its Y axis points along the world's -X
    setTranslation(reference, {5.0, 1.0, -2.0});
    node(*tool_, "Reference Node").setWorld(reference, 0.0, false);
    record(1.0);
    const Vector3d at = translationOf(node(*tool_, "SinusNode").world(1.0));
    EXPECT_NEAR(at.x, 5.0 - std::sin(1.0), 1e-12);
    EXPECT_NEAR(at.y, 1.0, 1e-12);
    EXPECT_NEAR(at.z, -2.0, 1e-12);
}

TEST_F(Sinusoid, FollowsItsSpinners)
{
    struct Case
    {
        const char* name;
        double response, amplitude, frequency;
        bool absolute;
        double expected; ///< at 2 s, with the amplitude and frequency reached
    };
    constexpr double kUnfiltered = 0.0;
    for (const Case& c : {Case{"as declared", 0.1, 1.0, 1.0, false, std::sin(2.0)},
                          {"at once", kUnfiltered, 3.0, 2.0, false, 3.0 * std::sin(4.0)},
                          {"at once by a factor of 1", 1.0, 3.0, 2.0, false, 3.0 * std::sin(4.0)},
                          {"backward", kUnfiltered, 1.0, -2.0, false, std::sin(-4.0)},
                          {"never negative", kUnfiltered, 1.0, -1.0, true, std::sin(2.0)}}) {
        set(*tool_, "Response Factor", c.response);
        set(*tool_, "Amplitude", c.amplitude);
        set(*tool_, "Angular Frequency", c.frequency);
        set(*tool_, "Absolute Values", c.absolute);
        record(2.0);
        EXPECT_NEAR(y(2.0), c.expected, 1e-12) << c.name;
        session->stage().hostUndo();
        session->stage().setTime(0.0);
    }
}

TEST_F(Sinusoid, TheFilterCoversItsShareOfTheWay)
{
    set(*tool_, "Amplitude", 2.0);
    record(0.04); // one frame: two sub-steps of half a tenth each
    const double amplitude = 2.0 - 1.0 * 0.95 * 0.95;
    EXPECT_NEAR(y(0.04), amplitude * std::sin(0.04), 1e-12);
}

TEST_F(Sinusoid, ScrubbingShowsTheTakeAndKeepsWhatTheUserWants)
{
    set(*tool_, "Amplitude", 2.0);
    record(1.0);
    session->stage().setTime(0.04);
    EXPECT_NEAR(get(*tool_, "Amplitude"), 2.0 - 0.95 * 0.95, 1e-12);
    EXPECT_NEAR(get(*tool_, "Current Value"), y(0.04), 1e-12);
    session->stage().setTime(0.0);
    const auto take = allKeys();
    record(1.0);
    EXPECT_EQ(allKeys(), take) << "the wanted amplitude is still 2";
    session->stage().setTime(0.0);
    set(*tool_, "Amplitude", get(*tool_, "Amplitude"));
    record(1.0);
    EXPECT_NE(allKeys(), take) << "a value that the user set is the wanted one, even the one shown";
}

TEST_F(Sinusoid, GivesItsValueAsAnOutput)
{
    record(1.0);
    tool_->update(nullptr);
    EXPECT_NEAR(tool_->controlAt(0)->value(), std::sin(1.0), 1e-12);
    EXPECT_EQ(tool_->controlAt(0)->description, "Sinus value");
}

TEST_F(Sinusoid, SavesUnderItsNames)
{
    record(0.5);
    ASSERT_EQ(tool_->tool()->save(), 0);
    const DataChunk chunk(tool_->saveData().data(), tool_->saveData().size());
    EXPECT_EQ(chunk.name(), "Sinus");
    struct Member
    {
        const char* name;
        std::size_t size;
    };
    const std::size_t curve = 16 + 14 * 16; // the record at the start and 13 frames
    const Member expected[] = {{"sinusVal", 8}, {"userAmplitude", 8}, {"userFrequency", 8},
                               {"sinusAbs", 1}, {"sDataChunkSaveStruct", 2}, {"amplitude", curve - 16},
                               {"frequency", curve - 16}};
    ASSERT_EQ(chunk.memberCount(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(chunk.memberAt(i).name(), expected[i].name);
        EXPECT_EQ(chunk.memberAt(i).payloadSize(), expected[i].size) << expected[i].name;
    }
}

TEST_F(Sinusoid, LoadsWhatHasNoAmplitudeAndRefusesWhatHasNoCurves)
{
    ASSERT_EQ(tool_->tool()->save(), 0);
    const DataChunk saved(tool_->saveData().data(), tool_->saveData().size());
    const auto without = [&](const std::string& name) {
        DataChunk copy(saved.name(), nullptr, 0);
        for (std::size_t i = 0; i < saved.memberCount(); ++i) {
            if (saved.memberAt(i).name() != name)
                copy.addMember(saved.memberAt(i));
        }
        std::size_t size = 0;
        const void* const bytes = copy.serialize(&size);
        tool_->setSaveData(bytes, static_cast<std::int32_t>(size));
        return tool_->tool()->load();
    };
    EXPECT_EQ(without("userAmplitude"), 0);
    EXPECT_EQ(get(*tool_, "Amplitude"), 1.0);
    EXPECT_EQ(without("amplitude"), 1);
    EXPECT_EQ(without("sDataChunkSaveStruct"), 1);
}

} // namespace
} // namespace tvw::rgs::tests
