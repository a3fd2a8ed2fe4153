#include "adaptor/stage/mesh_tree.h"
#include "tests/support/ground_meshes.h"

#include <gtest/gtest.h>

namespace tvw::rgs::stage {
namespace {

using tests::add;
using tests::Random;

MeshTree treeOf(const CMesh& mesh)
{
    return MeshTree(mesh.vertex, mesh.face);
}

TEST(MeshTree, AgreesWithEveryTriangleInTurn)
{
    struct Case
    {
        const char* name;
        int triangles;
        double size;
        bool slivers;
    };
    constexpr Case kCases[] = {{"one", 1, 20, false},
                               {"fewer than a leaf holds", 3, 10, false},
                               {"small and many", 3000, 0.5, false},
                               {"large and overlapping", 200, 15, false},
                               {"with triangles of no area", 300, 4, true}};
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        const CMesh mesh = tests::soup(11, c.triangles, c.size, c.slivers);
        const MeshTree tree = treeOf(mesh);
        Random random(5);
        int hits = 0;
        for (int i = 0; i < 1500; ++i) {
            const Vector3d origin = random.point(14);
            const Vector3d direction = random.point(3);
            const auto expected = tests::nearestByHand(mesh, origin, direction);
            const std::optional<RayHit> hit = tree.rayCast(origin, direction);
            ASSERT_EQ(hit.has_value(), expected.has_value()) << "ray " << i;
            if (!hit)
                continue;
            ++hits;
            ASSERT_NEAR(hit->distance, expected->distance, 1e-9) << "ray " << i;
            EXPECT_NEAR(dot(hit->normal, expected->normal), 1.0, 1e-9);
        }
        EXPECT_GT(hits, c.triangles > 1 ? 50 : 0);
    }
}

/// A square of n by n cells in the plane y = 0, from 0 to n, each of two triangles that face up.
CMesh floorOf(int n, double cell = 1.0)
{
    CMesh mesh;
    for (int z = 0; z <= n; ++z) {
        for (int x = 0; x <= n; ++x)
            mesh.vertex.push_back({x * cell, 0.0, z * cell});
    }
    for (int z = 0; z < n; ++z) {
        for (int x = 0; x < n; ++x) {
            const int i = z * (n + 1) + x;
            for (int index : {i, i + n + 1, i + 1, i + 1, i + n + 1, i + n + 2})
                mesh.face.push_back(index);
        }
    }
    return mesh;
}

TEST(MeshTree, NoRaySlipsThroughSharedEdgesAndVertices)
{
    constexpr double kCell = 1.0 / 3.0; // no number of the machine's
    const CMesh mesh = floorOf(30, kCell);
    const MeshTree tree = treeOf(mesh);
    Random random(3);
    for (int i = 0; i < 4000; ++i) {
        // Aimed at a vertex, or at a point of an edge, inside the floor.
        const int vertex = 31 * (1 + i % 29) + 1 + (i / 29) % 29;
        const Vector3d a = mesh.vertex[vertex];
        const Vector3d b = mesh.vertex[vertex + 30]; // along the cells' diagonal
        const Vector3d aim = i % 2 ? a : a + (b - a) * random.number(0, 1);
        const Vector3d origin = aim + Vector3d{random.number(-3, 3), 5, random.number(-3, 3)};
        const std::optional<RayHit> hit = tree.rayCast(origin, aim - origin);
        ASSERT_TRUE(hit) << "ray " << i;
        EXPECT_NEAR(hit->distance, length(aim - origin), 1e-12);
        EXPECT_NEAR(hit->normal.y, 1.0, 1e-15);
    }
}

TEST(MeshTree, RaysAlongTheAxes)
{
    const MeshTree tree = treeOf(floorOf(8));
    struct Case
    {
        const char* name;
        Vector3d origin, direction;
        double distance; ///< negative: no hit
    };
    const Case kCases[] = {
        {"down", {3.25, 2, 3.5}, {0, -1, 0}, 2},
        {"down on a vertex", {4, 2, 4}, {0, -1, 0}, 2},
        {"down on the rim", {0, 2, 5}, {0, -1, 0}, 2},
        {"down on the far rim", {8, 2, 5}, {0, -1, 0}, 2},
        {"down beside it", {-0.001, 2, 5}, {0, -1, 0}, -1},
        {"up from below", {3.25, -7, 3.5}, {0, 2, 0}, 7},
        {"away", {3.25, 2, 3.5}, {0, 1, 0}, -1},
        {"from the surface", {3.25, 0, 3.5}, {0, -1, 0}, 0},
        {"the length of the direction is of no account", {3, 3, 2.5}, {0, -30, 40}, 5},
        {"within the plane", {-1, 0, 3.5}, {1, 0, 0}, -1},
        {"beside the plane", {-1, 1, 3.5}, {1, 0, 0}, -1},
        {"no direction", {3, 2, 3}, {0, 0, 0}, -1},
        {"no number", {3, 2, 3}, {0, std::nan(""), 0}, -1},
        {"from nowhere", {3, std::nan(""), 3}, {0, -1, 0}, -1},
    };
    for (const Case& c : kCases) {
        const std::optional<RayHit> hit = tree.rayCast(c.origin, c.direction);
        EXPECT_EQ(hit.has_value(), c.distance >= 0) << c.name;
        if (hit) {
            EXPECT_NEAR(hit->distance, c.distance, 1e-14) << c.name;
        }
    }
}

TEST(MeshTree, OfHitsAtOneDistanceTheFirstTriangleCounts)
{
    CMesh mesh;
    for (int i = 0; i < 40; ++i)
        add(mesh, {-1, 0, -1}, {1, 0, -1}, {0, 0, 1});
    const std::optional<RayHit> hit = treeOf(mesh).rayCast({0, 1, 0}, {0, -1, 0});
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->triangle, 0U);
}

TEST(MeshTree, BadTrianglesAreLeftOut)
{
    CMesh mesh;
    add(mesh, {-1, 0, -1}, {1, 0, -1}, {0, 0, 1});
    add(mesh, {-1, 1, -1}, {1, std::nan(""), -1}, {0, 1, 1});
    add(mesh, {-1, 1, -1}, {1e200, 1, -1}, {0, 1, 1});
    const std::vector<std::int32_t> more{0, 1, 99, -1, 1, 2, 0, 1}; // out of range; not a triangle
    mesh.face.insert(mesh.face.end(), more.begin(), more.end());
    const MeshTree tree = treeOf(mesh);
    EXPECT_EQ(tree.triangleCount(), 1U);
    EXPECT_TRUE(tree.rayCast({0, 1, 0}, {0, -1, 0}));
    EXPECT_FALSE(MeshTree().rayCast({0, 1, 0}, {0, -1, 0}));
    EXPECT_FALSE(treeOf(CMesh()).rayCast({0, 1, 0}, {0, -1, 0}));
}

} // namespace
} // namespace tvw::rgs::stage
