#include "adaptor/stage/ray_fan.h"
#include "tests/adaptor/stage/counting_new.h"
#include "tests/adaptor/stage/fake_tool.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tvw::rgs::stage {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kFar = 1e6;

struct Fan
{
    std::vector<Vector3d> origins;
    std::vector<Vector3d> directions;

    void add(const Vector3d& origin, const Vector3d& direction)
    {
        origins.push_back(origin);
        directions.push_back(direction);
    }
};

MeshTree treeOf(const CMesh& mesh)
{
    return MeshTree(mesh.vertex, mesh.face);
}

MeshTree hills(int cells, double cell)
{
    return treeOf(tests::hills(cells, cell));
}

/// The rays of a wheel of 0.25 m round a centre: three rows of 19, two degrees apart.
Fan wheel(const Vector3d& centre)
{
    Fan fan;
    for (int side = -1; side <= 1; ++side) {
        for (int k = -9; k <= 9; ++k) {
            const double angle = k * 2.0 * 0.017453292519943295;
            fan.add(centre + Vector3d{0.1 * side, 0, 0}, {0, -std::cos(angle), std::sin(angle)});
        }
    }
    return fan;
}

/// Each ray as a single one gives it, to the bit, with and without AVX2.
void expectSingleRays(const MeshTree& tree, const Fan& fan, double maxDistance)
{
    const std::size_t n = fan.origins.size();
    for (const auto cast : {castRayFan, castRayFanBaseline}) {
        std::vector<double> distances(n);
        std::vector<Vector3d> normals(n);
        cast(tree, {fan.origins, fan.directions, maxDistance, distances, normals});
        for (std::size_t i = 0; i < n; ++i) {
            const auto hit = tree.rayCast(fan.origins[i], fan.directions[i]);
            if (!hit || hit->distance > maxDistance) {
                ASSERT_LT(distances[i], 0.0) << "ray " << i;
                continue;
            }
            ASSERT_EQ(distances[i], hit->distance) << "ray " << i;
            ASSERT_EQ(normals[i], hit->normal) << "ray " << i;
        }
    }
}

TEST(RayFan, AnswersWhatSingleRaysAnswer)
{
    struct Case
    {
        const char* name;
        MeshTree tree;
        double height, reach, maxDistance;
    };
    const Case cases[] = {
        {"few triangles under the wheel", hills(40, 0.5), 2.0, 9.0, kFar},
        {"hundreds under the wheel", hills(300, 0.02), 2.0, 2.5, kFar},
        {"ground out of reach for some", hills(40, 0.5), 1.5, 9.0, 1.2},
        {"over the edge", hills(8, 0.5), 2.0, 2.3, kFar},
        {"from below", hills(40, 0.5), -3.0, 9.0, kFar},
        {"no limit at all", hills(40, 0.5), 2.0, 9.0, std::numeric_limits<double>::infinity()},
        {"quads beyond the range of float", hills(40, 1e40), 2.0, 9.0, kFar},
        {"no triangles", MeshTree(), 2.0, 1.0, kFar},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        tests::Random random(3);
        for (int i = 0; i < 60; ++i) {
            const double x = random.number(-c.reach, c.reach);
            const double z = random.number(-c.reach, c.reach);
            expectSingleRays(c.tree, wheel({x, c.height, z}), c.maxDistance);
        }
    }
}

TEST(RayFan, RaysThatHaveNothingInCommonAreAnsweredToo)
{
    const MeshTree tree = treeOf(tests::soup(7, 400, 8.0));
    tests::Random random(11);
    Fan fan;
    for (int i = 0; i < 597; ++i) // as many as the longest fan of a wheel has
        fan.add(random.point(12.0), normalise(random.point(1.0)));
    expectSingleRays(tree, fan, kFar);
}

TEST(RayFan, RaysThroughVerticesAndEdgesDoNotSlipThrough)
{
    const MeshTree tree = hills(40, 0.5);
    Fan fan;
    for (int i = -18; i <= 18; ++i)
        fan.add({0.25 * i, 5.0, 0.25 * i}, {0, -1, 0});
    expectSingleRays(tree, fan, kFar);
}

TEST(RayFan, RaysThatAreNoneHitNothingAndHarmNoOther)
{
    const MeshTree tree = hills(40, 0.5);
    Fan fan;
    fan.add({0, 2, 0}, {0, 0, 0});
    fan.add({0, 2, 0}, {0, -1, 0});
    fan.add({kNoNumber, 2, 0}, {0, -1, 0});
    fan.add({0, 2, 0}, {0, kNoNumber, 0});
    fan.add({0, 1e101, 0}, {0, -1, 0});
    fan.add({0.3, 2, 0}, {0, -2, 0});
    expectSingleRays(tree, fan, kFar);
    expectSingleRays(tree, fan, -1.0);
}

class RayFanSeam : public testing::Test, protected ToolStage
{
};

TEST_F(RayFanSeam, AMeshAnswersAFanInOneCallWithoutAllocating)
{
    const CMesh mesh = tests::square(1.0);
    FakeTool tool{"Car"};
    auto& ground = *stage.createMeshNode(&tool, "mesh", nullptr, &mesh, nodekind::shape);
    CSnapshot_Mesh* const snapshot = ground.getMeshSnapshot(0);
    ASSERT_TRUE(snapshot->isSupported(code::castRayFan));
    const Fan fan = wheel({0, 0.25, 0});
    std::vector<double> distances(fan.origins.size());
    std::vector<Vector3d> normals(fan.origins.size());
    MeshRayFan call{fan.origins, fan.directions, kFar, distances, normals};
    EXPECT_EQ(snapshot->call(code::castRayFan, &call), 1);
    const std::size_t before = test::allocationCount();
    EXPECT_EQ(snapshot->call(code::castRayFan, &call), 1);
    EXPECT_EQ(test::allocationCount(), before);
    EXPECT_DOUBLE_EQ(distances[9], 0.25) << "straight down in the first row";
    EXPECT_NEAR(distances[18], 0.25 / std::cos(18 * 0.017453292519943295), 1e-15);

    MeshRayFan tooShort = call;
    tooShort.normals = tooShort.normals.first(3);
    EXPECT_EQ(snapshot->call(code::castRayFan, &tooShort), 0);
    EXPECT_EQ(snapshot->call(code::castRayFan, nullptr), 0);
    EXPECT_EQ(snapshot->call(code::isSameNode, &call), 0);
    ground.releaseMeshSnapshot(snapshot);
}

} // namespace
} // namespace tvw::rgs::stage
