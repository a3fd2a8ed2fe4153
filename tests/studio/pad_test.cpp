// A pad is plugged in, drives, is pulled out in mid-take and comes back.
#include "core/core_implementation.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/virtual_stick.h"
#include "unidevice/device_hub.h"

namespace tvw::rgs::tests {
namespace {

constexpr int kFull = 32767;
constexpr const char* kPad = "Rigstage test pad";

class PadTest : public StudioTest
{
protected:
    static unidevice::Device* pad() { return unidevice::DeviceHub::instance().findDevice(kPad, 0); }
};

TEST_F(PadTest, DrivesAndMayBePulledOutInMidTake)
{
    auto stick = std::make_unique<VirtualStick>(kPad, 4, 0, 4);
    ASSERT_TRUE(waitFor([] { return pad() != nullptr; })) << "is not seen";
    openDemo();
    auto* const gas = car().properties().findProperty("Gas Pedal (Forw/Backw)");
    gas->bind(pad()->controlAt(0));

    startTake();
    stick->axis(0, kFull);
    ASSERT_TRUE(waitFor([&] { return gas->raw() > 0.99; })) << "the axis is not read";
    letRun(700);
    const double pulledAt = core().records().frameTime();
    stick.reset();
    ASSERT_TRUE(waitFor([] { return pad() == nullptr; }));
    EXPECT_TRUE(core().isRunning()) << "the take goes on";
    EXPECT_GT(gas->raw(), 0.99) << "the foot stays where it was";
    letRun(400);

    stick = std::make_unique<VirtualStick>(kPad, 4, 0, 4);
    ASSERT_TRUE(waitFor([&] { return gas->control() != nullptr; })) << "does not come back";
    stick->axis(0, -kFull);
    ASSERT_TRUE(waitFor([&] { return gas->raw() < -0.99; })) << "is not read any more";
    press("space");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning(); }));

    const std::map<double, Matrix4> take = keysOf(body());
    EXPECT_GT(take.rbegin()->first, pulledAt + 0.4);

    press("F6");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning(); }));
    letRun(300);
    std::map<double, Matrix4> again = keysOf(body());
    again.erase(again.upper_bound(take.rbegin()->first), again.end());
    EXPECT_EQ(again, take) << "what a lost pad held is part of the take";
}

} // namespace
} // namespace tvw::rgs::tests
