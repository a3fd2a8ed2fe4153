#include "tests/support/virtual_stick.h"
#include "tests/unidevice/device_fixture.h"
#include "unidevice/driver/sdl_joysticks.h"
#include "unidevice/driver/tablet_device.h"
#include "unidevice/property_handler.h"

#include <gmock/gmock.h>

namespace tvw::unidevice {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

using rgs::tests::VirtualStick;

class JoystickTest : public DeviceTest
{
protected:
    std::vector<double> valuesOf(Device& device)
    {
        device.update(nullptr);
        std::vector<double> out;
        for (int i = 0; i < device.controlCount(); ++i)
            out.push_back(device.controlAt(i)->value());
        return out;
    }

    SdlJoysticks sticks;
};

TEST_F(JoystickTest, AxesSlidersHatsAndButtonsReadAsTheyStand)
{
    ASSERT_EQ(sticks.problem(), "");
    VirtualStick pad("Test Pad", 7, 1, 2);
    sticks.pump();
    Device* const device = hub().findDevice("Test Pad", 0);
    ASSERT_NE(device, nullptr);
    std::vector<std::string> names;
    for (int i = 0; i < device->controlCount(); ++i)
        names.push_back(device->controlAt(i)->type + std::to_string(device->controlAt(i)->index));
    EXPECT_THAT(names, ElementsAre("Axis0", "Axis1", "Axis2", "Axis3", "Axis4", "Axis5", "Slider0",
                                   "Hat0", "Hat1", "Button0", "Button1"));
    pad.axis(0, 32767);
    pad.axis(1, -32768);
    pad.axis(6, 16384);
    pad.button(1, true);
    struct Case
    {
        int hat;
        double x, y;
    };
    for (const Case& c : {Case{SDL_HAT_UP, 0, 1}, Case{SDL_HAT_RIGHT, 1, 0},
                          Case{SDL_HAT_LEFTDOWN, -1, -1}, Case{SDL_HAT_CENTERED, 0, 0}}) {
        pad.hat(0, c.hat);
        EXPECT_THAT(valuesOf(*device), ElementsAre(1.0, -1.0, 0.0, 0.0, 0.0, 0.0,
                                                   DoubleNear(0.5, 1e-3), c.x, c.y, 0.0, 1.0));
    }
}

TEST_F(JoystickTest, TwoOfOneNameHaveNumbersAndMovementIsDetected)
{
    VirtualStick first("Twin", 2, 0, 1);
    VirtualStick second("Twin", 2, 0, 1);
    sticks.pump();
    Device* const other = hub().findDevice("Twin", 1);
    ASSERT_NE(other, nullptr);
    first.axis(0, 20000); // where a lever stands already is no movement
    ASSERT_TRUE(hub().prepareAll());
    EXPECT_EQ(hub().detectControl(nullptr), nullptr);
    second.axis(1, -12000);
    EXPECT_EQ(hub().detectControl(nullptr), other->controlAt(1));
}

TEST_F(JoystickTest, AStickThatGoesInATakeHoldsItsLeversAndGetsThemBack)
{
    struct Standard final : Property::Factory
    {
    } standard;
    PropertyHandler inputs;
    Property& gas = *inputs.addProperty("Gas", 6, standard);
    auto stick = std::make_unique<VirtualStick>("Wheel", 1, 0, 0);
    sticks.pump();
    gas.bind(hub().findDevice("Wheel", 0)->controlAt(0));
    stick->axis(0, 32767);
    hub().updateAll();
    ASSERT_EQ(gas.raw(), 1.0);
    inputs.holdLost(true); // a take begins

    stick->unplug(); // it reads 0 everywhere before it is gone
    hub().updateAll();
    EXPECT_EQ(gas.raw(), 1.0);
    sticks.pump();
    EXPECT_EQ(hub().findDevice("Wheel", 0), nullptr);
    EXPECT_EQ(gas.control(), nullptr);
    EXPECT_EQ(gas.raw(), 1.0) << "the take goes on";

    stick = std::make_unique<VirtualStick>("Wheel", 1, 0, 0);
    stick->axis(0, -32768);
    sticks.pump();
    hub().updateAll();
    EXPECT_EQ(gas.raw(), -1.0) << "the returning one has its binding back";

    stick.reset();
    sticks.pump();
    inputs.holdLost(false);
    EXPECT_EQ(gas.raw(), 0.0) << "the next take does not drive on by itself";
}

/// Writes down what the hardware is told.
class RecordingPort final : public JoystickPort
{
public:
    explicit RecordingPort(std::vector<std::string>& told) : told_(told) {}
    bool read(JoystickState&) override { return true; }
    bool supportsEffect(EffectKind kind) override { return kind != EffectKind::ramp; }
    std::optional<int> upload(const EffectRecord& record) override
    {
        tell("upload", record);
        return 7;
    }
    bool update(int, const EffectRecord& record) override
    {
        tell("update", record);
        return true;
    }
    bool start(int, int count) override
    {
        told_.push_back("start " + std::to_string(count));
        return true;
    }
    bool stop(int) override
    {
        told_.push_back("stop");
        return true;
    }
    void remove(int) override { told_.push_back("remove"); }

private:
    void tell(const char* what, const EffectRecord& r)
    {
        told_.push_back(std::string(what) + " axis " + std::to_string(r.axis) + " magnitude " +
                        std::to_string(r.magnitude) + " phase " + std::to_string(r.phase) +
                        " period " + std::to_string(r.period));
    }
    std::vector<std::string>& told_;
};

TEST_F(JoystickTest, AForceReachesTheHardwareInItsScale)
{
    std::vector<std::string> told;
    auto* const wheel =
        new DXJoystickDevice({"Wheel", 2, 0, 1}, std::make_unique<RecordingPort>(told));
    EXPECT_FALSE(wheel->controlAt(0)->supportsEffect(EffectKind::ramp));
    EXPECT_EQ(wheel->controlAt(0)->createEffect(EffectKind::ramp), nullptr);
    EXPECT_EQ(wheel->controlAt(2)->createEffect(EffectKind::sine), nullptr) << "a button";
    const std::unique_ptr<Effect> effect(wheel->controlAt(1)->createEffect(EffectKind::sine));
    ASSERT_NE(effect, nullptr);
    effect->setMagnitude(0.5);
    effect->start(3);
    effect->setPhase(1.0);
    effect->setPeriod(0.25);
    effect->setMagnitude(-4.0);
    wheel->destroy(); // the effect outlives its device
    effect->stop();
    EXPECT_THAT(told,
                ElementsAre("upload axis 1 magnitude 5000 phase 0 period 1000000", "start 3",
                            "update axis 1 magnitude 5000 phase 39999 period 1000000",
                            "update axis 1 magnitude 5000 phase 39999 period 250000",
                            "update axis 1 magnitude -10000 phase 39999 period 250000", "stop"));
}

TEST_F(JoystickTest, APenReadsPlaceLeanPressureAndButtons)
{
    TabletDevice& pen = *new TabletDevice("WACOM");
    constexpr double kQuarter = 1.5707963267948966;
    pen.packet({.x = 100, .y = 50, .xExtent = 100, .yExtent = 100});
    EXPECT_EQ(valuesOf(pen)[0], 0.0) << "not acquired";
    pen.acquire(nullptr);
    pen.packet({.x = 100,
                .y = 50,
                .xExtent = 100,
                .yExtent = 100,
                .azimuth = kQuarter,
                .altitude = kQuarter / 1.5,
                .pressure = 250,
                .buttons = 2});
    const auto values = valuesOf(pen);
    EXPECT_THAT(
        std::vector<double>(values.begin(), values.begin() + 7),
        ElementsAre(1.0, 0.0, DoubleNear(0.5, 1e-12), DoubleNear(0.0, 1e-12), 0.25, 0.0, 1.0));
}

} // namespace
} // namespace tvw::unidevice
