#include "tests/plugins/camera_fixture.h"

namespace tvw::rgs::tests {
namespace {

class ZoomCameras : public CameraTest
{
protected:
    stage::StageNode& camera()
    {
        return node(*tool, tool->name() == "ZoomAndFocusCam_01" ? "Camera" : "AutoZoomCam");
    }
    double fov(double time) { return camera().fov(time); }

    void placeZoom(double fps = 25.0)
    {
        place("ZoomAndFocusCam", fps);
        set(*tool, "Maximum FOV", 60.0);
        set(*tool, "Minimum FOV", 30.0);
    }
};

TEST_F(ZoomCameras, TheTargetKeepsItsSize)
{
    struct Case
    {
        const char* name;
        double distance; ///< of the target at the end; 5 at the start, seen at 45 degrees
        double fov;      ///< [degrees]: 2 atan(0.2071068 * 10 / distance)
    };
    for (const Case& c : {Case{"stands", 5.0, 45.0},
                          {"goes away", 10.0, 23.4018},
                          {"comes near", 2.5, 79.2785},
                          {"is at the camera", 0.0, 179.99}}) {
        place("AutoZoomCam");
        key("TargetMesh", 0.0, at({}));
        key("TargetMesh", 2.0, at({0, 0, 5.0 - c.distance}));
        record(2.0);
        EXPECT_NEAR(fov(2.0), c.fov, 1e-3) << c.name;
        EXPECT_NEAR(camera().targetDistance(2.0), c.distance, 1e-9) << c.name;
        expectNear(pose("AutoZoomCam", 2.0).translation, {0, 0, 5}, 1e-12, c.name);
        EXPECT_EQ(camera().poseKeyTimes().back(), 2.0) << "no key behind the take";
    }
}

TEST_F(ZoomCameras, DriveByAShareOfTheDistance)
{
    struct Case
    {
        double fps, input, ratio; ///< of the distances of two frames
        double scale = 1.0;       ///< of the camera's parent
    };
    for (const Case& c : {Case{25, 1, 0.98},
                          {25, -1, 1.02},
                          {25, 1, 0.98, 60.0},
                          {50, 1, std::sqrt(0.98)},
                          {10, 1, std::pow(0.98, 2.5)}}) {
        place("AutoZoomCam", c.fps);
        camera().setParent(
            &session->stage().addEmpty("Truck", scaled(at({}), Vector3d{1, 1, 1} * c.scale)));
        hold("Forw/Backw Transl", c.input);
        record(3.0);
        const double before = pose("AutoZoomCam", 3.0 - 1 / c.fps).translation.z;
        EXPECT_NEAR(pose("AutoZoomCam", 3.0).translation.z / before, c.ratio, 1e-5) << c.fps;
        EXPECT_NEAR(camera().targetDistance(3.0), pose("AutoZoomCam", 3.0).translation.z, 1e-9);
    }
}

TEST_F(ZoomCameras, ZoomStopsAtItsLimitsAndStartsWhereTheLensIs)
{
    struct Case
    {
        const char* name;
        double zoom;
        bool integrate;
        double start, soon, end; ///< at 0.04 s the lens has moved no further than soon
    };
    for (const Case& c : {Case{"in", 1, true, 50, 48, 30},
                          {"out", -1, true, 50, 52, 60},
                          {"rest", 0, true, 50, 50.001, 50},
                          {"from beyond the limits", 0, true, 90, 60, 60},
                          {"direct, in", 1, false, 50, 48, 30},
                          {"direct, half way", 0.5, false, 50, 48, 45},
                          {"direct, pulled back", -1, false, 50, 52, 60},
                          {"direct, rest", 0, false, 50, 52, 60}}) {
        placeZoom();
        set(*tool, "Zoom Integrate", c.integrate);
        camera().setFov(c.start, 0.0, false);
        hold("Zoom", c.zoom);
        record(8.0);
        EXPECT_NEAR(fov(0.0), c.start, 1e-9) << c.name;
        if (c.soon < c.start)
            EXPECT_GE(fov(0.04), c.soon) << c.name;
        else
            EXPECT_LE(fov(0.04), c.soon) << c.name;
        EXPECT_NEAR(fov(8.0), c.end, 1e-6) << c.name;
        EXPECT_NEAR(get(*tool, "Current FOV"), c.end, 1e-6) << c.name;
    }
}

TEST_F(ZoomCameras, ZoomTurnsAtOnceAtItsLimit)
{
    placeZoom();
    set(*tool, "Zoom Response Factor", 0.0);
    record(6.0, [&](double t) { hold("Zoom", t < 4.0 ? 1.0 : -1.0); });
    EXPECT_NEAR(fov(3.96), 30.0, 1e-9);
    // 30^(1/5) grows by 0.3 x 0.04 s in a frame: 30 + 5 x 30^(4/5) x 0.012.
    EXPECT_NEAR(fov(4.0), 30.0 + 0.912, 0.02) << "nothing is wound up";
}

TEST_F(ZoomCameras, AChangeOfScaleDoesNotMoveTheLens)
{
    placeZoom();
    record(2.0, [&](double t) {
        if (t > 1.0 - 1e-9)
            set(*tool, "Integration Speed Exponent", 3.0);
        if (t > 1.5 - 1e-9)
            set(*tool, "Zoom Speed", 0.0);
    });
    for (const double t : {0.96, 1.0, 1.04, 2.0})
        EXPECT_NEAR(fov(t), 50.0, 1e-9) << t;
}

TEST_F(ZoomCameras, FocusSlidesBetweenItsTargets)
{
    struct Case
    {
        const char* name;
        double input;
        Vector3d second; ///< the first stands at (0, 0, -3)
        bool spherical;
        double distance;
    };
    for (const Case& c : {Case{"the first", 0, {0, 0, -8}, false, 3},
                          {"the second", 1, {0, 0, -8}, false, 8},
                          {"a quarter", 0.25, {0, 0, -8}, false, 4.25},
                          {"on a plane", 1, {6, 0, -8}, false, 8},
                          {"on a sphere", 1, {6, 0, -8}, true, 10},
                          {"behind the camera", 1, {0, 0, 4}, false, 0},
                          {"behind, on a sphere", 1, {0, 0, 4}, true, 4}}) {
        placeZoom();
        set(*tool, "Focal Position Response Factor", 0.0);
        set(*tool, "Use spherical focal surface", c.spherical);
        node(*tool, "FocalTarget_2").setWorld(at(c.second), 0.0, false);
        hold("Focal Position", c.input);
        record(0.2);
        EXPECT_NEAR(camera().targetDistance(0.2), c.distance, 1e-9) << c.name;
    }
}

TEST_F(ZoomCameras, ATapHoldsTheFocusAndTheNextOneLetsItGo)
{
    placeZoom();
    set(*tool, "Focal Position Response Factor", 0.0);
    set(*tool, "Focal Position Keep Binary State", 1.0);
    set(*tool, "Focal Position Speed", 0.0);
    record(2.0,
           [&](double t) { hold("Focal Position", (t > 0.5 && t < 0.7) || (t > 1.3 && t < 1.4)); });
    for (const auto& [time, distance] :
         {std::pair{0.4, 3.0}, {0.6, 8.0}, {1.2, 8.0}, {1.36, 3.0}, {2.0, 3.0}})
        EXPECT_NEAR(camera().targetDistance(time), distance, 1e-9) << time;
}

TEST_F(ZoomCameras, TheFocusCameraIsTheUsersToMove)
{
    placeZoom();
    EXPECT_FALSE(camera().state().visible) << "hidden at first, as its item says";
    key("Camera", 0.0, at({}));
    key("Camera", 2.0, at({0, 0, 2}));
    record(3.0);
    session->stage().setTime(0.0);
    record(1.0);
    expectNear(pose("Camera", 2.0).translation, {0, 0, 2}, 1e-12, "its keys stand");
    EXPECT_EQ(camera().fovKeys().lastTime(), stage::toFlicks(1.0))
        << "those of its lens are the tool's";
    EXPECT_NEAR(camera().targetDistance(1.0), 4.0, 1e-9);
}

} // namespace
} // namespace tvw::rgs::tests
