// Where the eye looks: angles of view, rays, and the eye that a hand moves.
#include "view/orbit_camera.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tvw::rgs::view {
namespace {

void expectNear(const Vector3d& found, const Vector3d& wanted, double within = 1e-9)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(found[i], wanted[i], within) << "axis " << i;
}

TEST(Lens, AnAngleOfTheWidthOrTheDiagonalCoversThatMuch)
{
    // 90 degrees: half of the side is as long as the way to it, so the height's half angle has the
    // tangent height / side.
    const auto heightOf = [](stage::ViewAngle angle) {
        return verticalFov({{}, 90.0, angle}, 2.0);
    };
    const double degree = std::atan(1.0) / 45.0;
    EXPECT_NEAR(heightOf(stage::ViewAngle::Vertical), 90.0, 1e-9);
    EXPECT_NEAR(heightOf(stage::ViewAngle::Horizontal), 2 * std::atan(1 / 2.0) / degree, 1e-9);
    EXPECT_NEAR(heightOf(stage::ViewAngle::Diagonal), 2 * std::atan(1 / std::sqrt(5.0)) / degree,
                1e-9);
}

TEST(Lens, ARayGoesThroughTheCornerOfThePicture)
{
    Lens lens{{}, 90.0, stage::ViewAngle::Vertical};
    expectNear(rayThrough(lens, 2.0, 0.0, 0.0), {0.0, 0.0, -1.0});
    expectNear(rayThrough(lens, 2.0, 1.0, -1.0), normalise(Vector3d{2.0, -1.0, -1.0}));
}

TEST(OrbitCamera, FramesABoxWhole)
{
    OrbitCamera camera;
    Box box;
    box.add({10.0, -1.0, 5.0});
    box.add({14.0, 1.0, 9.0});
    camera.frame(box);
    expectNear(camera.target(), {12.0, 0.0, 7.0});
    const Lens lens = camera.lens();
    const Vector3d eye = translationOf(lens.world);
    const double half = lens.fovDegrees / 2 * std::atan(1.0) / 45.0;
    for (int corner = 0; corner < 8; ++corner) {
        const Vector3d at{corner & 1 ? 10.0 : 14.0, corner & 2 ? -1.0 : 1.0,
                          corner & 4 ? 5.0 : 9.0};
        const double off = std::acos(dot(normalise(at - eye), lens.world.axis(2) * -1.0));
        EXPECT_LT(off, half) << "corner " << corner;
    }
    camera.frame(Box());
    expectNear(camera.target(), {12.0, 0.0, 7.0});
}

TEST(OrbitCamera, GoesOnFromTheCameraThatItTakesOver)
{
    Matrix4 world; // looks along -X from (3, 2, 1)
    world.setAxis(0, {0.0, 0.0, -1.0});
    world.setAxis(2, {1.0, 0.0, 0.0});
    setTranslation(world, {3.0, 2.0, 1.0});
    OrbitCamera camera;
    camera.takeOver({world, 30.0, stage::ViewAngle::Vertical}, 5.0);
    expectNear(camera.target(), {-2.0, 2.0, 1.0});
    expectNear(translationOf(camera.lens().world), {3.0, 2.0, 1.0});

    camera.orbit(-0.5, 0.0); // a quarter of a turn round the target
    expectNear(translationOf(camera.lens().world), {-2.0, 2.0, -4.0});
    camera.orbit(0.0, 10.0);
    EXPECT_GT(camera.lens().world.axis(1).y, 0.0) << "never over the pole";
    for (int i = 0; i < 1000; ++i)
        camera.zoom(1.0);
    EXPECT_GT(camera.distance(), 0.0);
}

TEST(OrbitCamera, WhatIsDraggedStaysUnderTheHand)
{
    OrbitCamera camera;
    const Lens before = camera.lens();
    const Vector3d held = camera.target();
    camera.pan(0.25, 0.1);
    // A quarter of the picture's height to the right, at the target's distance.
    const Lens after = camera.lens();
    const Vector3d way = held - translationOf(after.world);
    const double tangent = std::tan(before.fovDegrees / 2 * std::atan(1.0) / 45.0);
    const double ahead = -dot(way, after.world.axis(2));
    EXPECT_NEAR(dot(way, after.world.axis(0)) / ahead / (2 * tangent), 0.25, 1e-9);
    EXPECT_NEAR(dot(way, after.world.axis(1)) / ahead / (2 * tangent), 0.1, 1e-9);
}

} // namespace
} // namespace tvw::rgs::view
