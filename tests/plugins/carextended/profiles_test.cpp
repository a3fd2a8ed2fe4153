#include "core/tool.h"
#include "tests/plugins/carextended/car_fixture.h"
#include "util/datachunk.h"

#include <algorithm>

namespace tvw::rgs::tests {
namespace {

class CarFiles : public CarTest
{
};

TEST_F(CarFiles, ExampleConfigurationsDriveAsTheirGaugesSay)
{
    struct Case
    {
        const char* name;
        double gasMaximum; ///< [body lengths/s]
    };
    core::Tool& type = *car->type();
    for (const Case& c : {Case{"Example: Racer", 16.0},
                          {"Example: Limousine", 9.0},
                          {"Example: Off-Roader", 7.0}}) {
        car->loadConfigProfile(type.configProfiles().profile(c.name));
        EXPECT_EQ(get(*car, "Gas Pedal (Forw/Backw) Maximum"), c.gasMaximum) << c.name;
        // The gauges in the file agree with what the tool computes.
        const double shown = get(*car, "World Space Maximum Velocity Gauge");
        session->stage().setTime(0.0);
        drive(8.0, [](double) { return Hands{.gas = 1.0}; });
        EXPECT_NEAR(get(*car, "World Space Maximum Velocity Gauge"), shown, 1e-5) << c.name;
        EXPECT_NEAR(speed(8.0), c.gasMaximum * kLength, 0.05 * c.gasMaximum * kLength) << c.name;
    }
}

TEST_F(CarFiles, SavesUnderTheNamesOfItsFilesAndReadsThemBack)
{
    drive(2.0, [](double t) { return Hands{.gas = 1.0, .steering = wobble(t)}; });
    ASSERT_EQ(car->tool()->save(), 0);
    const DataChunk chunk(car->saveData().data(), car->saveData().size());
    EXPECT_EQ(chunk.name(), "CarCamDataChunk");
    EXPECT_EQ(chunk.memberAt(0).name(), "sDataChunkSaveStruct");
    EXPECT_EQ(chunk.memberAt(0).payloadSize(), 368U);
    struct Case
    {
        const char* name;
        std::size_t place;
    };
    for (const Case& c : {Case{"fRelMaxBumperLen", 1},
                          {"ancCarCamcCarBodyfRelYPos", 8},
                          {"wheelstore", 17},
                          {"ancCarCamqTransCarAbsIncr", 18},
                          {"cCarCambAutonomousMode", 40},
                          {"bSaveDynamicData", 54},
                          {"cMesh_storedGroundMesh", 89},
                          {"bGroundReleaseOn", 93}})
        EXPECT_EQ(chunk.memberAt(c.place).name(), c.name);
    EXPECT_EQ(chunk.member("wheelstore").memberCount(), 4U);

    const auto take = allKeys();
    ASSERT_EQ(car->tool()->load(), 0);
    session->stage().setTime(1.0);
    record(1.0, [this](double t) { hold({.gas = 1.0, .steering = wobble(t)}); });
    EXPECT_EQ(allKeys(), take) << "what was read continues the take";
}

TEST_F(CarFiles, OldFilesLoadAndDamagedOnesDoNot)
{
    ASSERT_EQ(car->tool()->save(), 0);
    const DataChunk saved(car->saveData().data(), car->saveData().size());
    const auto loadWithout = [&](const std::string& from, bool onlyThis) {
        DataChunk copy(saved.name(), nullptr, 0);
        bool behind = false;
        for (std::size_t i = 0; i < saved.memberCount(); ++i) {
            const bool here = saved.memberAt(i).name() == from;
            behind |= here;
            if (onlyThis ? !here : !behind)
                copy.addMember(saved.memberAt(i));
        }
        std::size_t size = 0;
        const void* const bytes = copy.serialize(&size);
        car->setSaveData(bytes, static_cast<std::int32_t>(size));
        return car->tool()->load();
    };
    EXPECT_EQ(loadWithout("bGroundReleaseOn", true), 0);
    EXPECT_EQ(get(*car, "Enable Wheel Ground Release"), 1.0);
    EXPECT_EQ(loadWithout("fRelMaxBumperLen", false), 0) << "the oldest files have the block alone";
    EXPECT_NE(loadWithout("sDataChunkSaveStruct", true), 0);
}

TEST_F(CarFiles, WarnsOfARigThatCanNotWork)
{
    const auto said = [this](const std::string& start) {
        const auto& all = session->messages();
        return std::any_of(all.begin(), all.end(), [&](const auto& message) {
            return message.title == "Warning" && message.text.starts_with(start);
        });
    };
    drive(0.2, [](double) { return Hands{}; });
    EXPECT_TRUE(session->messages().empty()) << "a fresh rig is sound";

    session->stage().setTime(0.0);
    set(*car, "Autonomous Mode", 1.0);
    node(*car, "TargetMesh").setParent(&node(*car, "CarBodyMesh"));
    drive(0.2, [](double) { return Hands{}; });
    EXPECT_TRUE(said("The TargetMesh is parented to the CarBodyMesh."));

    session->stage().setTime(0.0);
    Matrix4 moved = node(*car, "WheelCenterMesh_BR").world(0.0);
    moved[13] += 0.5;
    node(*car, "WheelCenterMesh_BR").setWorld(moved, 0.0, false);
    drive(0.2, [](double) { return Hands{}; });
    EXPECT_TRUE(said("In the rigging process the wheels should be moved"));
}

} // namespace
} // namespace tvw::rgs::tests
