#include "adaptor/stage/mesh_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tvw::rgs::stage {
namespace {

struct Soup
{
    std::vector<Vector3d> vertices;
    std::vector<std::int32_t> indices;

    [[nodiscard]] MeshTree tree() const { return MeshTree(vertices, indices); }
    void add(const Vector3d& a, const Vector3d& b, const Vector3d& c)
    {
        for (const Vector3d& v : {a, b, c}) {
            indices.push_back(static_cast<std::int32_t>(vertices.size()));
            vertices.push_back(v);
        }
    }
};

class Random
{
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double number(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    Vector3d point(double size)
    {
        return {number(-size, size), number(-size, size), number(-size, size)};
    }

private:
    std::mt19937 engine_;
};

/// Every triangle in turn by Cramer's rule (Moller and Trumbore): another way than the tree's.
std::optional<double> nearestByHand(const Soup& soup, const Vector3d& origin, Vector3d direction)
{
    direction = normalise(direction);
    std::optional<double> nearest;
    for (std::size_t i = 0; i < soup.indices.size(); i += 3) {
        const Vector3d a = soup.vertices[soup.indices[i]];
        const Vector3d e1 = soup.vertices[soup.indices[i + 1]] - a;
        const Vector3d e2 = soup.vertices[soup.indices[i + 2]] - a;
        const Vector3d p = cross(direction, e2);
        const double det = dot(e1, p);
        if (std::abs(det) < 1e-14)
            continue;
        const Vector3d s = origin - a;
        const double u = dot(s, p) / det;
        const Vector3d q = cross(s, e1);
        const double v = dot(direction, q) / det;
        const double t = dot(e2, q) / det;
        if (u >= 0 && v >= 0 && u + v <= 1 && t >= 0 && (!nearest || t < *nearest))
            nearest = t;
    }
    return nearest;
}

Soup randomSoup(unsigned seed, int triangles, double size, bool withSlivers)
{
    Random random(seed);
    Soup soup;
    for (int i = 0; i < triangles; ++i) {
        const Vector3d a = random.point(10);
        soup.add(a, a + random.point(size), a + random.point(size));
        if (withSlivers && i % 5 == 0) {
            const Vector3d d = random.point(size);
            soup.add(a, a + d, a + d * 2.0); // no area
            soup.add(a, a, a);               // no length
        }
    }
    return soup;
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
        const Soup soup = randomSoup(11, c.triangles, c.size, c.slivers);
        const MeshTree tree = soup.tree();
        Random random(5);
        int hits = 0;
        for (int i = 0; i < 1500; ++i) {
            const Vector3d origin = random.point(14);
            const Vector3d direction = random.point(3);
            const std::optional<double> expected = nearestByHand(soup, origin, direction);
            const std::optional<RayHit> hit = tree.rayCast(origin, direction);
            ASSERT_EQ(hit.has_value(), expected.has_value()) << "ray " << i;
            if (!hit)
                continue;
            ++hits;
            ASSERT_NEAR(hit->distance, *expected, 1e-9) << "ray " << i;
            const std::size_t t = hit->triangle * std::size_t{3};
            const Vector3d a = soup.vertices[t];
            const Vector3d n = cross(soup.vertices[t + 1] - a, soup.vertices[t + 2] - a);
            EXPECT_NEAR(dot(hit->normal, n), length(n), 1e-9 * length(n));
        }
        EXPECT_GT(hits, c.triangles > 1 ? 50 : 0);
    }
}

/// A square of n by n cells in the plane y = 0, from 0 to n, each of two triangles that face up.
Soup floorOf(int n, double cell = 1.0)
{
    Soup soup;
    for (int z = 0; z <= n; ++z) {
        for (int x = 0; x <= n; ++x)
            soup.vertices.push_back({x * cell, 0.0, z * cell});
    }
    for (int z = 0; z < n; ++z) {
        for (int x = 0; x < n; ++x) {
            const int i = z * (n + 1) + x;
            for (int index : {i, i + n + 1, i + 1, i + 1, i + n + 1, i + n + 2})
                soup.indices.push_back(index);
        }
    }
    return soup;
}

TEST(MeshTree, NoRaySlipsThroughSharedEdgesAndVertices)
{
    constexpr double kCell = 1.0 / 3.0; // no number of the machine's
    const Soup soup = floorOf(30, kCell);
    const MeshTree tree = soup.tree();
    Random random(3);
    for (int i = 0; i < 4000; ++i) {
        // Aimed at a vertex, or at a point of an edge, inside the floor.
        const int vertex = 31 * (1 + i % 29) + 1 + (i / 29) % 29;
        const Vector3d a = soup.vertices[vertex];
        const Vector3d b = soup.vertices[vertex + 30]; // along the cells' diagonal
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
    const MeshTree tree = floorOf(8).tree();
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
    Soup soup;
    for (int i = 0; i < 40; ++i)
        soup.add({-1, 0, -1}, {1, 0, -1}, {0, 0, 1});
    const std::optional<RayHit> hit = soup.tree().rayCast({0, 1, 0}, {0, -1, 0});
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->triangle, 0U);
}

TEST(MeshTree, BadTrianglesAreLeftOut)
{
    Soup soup;
    soup.add({-1, 0, -1}, {1, 0, -1}, {0, 0, 1});
    soup.add({-1, 1, -1}, {1, std::nan(""), -1}, {0, 1, 1});
    soup.add({-1, 1, -1}, {1e200, 1, -1}, {0, 1, 1});
    const std::vector<std::int32_t> more{0, 1, 99, -1, 1, 2, 0, 1}; // out of range; not a triangle
    soup.indices.insert(soup.indices.end(), more.begin(), more.end());
    const MeshTree tree = soup.tree();
    EXPECT_EQ(tree.triangleCount(), 1U);
    EXPECT_TRUE(tree.rayCast({0, 1, 0}, {0, -1, 0}));
    EXPECT_FALSE(MeshTree().rayCast({0, 1, 0}, {0, -1, 0}));
    EXPECT_FALSE(Soup().tree().rayCast({0, 1, 0}, {0, -1, 0}));
}

} // namespace
} // namespace tvw::rgs::stage
