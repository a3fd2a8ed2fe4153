#include "core/tool.h"
#include "tests/plugins/camera_fixture.h"

namespace tvw::rgs::tests {
namespace {

class FilterCameras : public CameraTest
{
protected:
    void load(const char* profile)
    {
        tool->loadConfigProfile(tool->type()->configProfiles().profile(profile));
    }

    double x(double time) { return pose("FollowCam", time).translation.x; }

    /// The AttachedCam jumps by 1 along X and by 1 rad about Y in the first frame.
    void recordStep(double seconds)
    {
        key("AttachedCam", 0.0, at({}));
        key("AttachedCam", 0.04, at({1, 0, 0}, {0, 1, 0}));
        record(seconds);
    }
};

TEST_F(FilterCameras, TheSofterOneTakesItsTwoSharesAndNeverOvershoots)
{
    for (const double factor : {0.1, 0.5}) {
        place("SoftMotionCam");
        set(*tool, "Translation Response Factor", factor);
        set(*tool, "Rotation Response Factor", factor);
        recordStep(6.0);
        const double share = 1.0 - (1.0 - factor / 2) * (1.0 - factor / 2); // two sub-steps a frame
        EXPECT_NEAR(x(0.04), share * share, 1e-12) << factor;
        double last = 0.0;
        for (double t = 0.04; t < 6.0; t += 0.04) {
            EXPECT_GE(x(t), last);
            last = x(t);
            EXPECT_LE(toRotationVector(pose("FollowCam", t).rotation).y, 1.0 + 1e-12);
        }
        EXPECT_LE(last, 1.0);
        EXPECT_NEAR(last, 1.0, 1e-3);
        EXPECT_NEAR(toRotationVector(pose("FollowCam", 6.0).rotation).y, 1.0, 1e-3);
    }
}

TEST_F(FilterCameras, TheSpringsAnswerAsTheirProfilesSay)
{
    struct Case
    {
        const char* name;
        double fps, most, leastSettled; ///< highest place; from a second on not below
    };
    // The overshoot of a spring is exp(-pi z / sqrt(1 - z^2)), z = c / (2 sqrt(k)): 0.35 for 1000
    // and 20, 0.82 for 60 and 1, none for 30 and 20. At 15 frames a second the peak lies between
    // two of them.
    for (const Case& c : {Case{"Tight", 25, 1.35, 0.99},
                          {"Tight", 15, 1.24, 0.99},
                          {"Bouncy", 25, 1.82, 0.3},
                          {"Smooth Filtering", 25, 1.0, 0.0}}) {
        place("MotionFilterCam", c.fps);
        load(c.name);
        recordStep(6.0);
        double most = 0.0;
        for (double t = 0.0; t < 6.0; t += 1 / c.fps) {
            most = std::max(most, x(t));
            EXPECT_TRUE(t < 1.0 || x(t) >= c.leastSettled) << c.name << " at " << t;
        }
        EXPECT_NEAR(most, c.most, 0.06) << c.name << ", " << c.fps;
        EXPECT_NEAR(x(6.0), 1.0, 0.12) << c.name;
    }
}

TEST_F(FilterCameras, ASpringOfAnyStrengthStaysWithItsGoal)
{
    struct Case
    {
        double stiffness, damping, most, end;
    };
    // A heavily damped one creeps: 1 - exp(-t k / c). One that is too stiff for any step is there.
    for (const Case& c : {Case{30, 600, 0.27, 1.0 - std::exp(-6.0 * 30 / 600)},
                          {1e18, 5, 2.0, 1.0},
                          {30, 1e18, 0.02, 0.0},
                          {1e18, 1e18, 1.01, 1.0}}) {
        place("MotionFilterCam");
        for (const char* const part : {"Translation", "Rotation"}) {
            set(*tool, std::string(part) + " Response Factor", c.stiffness);
            set(*tool, std::string(part) + " Smoothing Factor", c.damping);
        }
        recordStep(6.0);
        const std::string what = std::to_string(c.stiffness) + ", " + std::to_string(c.damping);
        for (double t = 0.0; t < 6.0; t += 0.04) {
            EXPECT_LE(std::abs(x(t)), c.most) << what;
            EXPECT_LE(length(toRotationVector(pose("FollowCam", t).rotation)), c.most) << what;
        }
        EXPECT_NEAR(x(6.0), c.end, 0.01) << what;
        EXPECT_NEAR(toRotationVector(pose("FollowCam", 6.0).rotation).y, c.end, 0.01) << what;
    }
}

TEST_F(FilterCameras, AnUnfilteredPartIsWhereItShouldBe)
{
    struct Case
    {
        const char* item;
        double value;
        bool moved, turned; ///< at once
    };
    for (const Case& c : {Case{"Fixate Translations", 1, true, false},
                          {"Fixate Rotations", 1, false, true},
                          {"Translation Response Factor", 0, true, false},
                          {"Rotation Response Factor", 0, false, true}}) {
        place("MotionFilterCam");
        node(*tool, "FollowCam").setWorld(scaled(at({}), {2, 3, 4}), 0.0, false);
        set(*tool, c.item, c.value);
        recordStep(0.2);
        EXPECT_EQ(std::abs(x(0.04) - 1.0) < 1e-12, c.moved) << c.item;
        EXPECT_EQ(std::abs(toRotationVector(pose("FollowCam", 0.04).rotation).y - 1.0) < 1e-9,
                  c.turned)
            << c.item;
        expectNear(scaleOf(node(*tool, "FollowCam").world(0.2)), {2, 3, 4}, 1e-9, "its own scale");
    }
}

TEST_F(FilterCameras, FollowTheShortWayRound)
{
    struct Case
    {
        const char* type;
        double mirror; ///< of the AttachedCam along X, which has the same view
    };
    for (const Case& c : {Case{"SoftMotionCam", 1},
                          {"SoftMotionCam", -1},
                          {"MotionFilterCam", 1},
                          {"MotionFilterCam", -1}}) {
        place(c.type);
        for (int i = 0; i <= 200; ++i) // two turns and more, steadily
            key("AttachedCam", i * 0.04, scaled(at({}, {0, i * 0.08, 0}), {c.mirror, 1, 1}));
        record(8.0);
        for (double t = 2.0; t < 8.0; t += 0.04)
            expectNear(turning("FollowCam", t), {0, 2, 0}, 0.05, c.type);
    }
}

TEST_F(FilterCameras, ReInitializeForgetsTheFiltersMemory)
{
    place("SoftMotionCam");
    recordStep(1.0);
    session->stage().setTime(0.0);
    key("AttachedCam", 0.0, at({3, 0, 0}));
    key("AttachedCam", 0.04, at({3, 0, 0}));
    const auto button = stage::findToolItem(*tool, "Re-Initialize");
    ASSERT_TRUE(button);
    button->node->press();
    record(0.2);
    const double share = 1.0 - 0.95 * 0.95;
    EXPECT_NEAR(x(0.04), 3.0 * share, 1e-9) << "the first filter stands at its goal already";
}

class Humanizer : public CameraTest
{
protected:
    struct Shake
    {
        Vector3d mean, most; ///< about X, Y and Z [rad]
    };

