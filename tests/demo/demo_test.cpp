// The scene that a new user meets: sound ground, a car that stands still on it and can be driven.
#include "core/instance.h"
#include "demo/demo_scene.h"
#include "tests/runs/run_fixture.h"

#include <cmath>

namespace tvw::rgs::demo {
namespace {

TEST(Course, IsAClosedRoadOfSoundMeshes)
{
    const Course course;
    for (const CMesh& mesh :
         {course.terrain(), course.road(), course.kerbs(), course.ramps(), course.posts()}) {
        EXPECT_TRUE(mesh.isSound());
        EXPECT_GT(mesh.numFaces(), 0U);
    }
    const Matrix4 start = course.poseAt(0.0);
    const Matrix4 end = course.poseAt(1.0 - 1e-9);
    EXPECT_LT(length(translationOf(end) - translationOf(start)), 0.1);
    EXPECT_NEAR(course.nearest(translationOf(course.poseAt(0.3))), 0.3, 0.01);
}

class DemoTest : public tests::RunTest
{
protected:
    void SetUp() override
    {
        open();
        const Status built = build(*session);
        ASSERT_TRUE(built) << built.reason();
    }
    Vector3d carAt(double time)
    {
        return translationOf(session->stage().find("Car_CarBodyMesh")->world(time));
    }
};

TEST_F(DemoTest, TheCarStandsOnTheRoadWhereItIsPut)
{
    record(2.0);
    EXPECT_LT(length(carAt(2.0) - carAt(0.0)), 0.05) << "it settles, and neither rolls nor falls";
}

TEST_F(DemoTest, TheDriverStaysOnTheRoad)
{
    ASSERT_TRUE(driveAlong(*session));
    const Course course;
    double reached = 0.0;
    double before = course.nearest(carAt(0.0));
    for (double time = 0.0; time <= kTakeSeconds; time += 0.2) {
        const double u = course.nearest(carAt(time));
        reached += std::remainder(u - before, 1.0);
        before = u;
        const Vector3d off = carAt(time) - translationOf(course.poseAt(u));
        EXPECT_LT(std::hypot(off.x, off.z), 5.0) << "left the road at " << time << " s";
    }
    EXPECT_GT(std::abs(reached), 0.4) << "of the loop";
}

} // namespace
} // namespace tvw::rgs::demo
