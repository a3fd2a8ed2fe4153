#include "tests/plugins/camera_fixture.h"

namespace tvw::rgs::tests {
namespace {

class FlyingCameras : public CameraTest
{
};

TEST_F(FlyingCameras, FlyAndTurnTheWayTheirInputsSay)
{
    struct Case
    {
        const char *type, *node, *input;
        Vector3d linear, angular; ///< speeds [m/s], [rad/s]; of the ZeroGCam what they gain in 1 s
        bool allowRoll = false;
    };
    const char* const kFree = "ObserverCamFree";
    const char* const kZero = "ZeroGCam";
    const char* const kFull = "ObserverCam";
    for (const Case& c : {Case{kFull, kFull, "Forw/Backw Speed", {0, 0, -5}, {}},
                          {kFull, kFull, "Right/Left Speed", {5, 0, 0}, {}},
                          {kFull, kFull, "Up/Down Speed", {0, 5, 0}, {}},
                          {kFull, kFull, "Yaw Speed (Right/Left)", {}, {0, -1, 0}},
                          {kFull, kFull, "Pitch Speed (Up/Down)", {}, {1, 0, 0}},
                          {kFull, kFull, "Roll Speed (Right/Left)", {}, {}},
                          {kFull, kFull, "Roll Speed (Right/Left)", {}, {0, 0, -1}, true},
                          {kFree, kFull, "Move Forw/Backw", {0, 0, -5}, {}},
                          {kFree, kFull, "Move Right/Left", {5, 0, 0}, {}},
                          {kFree, kFull, "Move Up/Down", {0, 5, 0}, {}},
                          {kFree, kFull, "Rotate Right/Left", {}, {0, -1, 0}},
                          {kFree, kFull, "Rotate Up/Down", {}, {1, 0, 0}},
                          {kZero, kZero, "Forw/Backw Force", {0, 0, -0.5}, {}},
                          {kZero, kZero, "Right/Left Force", {0.5, 0, 0}, {}},
                          {kZero, kZero, "Up/Down Force", {0, 0.2, 0}, {}},
                          {kZero, kZero, "Yaw Force (Right/Left)", {}, {0, -0.2, 0}},
                          {kZero, kZero, "Pitch Force (Up/Down)", {}, {0.2, 0, 0}},
                          {kZero, kZero, "Roll Force (Right/Left)", {}, {0, 0, -0.2}}}) {
        place(c.type);
        if (c.allowRoll)
            set(*tool, "Allow Roll", 1.0);
        hold(c.input, 1.0);
        record(5.0); // the filters are at their end
        const bool gains = c.type == kZero;
        const Vector3d before = gains ? velocity(c.node, 4.0) : Vector3d{};
        const Vector3d turnedBefore = gains ? turning(c.node, 4.0) : Vector3d{};
        const std::string what = std::string(c.type) + ", " + c.input;
        expectNear(velocity(c.node, 5.0) - before, c.linear, 1e-5, what);
        expectNear(turning(c.node, 5.0) - turnedBefore, c.angular, 1e-4, what);
    }
}

TEST_F(FlyingCameras, StayLevelHoweverTheyPanAndFlyWhereTheyHead)
{
    place("ObserverCam");
    key("ObserverCam", 0.0, at({}, {0, -90 * kDegree, 0})); // looks along +X
    hold("Yaw Speed (Right/Left)", 0.8);
    hold("Pitch Speed (Up/Down)", 0.9);
    hold("Cam Shaker Amplitude", 1.0);
    record(6.0);
    for (const double t : {1.0, 3.0, 6.0})
        EXPECT_NEAR(node(*tool, "ObserverCam").world(t)[1], 0.0, 1e-12)
            << "X is horizontal at " << t;

    struct Case
    {
        const char* name;
        Vector3d turn; ///< of the camera
        Vector3d forward;
    };
    for (const Case& c : {Case{"level", {0, -90 * kDegree, 0}, {5, 0, 0}},
                          {"looking down", {-40 * kDegree, 0, 0}, {0, 0, -5}},
                          {"looking straight down", {-90 * kDegree, 0, 0}, {0, 0, -5}},
                          {"upside down by its pitch", {170 * kDegree, 0, 0}, {0, 0, -5}}}) {
        place("ObserverCam");
        key("ObserverCam", 0.0, at({}, c.turn));
        hold("Forw/Backw Speed", 1.0);
        record(5.0);
        expectNear(velocity("ObserverCam", 5.0), c.forward, 1e-5, c.name);
    }
}

TEST_F(FlyingCameras, GoOnAtTheSpeedThatTheyHadBeforeTheRun)
{
    // Two filters in steps of 0.04 s / 13 that take k = 0.2 / 13 of the way each: from v they coast
    // by 2 v 0.2 s (1 - k).
    place("ObserverCam");
    key("ObserverCam", 0.0, at({}));
    key("ObserverCam", 1.0, at({0, 0, -2}));
    session->stage().setTime(1.0);
    record(3.0);
    expectNear(velocity("ObserverCam", 1.04), {0, 0, -2}, 0.05, "no jump");
    EXPECT_NEAR(pose("ObserverCam", 4.0).translation.z, -2.0 - 0.8 * (1.0 - 0.2 / 13), 1e-5);
}

TEST_F(FlyingCameras, OnlyABrakeStopsWhatFloats)
{
    const double weak = std::pow(1.002, -1.0 / 0.003);
    const double strong = std::pow(1.003, -1.0 / 0.003);
    struct Case
    {
        const char* brake;
        double forward, sideways, turn; ///< what is left after a second
    };
    for (const double fps : {25.0, 60.0}) {
        for (const Case& c : {Case{"Yaw Force (Right/Left)", 1, 1, 1},
                              {"Brake All", weak, weak, weak},
                              {"Translational Brake", weak, weak, 1},
                              {"Rotational Brake", 1, 1, strong},
                              {"Airplane Brake", 1, strong, strong}}) {
            const bool held = c.turn != 1 || c.forward != 1 || c.sideways != 1;
            const std::string what = std::string(c.brake) + " at " + std::to_string(fps);
            place("ZeroGCam", fps);
            key("ZeroGCam", 0.0, at({}));
            key("ZeroGCam", 1.0, at({1, 0, -2}));
            session->stage().setTime(1.0);
            hold(c.brake, held);
            record(1.0);
            const double frame = 1.0 / fps;
            const double atStart =
                std::pow(c.sideways, frame / 2); // a frame's mean is half a frame old
            expectNear(velocity("ZeroGCam", 2.0),
                       {c.sideways / atStart, 0, -2 * c.forward / std::pow(c.forward, frame / 2)},
                       2e-3, what);

            place("ZeroGCam", fps);
            key("ZeroGCam", 0.0, at({}));
            key("ZeroGCam", 1.0, at({}, {0, 0.5, 0}));
            session->stage().setTime(1.0);
            hold(c.brake, held);
            record(1.0);
            expectNear(turning("ZeroGCam", 2.0), {0, 0.5 * c.turn / std::pow(c.turn, frame / 2), 0},
                       1e-3, what);
        }
    }
}

TEST_F(FlyingCameras, ComeBackToARememberedPlaceAndCoastWhenLetGo)
{
    place("ObserverCam");
    const auto flyAway = [&](double t, double release) {
        hold("Save MemReg State", t < 0.1);
        hold("Right/Left Speed", t < 2.0);
        hold("Transl MemRegulator", t >= 4.0 && t < release);
    };
    record(12.0, [&](double t) { flyAway(t, 20.0); });
    EXPECT_GT(pose("ObserverCam", 4.0).translation.x, 8.0);
    EXPECT_NEAR(pose("ObserverCam", 12.0).translation.x, 0.0, 0.01);

    session->stage().setTime(0.0);
    record(8.0, [&](double t) { flyAway(t, 4.6); });
    double last = velocity("ObserverCam", 4.4).x;
    EXPECT_LT(last, -3.0);
    for (double t = 4.44; t < 5.2; t += 0.04) {
        const double now = velocity("ObserverCam", t).x;
        EXPECT_LT(std::abs(now - last), 1.0) << "a jerk at " << t;
        last = now;
    }
    EXPECT_NEAR(velocity("ObserverCam", 8.0).x, 0.0, 1e-3);
    EXPECT_GT(pose("ObserverCam", 8.0).translation.x, 1.0) << "stops before the goal";
}

TEST_F(FlyingCameras, LevelThemselvesWhileTheyFlyOn)
{
    place("ObserverCam");
    set(*tool, "Allow Roll", 1.0);
    key("ObserverCam", 0.0, at({}, {0, 0, 50 * kDegree}));
    hold("Anti-Roll Regulator", 1.0);
    hold("Forw/Backw Speed", 1.0);
    record(5.0);
    EXPECT_NEAR(node(*tool, "ObserverCam").world(5.0)[1], 0.0, 1e-4);
    expectNear(velocity("ObserverCam", 5.0), {0, 0, -5}, 1e-3, "forward");
}

TEST_F(FlyingCameras, ShakeAboutTheirAim)
{
    place("ObserverCam");
    record(14.0, [&](double t) { hold("Cam Shaker Amplitude", t < 10.0); });
    double most = 0.0;
    for (double t = 0.0; t < 10.0; t += 0.04)
        most = std::max(most, length(toRotationVector(pose("ObserverCam", t).rotation)));
    EXPECT_GT(most, 2 * kDegree);
    EXPECT_LT(most, 15 * kDegree);
    expectNear(toRotationVector(pose("ObserverCam", 14.0).rotation), {}, 0.2 * kDegree,
               "in the end");
}

TEST_F(FlyingCameras, TheLensKeepsItsValueUntilASpinnerIsTurned)
{
    place("ObserverCam");
    stage::StageNode& camera = node(*tool, "ObserverCam");
    const double own = camera.fov(0.0);
    record(2.0, [&](double t) {
        if (t > 1.0 - 1e-9 && get(*tool, "Field Of View") == 0.0)
            set(*tool, "Field Of View", 20.0);
    });
    EXPECT_EQ(camera.fov(0.0), own);
    EXPECT_EQ(camera.fov(0.5), own) << "no glide towards the change";
    EXPECT_EQ(camera.fov(0.96), own);
    EXPECT_EQ(camera.fov(1.0), 20.0);
    session->stage().setTime(0.0);
    record(1.0);
    EXPECT_EQ(camera.fov(0.0), 20.0) << "turned before the run: from its start";
}

TEST_F(FlyingCameras, TheScaleActsOnSpeedAndPerson)
{
    place("ObserverCam");
    set(*tool, "Relative Scale", 3.0);
    hold("Forw/Backw Speed", 1.0);
    record(5.0);
    expectNear(velocity("ObserverCam", 5.0), {0, 0, -15}, 1e-4, "speed");
    const Matrix4 person = node(*tool, "HumanoidMesh").world(5.0);
    EXPECT_NEAR(length(person.axis(1)), 3.0, 1e-12);
    EXPECT_NEAR(person[13], -3 * 1.63, 1e-9) << "the camera is at its eyes";
}

} // namespace
} // namespace tvw::rgs::tests
