#include "plugins/common/ground_triangle_tree.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tvw::rgs::tests {
namespace {

/// A triangle of 0.1 m that faces up.
void add(CMesh& mesh, const Vector3d& at)
{
    for (const Vector3d& corner : {Vector3d{0, 0, 0}, {0, 0, 0.1}, {0.1, 0, 0}}) {
        mesh.face.push_back(static_cast<std::int32_t>(mesh.vertex.size()));
        mesh.vertex.push_back(at + corner);
    }
}

/// `each` triangles side by side at each of the places.
CMesh clusters(std::initializer_list<Vector3d> places, int each)
{
    CMesh mesh;
    for (const Vector3d& place : places) {
        for (int i = 0; i < each; ++i)
            add(mesh, place + Vector3d{0.001 * i, 0, 0});
    }
    return mesh;
}

TEST(GroundTriangleTree, DividesWhereTheTrianglesDivide)
{
    struct Case
    {
        const char* name;
        CMesh mesh;
        std::size_t nodes;
    };
    CMesh shared = clusters({{0, 0, 0}, {10, 0, 0}}, 20);
    for (int i = 0; i < 5; ++i) {
        shared.vertex.insert(shared.vertex.end(), {{0, 0, 0.02 * i}, {0, 0, 0.1}, {10, 0, 0.05}});
        const auto n = static_cast<std::int32_t>(shared.vertex.size());
        shared.face.insert(shared.face.end(), {n - 3, n - 2, n - 1});
    }
    const Case cases[] = {
        {"none", CMesh(), 1},
        {"29 are one node", clusters({{0, 0, 0}}, 29), 1},
        {"30 along one axis", clusters({{0, 0, 0}, {10, 0, 0}}, 15), 3},
        {"along two axes", clusters({{0, 0, 0}, {10, 0, 0}, {0, 0, 10}, {10, 0, 10}}, 8), 5},
        {"along three, with empty corners left out",
         clusters({{0, 0, 0}, {10, 10, 0}, {10, 0, 10}, {0, 10, 10}}, 8), 5},
        {"a half with fewer than 3", clusters({{0, 0, 0}, {0.03, 0, 0}, {10, 0, 0}}, 1), 1},
        {"all in one place", clusters({{0, 0, 0}}, 300), 1},
        {"45, 5 of them in both halves: 50 are more than 1.1 times 45", shared, 1},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CGroundTriangleTree(c.mesh).nodeCount(), c.nodes) << c.name;
}

TEST(GroundTriangleTree, TheFirstTriangleThatIsHitAnswers)
{
    CMesh mesh;
    add(mesh, {0, 0, 0});
    add(mesh, {0, 1, 0});
    double distance = 0.0;
    Vector3d normal;
    ASSERT_TRUE(
        CGroundTriangleTree(mesh).castRay({0.02, 3, 0.02}, {0, -1, 0}, 10, distance, normal));
    EXPECT_DOUBLE_EQ(distance, 3.0);
    EXPECT_EQ(normal, (Vector3d{0, 1, 0}));
}

TEST(GroundTriangleTree, EdgesCountOnOneSide)
{
    CMesh mesh;
    add(mesh, {0, 0, 0});
    const CGroundTriangleTree tree(mesh);
    struct Case
    {
        const char* name;
        double x, z;
        bool hit;
    };
    const Case cases[] = {
        {"first corner", 0, 0, true},   {"first edge", 0, 0.05, true},
        {"third edge", 0.05, 0, true},  {"second corner", 0, 0.1, false},
        {"outside", 0.06, 0.06, false}, {"before the first edge", -1e-9, 0.05, false},
    };
    for (const Case& c : cases) {
        double distance = 0.0;
        Vector3d normal;
        EXPECT_EQ(tree.castRay({c.x, 1, c.z}, {0, -1, 0}, 10, distance, normal), c.hit) << c.name;
    }
}

TEST(GroundTriangleTree, TouchesAsSolidsDo)
{
    const Vector3d low{0, 0, 0};
    const Vector3d high{1, 1, 1};
    struct Case
    {
        const char* name;
        CGroundTriangleTree::Triangle triangle;
        bool touches;
    };
    const Case cases[] = {
        {"inside", {{0.2, 0.2, 0.2}, {0.4, 0.2, 0.2}, {0.2, 0.4, 0.2}}, true},
        {"a corner on a face", {{1, 0.5, 0.5}, {2, 0.5, 0.5}, {2, 0.6, 0.5}}, true},
        {"beside a face", {{1.001, 0.5, 0.5}, {2, 0.5, 0.5}, {2, 0.6, 0.5}}, false},
        {"an edge through the box", {{-1, 0.5, 0.5}, {2, 0.5, 0.5}, {2, 5, 0.5}}, true},
        {"around the box, no corner and no edge in it",
         {{-9, 0.5, -9}, {9, 0.5, -9}, {0, 0.5, 9}},
         true},
        {"past a corner, boxes overlap", {{1.6, 0.5, 0}, {0.5, 1.6, 0}, {1.6, 1.6, 0}}, false},
        {"past an edge, crosswise", {{2.2, 0, 0.1}, {0, 2.2, 0.1}, {2, 2, 0.9}}, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(touches(c.triangle, low, high), c.touches) << c.name;
}

} // namespace
} // namespace tvw::rgs::tests