    Shake shake(double seconds)
    {
        Shake all;
        const int frames = static_cast<int>(seconds * 25);
        for (int i = 1; i <= frames; ++i) {
            const Matrix4 local = inverse(start_) * node(*tool, "HumanizerCam").local(i * 0.04);
            const Vector3d turn = toRotationVector(toQuat(local));
            all.mean += turn / frames;
            for (int k = 0; k < 3; ++k)
                all.most[k] = std::max(all.most[k], std::abs(turn[k]));
        }
        return all;
    }

    void start(const char* profile)
    {
        place("HumanizerCam");
        key("HumanizerCam", 0.0, start_);
        if (*profile)
            tool->loadConfigProfile(tool->type()->configProfiles().profile(profile));
    }

    const Matrix4 start_ = at({1, 2, 3}, {0.5, 1.0, 0.0});
};

TEST_F(Humanizer, TurnsAboutItsAimAndMovesNothing)
{
    for (const char* const profile :
         {"Hand Held Normal", "Hand Held Nervous", "Earthquake", "Low Threshold"}) {
        start(profile);
        record(60.0);
        const Shake all = shake(60.0);
        EXPECT_GT(all.most.y, 0.5 * kDegree) << profile;
        EXPECT_LT(all.most.y, 20 * kDegree) << profile;
        for (int k = 0; k < 3; ++k)
            EXPECT_LT(std::abs(all.mean[k]), 0.35 * all.most[k]) << profile << ", to one side";
        expectNear(pose("HumanizerCam", 60.0).translation, {1, 2, 3}, 1e-12, profile);
    }
}

TEST_F(Humanizer, ShakesAsStronglyAsItIsTold)
{
    // A kick of every frame at full size: the filters' end is amplitude x size x 0.04 s, up to its
    // sign.
    struct Case
    {
        const char* name;
        double multiplier, input, threshold; ///< a negative input: in an earlier take
        bool shakes;
    };
    for (const Case& c : {Case{"as declared", 10, 0, 10, true},
                          {"nothing", 0, 0, 10, false},
                          {"by the input", 0, 1, 10, true},
                          {"by no input any more", 0, -1, 10, false},
                          {"all too weak", 10, 0, 100, false}}) {
        start("");
        set(*tool, "Shake Multiplier", c.multiplier);
        set(*tool, "Shaker Threshold", c.threshold);
        hold("Shaker Amplitude", std::abs(c.input));
        record(20.0);
        if (c.input < 0.0) { // let go, and the stick taken off it
            tool->properties().findProperty("Shaker Amplitude")->bind(nullptr);
            session->stage().setTime(0.0);
            record(20.0);
        }
        const Shake all = shake(20.0);
        EXPECT_EQ(all.most.y > 1e-3, c.shakes) << c.name;
        EXPECT_EQ(all.most.x > 1e-4, c.shakes) << c.name;
    }
}

} // namespace
} // namespace tvw::rgs::tests
