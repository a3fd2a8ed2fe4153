// A take keeps pace with the clock on the wall while the view draws.
#include "core/core_implementation.h"
#include "tests/studio/studio_fixture.h"

#include <QElapsedTimer>
#include <QOpenGLWidget>
#include <QThread>

#include <cmath>

namespace tvw::rgs::tests {
namespace {

/// Notes when each frame came, and makes one of them late.
class Watch final : public core::RunObserver
{
public:
    struct Frame
    {
        double time = 0.0; ///< [s] of the scene
        double wall = 0.0; ///< [s] since the first frame
    };

    void frameDone(double time, const std::vector<core::Instance*>&) override
    {
        if (frames.empty())
            clock_.start();
        frames.push_back({time, static_cast<double>(clock_.nsecsElapsed()) * 1e-9});
        if (stallAt >= 0 && static_cast<int>(frames.size()) == stallAt)
            QThread::msleep(kStallMs);
    }

    static constexpr unsigned kStallMs = 400;
    int stallAt = -1; ///< frames
    std::vector<Frame> frames;

private:
    QElapsedTimer clock_;
};

class PaceTest : public StudioTest, public testing::WithParamInterface<double>
{
protected:
    /// A take of that length, as it was seen.
    std::vector<Watch::Frame> record(double seconds, int stallAt)
    {
        openDemo();
        scene().setFramesPerSecond(GetParam());
        int pictures = 0;
        const auto* const view = studio->window().findChild<QOpenGLWidget*>("view");
        QObject::connect(view, &QOpenGLWidget::frameSwapped, view, [&] { ++pictures; });
        Watch watch;
        watch.stallAt = stallAt;
        core().records().addObserver(&watch);
        startTake();
        EXPECT_TRUE(
            waitFor([&] { return !watch.frames.empty() && watch.frames.back().wall > seconds; }));
        core().stopRecord();
        core().records().removeObserver(&watch);
        view->disconnect();
        EXPECT_GT(pictures, 3 * seconds) << "the take is not seen";
        return watch.frames;
    }

    void expectNoFrameMissing(const std::vector<Watch::Frame>& frames) const
    {
        const double step = 1.0 / GetParam();
        for (std::size_t i = 1; i < frames.size(); ++i)
            ASSERT_EQ(std::lround(frames[i].time / step),
                      std::lround(frames[i - 1].time / step) + 1);
    }

    // A machine that runs other tests beside draws its pictures by software: this much late is
    // still catching up.
    static constexpr double kLate = 0.5; // [s]
};

TEST_P(PaceTest, NoFrameIsDroppedAndAStallIsCaughtUp)
{
    const std::vector<Watch::Frame> frames = record(3.0, 20);
    expectNoFrameMissing(frames);
    const double simulated = frames.back().time - frames.front().time;
    EXPECT_NEAR(simulated, frames.back().wall, kLate);
    EXPECT_NEAR(keysOf(body()).rbegin()->first, frames.back().time, 1e-9);
    // Frames of one event come within a fraction of their step of each other.
    const double burst = 0.2 / GetParam();
    int together = 1;
    int most = 1;
    for (std::size_t i = 21; i < frames.size(); ++i) {
        together = frames[i].wall - frames[i - 1].wall < burst ? together + 1 : 1;
        most = std::max(most, together);
    }
    EXPECT_GT(most, 1) << "the stall was not caught up";
}

INSTANTIATE_TEST_SUITE_P(FrameRates, PaceTest, testing::Values(25.0, 30.0, 60.0));

} // namespace
} // namespace tvw::rgs::tests
