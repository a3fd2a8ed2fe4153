#include "tests/plugins/camera_fixture.h"

#include <numbers>

namespace tvw::rgs::tests {
namespace {

class TargetCameras : public CameraTest
{
protected:
    /// The camera's axes are a right-handed set and -Z points to the place.
    void expectLooksAt(const char* camera, double time, const Vector3d& place,
                       const std::string& what)
    {
        const Matrix4 world = node(*tool, camera).world(time);
        expectNear(cross(world.axis(0), world.axis(1)), world.axis(2), 1e-9, what + ", handed");
        const Vector3d way = place - translationOf(world);
        expectNear(-world.axis(2), normalise(way), 1e-9, what);
    }

    Matrix4 world(const char* name, double time) { return node(*tool, name).world(time); }
};

TEST_F(TargetCameras, FlyRoundTheSphereTheWayTheirInputsSay)
{
    struct Case
    {
        const char* input;
        double fps;
        Vector3d way;    ///< where the camera goes first, seen along -Z
        double turn;     ///< of its direction in a frame [rad]: twice 0.03 per 0.04 s
        double distance; ///< after a second, from 5; negative: any
    };
    constexpr double kTurn = 0.06;
    for (const Case& c : {Case{"Right/Left Transl", 25, {1, 0, 0}, kTurn, 5},
                          {"Right/Left Transl", 50, {1, 0, 0}, kTurn / 2, 5},
                          {"Up/Down Transl", 25, {0, 1, 0}, kTurn, 5},
                          {"Forw/Backw Transl", 25, {0, 0, -1}, 0, -1},
                          {"Roll (Right/Left)", 25, {}, 0, 5}}) {
        place("SphereCam", c.fps);
        hold(c.input, 1.0);
        record(2.0);
        const std::string what = std::string(c.input) + " at " + std::to_string(c.fps);
        for (const double t : {0.0, 0.2, 1.0, 2.0})
            expectLooksAt("SphereCam", t, {}, what);
        const Vector3d first = velocity("SphereCam", 0.2);
        EXPECT_GE(dot(first, c.way), 0.9 * length(first)) << what;
        EXPECT_EQ(length(first) > 0.0, length(c.way) > 0.0) << what;
        const Vector3d before = pose("SphereCam", 2.0 - 1 / c.fps).translation;
        const Vector3d after = pose("SphereCam", 2.0).translation;
        EXPECT_NEAR(std::acos(std::min(1.0, dot(normalise(before), normalise(after)))), c.turn,
                    1e-4)
            << what;
        if (c.distance >= 0.0)
            EXPECT_NEAR(length(pose("SphereCam", 1.0).translation), c.distance, 1e-9) << what;
        else
            EXPECT_LT(length(pose("SphereCam", 1.0).translation), 1.0) << what;
    }
    EXPECT_LT(world("SphereCam", 0.2)[1], -0.01) << "rolled right: the right side sinks";
    place("SphereCam");
    hold("Forw/Backw Transl", 1.0);
    record(5.0);
    EXPECT_NEAR(pose("SphereCam", 5.0).translation.z, 0.05, 1e-9)
        << "never nearer than a hundredth";
}

TEST_F(TargetCameras, TheSphereRidesOnItsTarget)
{
    struct Case
    {
        const char* name;
        bool gyro;
        Vector3d turn;       ///< of the target
        Vector3d end;        ///< of a camera that started at (0, 0, 5)
        double mirror = 1.0; ///< of the target along X
    };
    const double s = 5.0 * std::sin(0.5);
    const double c5 = 5.0 * std::cos(0.5);
    for (const Case& c : {Case{"turned", false, {0, 0.5, 0}, {s, 0, c5}},
                          {"nodded", false, {0.5, 0, 0}, {0, -s, c5}},
                          {"turned, mirrored", false, {0, 0.5, 0}, {s, 0, c5}, -1.0},
                          {"turned under a gyro", true, {0, 0.5, 0}, {s, 0, c5}},
                          {"nodded under a gyro", true, {0.5, 0, 0}, {0, 0, 5}},
                          {"tilted under a gyro", true, {0, 0, 0.5}, {0, 0, 5}}}) {
        place("SphereCam");
        set(*tool, "Enable Follow Sphere Gyro", c.gyro);
        key("TargetMesh", 0.0, scaled(at({}), {c.mirror, 1, 1}));
        key("TargetMesh", 1.0, scaled(at({}, c.turn), {c.mirror, 1, 1}));
        record(6.0);
        expectNear(pose("SphereCam", 6.0).translation, c.end, 1e-4, c.name);
    }

    // A way of 20 pulls the sphere in by 0.1 x 0.05 x 20.
    place("SphereCam");
    key("TargetMesh", 0.0, at({}));
    key("TargetMesh", 4.0, at({20, 0, 0}));
    record(6.0);
    expectNear(pose("SphereCam", 6.0).translation, {20, 0, 4.9}, 1e-6, "driven");
}

TEST_F(TargetCameras, TheSphereTakesItsOrbitFromWhereTheCameraStands)
{
    place("SphereCam");
    key("SphereCam", 0.0, at({3, 0, 4}, {0, 0, 0.3})); // rolled, looking past the target
    record(4.0, [&](double t) { hold("Anti-Roll Regulator", t > 1.0); });
    expectNear(pose("SphereCam", 0.0).translation, {3, 0, 4}, 1e-12, "start");
    expectNear(pose("SphereCam", 0.04).translation, {3, 0, 4}, 1e-9, "place");
    for (const double t : {0.0, 0.04})
        expectLooksAt("SphereCam", t, {}, "aimed at once, as its factor of 1 says");
    EXPECT_NEAR(world("SphereCam", 1.0)[1], std::sin(0.3), 1e-9) << "the roll stays";
    EXPECT_NEAR(world("SphereCam", 4.0)[1], 0.0, 1e-3) << "until the regulator takes it";

    place("SphereCam");
    set(*tool, "Camera Orient Resp Fact", 0.1);
    key("SphereCam", 0.0, at({3, 0, 4}));
    record(4.0);
    expectNear(turning("SphereCam", 0.04), {0, 2, 0}, 0.5, "turns in softly"); // by a tenth of 0.64
    EXPECT_NEAR(toRotationVector(pose("SphereCam", 4.0).rotation).y, std::atan2(3.0, 4.0), 1e-3);
}

TEST_F(TargetCameras, LookAtsTheirTarget)
{
    struct Case
    {
        const char* name;
        Vector3d camera, target;
        double turn; ///< of the camera about Y before [rad]
        Vector3d right;
        double distance;
    };
    for (const Case& c :
         {Case{"ahead", {0, 0, 5}, {}, 0, {1, 0, 0}, 5},
          {"to the right", {}, {4, 0, 0}, 0, {0, 0, 1}, 4},
          {"behind", {}, {0, 0, 2}, 0, {-1, 0, 0}, 2},
          {"up ahead", {}, {0, 3, -4}, 1.0, {1, 0, 0}, 5},
          {"straight above", {}, {0, 3, 0}, 0.5, {std::cos(0.5), 0, -std::sin(0.5)}, 3},
          {"straight below", {}, {0, -3, 0}, 0, {1, 0, 0}, 3}}) {
        place("LookAtCam");
        key("LookAtCam", 0.0, scaled(at(c.camera, {0, c.turn, 0}), {2, 2, 2}));
        node(*tool, "TargetMesh").setWorld(at(c.target), 0.0, false);
        record(0.2);
        for (const double t : {0.0, 0.04, 0.2}) {
            const Matrix4 camera = world("LookAtCam", t);
            expectNear(camera.axis(0), c.right * 2.0, 1e-9, c.name);
            expectNear(camera.axis(2), normalise(c.camera - c.target) * 2.0, 1e-9, c.name);
            expectNear(cross(camera.axis(2), camera.axis(0)), camera.axis(1) * 2.0, 1e-9, c.name);
            expectNear(translationOf(camera), c.camera, 1e-12, c.name);
            EXPECT_NEAR(node(*tool, "LookAtCam").targetDistance(t), c.distance, 1e-9) << c.name;
        }
    }
}

TEST_F(TargetCameras, StayWhereTheyAreWhenTheirTargetIsDeleted)
{
    struct Case
    {
        const char *type, *target, *camera;
    };
    for (const Case& c : {Case{"SphereCam", "TargetMesh", "SphereCam"},
                          {"LookAtCam", "TargetMesh", "LookAtCam"},
                          {"AutoZoomCam", "TargetMesh", "AutoZoomCam"},
                          {"MotionFilterCam", "AttachedCam", "FollowCam"},
                          {"SoftMotionCam", "AttachedCam", "FollowCam"},
                          {"ZoomAndFocusCam", "FocalTarget_2", "CurrFocalPoint"},
                          {"Gyro", "eye", "gyro"}}) {
        place(c.type);
        stage::StageNode& camera = node(*tool, c.camera);
        camera.setWorld(at({3, 4, 5}, {0, 1, 0}), 0.0, true);
        session->stage().remove(node(*tool, c.target));
        record(1.0);
        const QTransformd end = toTransform(camera.world(1.0));
        expectNear(end.translation, {3, 4, 5}, 1e-12, c.type);
        expectNear(toRotationVector(end.rotation), {0, 1, 0}, 1e-12, c.type);
        EXPECT_EQ(camera.fov(1.0), camera.fov(0.0)) << c.type;
    }
}

TEST_F(TargetCameras, InitializeAimsWithoutARunAndCanBeTakenBack)
{
    place("LookAtCam");
    node(*tool, "TargetMesh").setWorld(at({5, 0, 5}), 0.0, false);
    const auto button = stage::findToolItem(*tool, "Initialize");
    ASSERT_TRUE(button);
    button->node->press();
    expectLooksAt("LookAtCam", 0.0, {5, 0, 5}, "pressed");
    ASSERT_TRUE(session->stage().hostUndo());
    expectLooksAt("LookAtCam", 0.0, {}, "undone");
}

TEST_F(TargetCameras, TheGyroPassesWhatItIsTold)
{
    constexpr double kQuarter = std::numbers::pi / 2;
    const Quatd yaw = fromRotationVector(Vector3d{0, 0.4, 0});
    const Quatd pitch = fromRotationVector(Vector3d{0.3, 0, 0});
    const Quatd roll = fromRotationVector(Vector3d{0, 0, 0.2});
    struct Case
    {
        const char* name;
        bool gyro;
        const char* restriction;
        Quatd eye, expected; ///< roll acts first, then pitch, then yaw
    };
    for (const Case& c :
         {Case{"heading of a tilted eye", true, "Yaw only", roll * pitch * yaw, yaw},
          {"past a right angle", true, "Yaw only",
           fromRotationVector(Vector3d{0, 2 * kQuarter - 0.1, 0}),
           fromRotationVector(Vector3d{0, 2 * kQuarter - 0.1, 0})},
          {"pitch", true, "Pitch only", pitch, pitch},
          {"pitch without yaw", true, "Pitch only", yaw, {}},
          {"roll", true, "Roll only", roll, roll},
          {"roll without pitch", true, "Roll only", pitch, {}},
          {"off", false, "Yaw only", roll * pitch * yaw, roll * pitch * yaw}}) {
        place("Gyro");
        set(*tool, "Enable Gyro", c.gyro);
        ASSERT_TRUE(stage::setToolItem(*stage::findToolItem(*tool, "Gyro Restriction"),
                                       std::string(c.restriction)));
        node(*tool, "eye").setWorld(toMatrix(QTransformd{{1, 2, 3}, c.eye}), 0.0, false);
        record(0.2);
        const QTransformd gyro = pose("gyro", 0.2);
        EXPECT_NEAR(std::abs(dot(gyro.rotation, c.expected)), 1.0, 1e-12) << c.name;
        expectNear(gyro.translation, {}, 1e-12, c.name);
    }
}

TEST_F(TargetCameras, TheGyroClonesAxisByAxisInItsPivotsFrame)
{
    place("Gyro");
    // The pivot's X axis is the world's -Z.
    node(*tool, "pivot").setWorld(at({10, 0, 0}, {0, 90 * kDegree, 0}), 0.0, false);
    node(*tool, "eye").setWorld(scaled(at({14, 5, -3}), {2, 3, 4}), 0.0, false);
    node(*tool, "gyro").setWorld(scaled(at({}), {7, 7, 7}), 0.0, false);
    record(0.2);
    expectNear(pose("gyro", 0.2).translation, {10, 0, 0}, 1e-12, "nothing cloned");
    expectNear(scaleOf(world("gyro", 0.2)), {7, 7, 7}, 1e-9, "its own scale");

    session->stage().setTime(0.0);
    set(*tool, "Clone Eye's Position/Clone X-axis", 1.0);
    set(*tool, "Clone Eye's Scale/Clone Y-axis", 1.0);
    record(0.2);
    expectNear(pose("gyro", 0.2).translation, {10, 0, -3}, 1e-12, "the pivot's X");
    expectNear(scaleOf(world("gyro", 0.2)), {7, 3, 7}, 1e-9, "the eye's Y scale");
}

} // namespace
} // namespace tvw::rgs::tests
