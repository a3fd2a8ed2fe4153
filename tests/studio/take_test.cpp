// A first take, from the keys of the hand to the exported file.
#include "adaptor/stage/scene_file.h"
#include "adaptor/stage/tool_items.h"
#include "core/core_implementation.h"
#include "tests/studio/studio_fixture.h"

#include <QApplication>

#include <cmath>
#include <filesystem>

namespace tvw::rgs::tests {
namespace {

class TakeTest : public StudioTest
{
protected:
    /// Gas for a while, then gas and left, and Space. Where the car went [m], in its first frame's
    /// axes: ahead, and to the left.
    void driveAhead(int milliseconds)
    {
        hand({"keydown", "Up"});
        letRun(milliseconds);
        hand({"keydown", "Left"});
        letRun(300);
        hand({"keyup", "Left"});
        hand({"keyup", "Up"});
        press("space");
        ASSERT_TRUE(waitFor([&] { return !core().isRunning(); })) << "Space does not stop";
    }

    /// Where a later pose lies as seen from an earlier one.
    static Vector3d seenFrom(const Matrix4& from, const Matrix4& to)
    {
        const Vector3d way = translationOf(to) - translationOf(from);
        const Matrix4 axes = orthonormalise(from);
        return {dot(way, axes.axis(0)), dot(way, axes.axis(1)), dot(way, axes.axis(2))};
    }

    /// A resimulation goes on to the end of the range, with what the hands did last.
    static std::map<double, Matrix4> upTo(double end, std::map<double, Matrix4> keys)
    {
        keys.erase(keys.upper_bound(end), keys.end());
        return keys;
    }
};

TEST_F(TakeTest, IsDrivenScrubbedUndoneResimulatedAndExported)
{
    openDemo();
    const std::map<double, Matrix4> before = keysOf(body());
    startTake();
    driveAhead(1500);
    const std::map<double, Matrix4> take = keysOf(body());
    ASSERT_GT(take.size(), 40U);

    // A key at each frame, and none between.
    const double step = 1.0 / scene().getFramesPerSecond();
    long frame = std::lround(take.begin()->first / step);
    for (const auto& [time, pose] : take)
        EXPECT_NEAR(time, static_cast<double>(frame++) * step, 1e-9);

    // It went where it was driven: the arrow up is ahead, which is -Z, and left is -X.
    const Vector3d way = seenFrom(take.begin()->second, take.rbegin()->second);
    EXPECT_LT(way[2], -3.0);
    EXPECT_LT(way[0], -0.05);

    // Scrubbing shows the pose of that frame.
    press("Home");
    EXPECT_EQ(scene().getTime(), 0.0);
    for (int i = 0; i < 5; ++i)
        press("Right");
    EXPECT_NEAR(scene().getTime(), 5 * step, 1e-9);
    EXPECT_EQ(body().local(scene().getTime()), take.lower_bound(5 * step - 1e-9)->second);

    const std::string path = folder.path() + "/take.glb";
    EXPECT_TRUE(stage::exportScene(scene(), path));
    EXPECT_GT(std::filesystem::file_size(path), 10000U);

    // The same hand, simulated again: the same to the bit.
    const double end = take.rbegin()->first;
    press("F6");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning(); }));
    EXPECT_EQ(upTo(end, keysOf(body())), take);

    // Another spring, the same hand.
    const auto item = stage::findToolItem(car(), "Front Stiffness");
    ASSERT_TRUE(item) << item.reason();
    ASSERT_TRUE(stage::setToolItem(*item, item->node->value() * 0.5));
    press("F6");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning() && upTo(end, keysOf(body())) != take; }));
    EXPECT_EQ(upTo(end, keysOf(body())).size(), take.size());

    // One step back for each; behind the first the scene is as it was.
    for (int i = 0; i < 6 && keysOf(body()) != before; ++i)
        press("ctrl+z");
    EXPECT_EQ(keysOf(body()), before);
}

TEST_F(TakeTest, KeysThatAreHeldWhenTheFocusGoesAreLetGo)
{
    openDemo();
    auto* const gas = car().properties().findProperty("Gas Pedal (Forw/Backw)");
    startTake();
    hand({"keydown", "Up"});
    ASSERT_TRUE(waitFor([&] { return gas->raw() == 1.0; }));
    QWidget other(nullptr, Qt::Tool); // of this program: the hand drives on
    other.show();
    other.activateWindow();
    letRun(400);
    EXPECT_EQ(gas->raw(), 1.0);
    hand({"keyup", "Up"});
    EXPECT_TRUE(waitFor([&] { return gas->raw() == 0.0; }));
    EXPECT_TRUE(core().isRunning());
}

TEST_F(TakeTest, CtrlZThrowsATakeAwayAndBeginsAnother)
{
    openDemo();
    startTake();
    letRun(500);
    EXPECT_GT(keysOf(body()).size(), 5U);
    press("ctrl+z");
    ASSERT_TRUE(core().isRunning()) << "the next take begins with its countdown";
    EXPECT_LE(keysOf(body()).size(), 1U) << "but for the new take's start";
    press("Escape");
    EXPECT_TRUE(waitFor([&] { return !core().isRunning(); }));
}

} // namespace
} // namespace tvw::rgs::tests
