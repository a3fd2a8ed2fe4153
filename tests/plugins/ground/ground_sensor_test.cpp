#include "tests/adaptor/stage/counting_new.h"
#include "tests/plugins/ground/ground_scene.h"

#include <limits>

namespace tvw::rgs::tests {
namespace {

using Problem = GroundSensor::Problem;

constexpr Vector3d kUp{0, 1, 0};

TEST_F(GroundScene, EveryWayAgreesWithEveryTriangleInTurn)
{
    const CMesh mesh = hills(30, 0.7);
    Matrix4 place = scaled(rotationMatrix(25.0, 0, 1, 0), {1.5, 1.5, 1.5});
    setTranslation(place, {3.0, -2.0, 5.0});
    const CMesh world = transformed(mesh, place);
    addParent(mesh, place);
    for (const Way way : kWays) {
        SCOPED_TRACE(nameOf(way));
        ASSERT_EQ(begin(way), Problem::None);
        ASSERT_EQ(sensor_.surfaceCount(), 1U);
        // Bullet widens a triangle by 1e-4 of its size, which shows where two meet at an angle.
        const double tolerance = way == Way::World || way == Way::WorldOfCopy ? 1e-4 : 1e-9;
        Random random(5);
        int hits = 0;
        for (int i = 0; i < 40; ++i) {
            std::vector<GroundRay> rays;
            const Vector3d origin{random.number(-13, 19), 2.0, random.number(-11, 21)};
            for (int k = -9; k <= 9; ++k)
                rays.push_back({origin, {std::sin(0.035 * k), -std::cos(0.035 * k), 0.0}});
            std::vector<GroundHit> out(rays.size());
            sensor_.castFan(0, rays, kFar, out);
            for (std::size_t k = 0; k < rays.size(); ++k) {
                const auto expected = nearestByHand(world, rays[k].origin, rays[k].direction);
                ASSERT_EQ(out[k].hit, expected.has_value()) << "ray " << i << ", " << k;
                if (!expected)
                    continue;
                ++hits;
                ASSERT_NEAR(out[k].distance, expected->distance, tolerance * expected->distance);
                ASSERT_GT(dot(out[k].normal, expected->normal),
                          way == Way::World ? 0.99 : 1 - 1e-9);
            }
        }
        EXPECT_GT(hits, 300);
    }
}

TEST_F(GroundScene, WithoutAnySurfaceThereIsThePlane)
{
    ASSERT_EQ(begin(Way::Host), Problem::None);
    EXPECT_TRUE(sensor_.isPlane());
    EXPECT_EQ(sensor_.surfaceCount(), 0U);
    EXPECT_FALSE(down(0, 0).hit) << "no ray is cast at the plane";

    // In the world of Bullet it is a square, out to 1000 lengths of the body.
    ASSERT_EQ(begin(Way::World), Problem::None);
    EXPECT_FALSE(sensor_.isPlane());
    EXPECT_EQ(sensor_.surfaceCount(), 1U);
    for (const double x : {0.0, 12.25, 3999.0, -3999.0}) {
        EXPECT_NEAR(down(x, 2.0, 2.5).distance, 2.5, 1e-9) << x;
        EXPECT_EQ(down(x, 2.0, 2.5).normal, kUp) << x;
    }
    EXPECT_FALSE(down(4001.0, 0.0).hit);

    const GroundSettings settings{.useStaticMesh = false};
    sensor_.beginRun(*tool_, nullptr, settings, 0.0, kBodyLength, nullptr);
    sensor_.beginTick(0.0);
    EXPECT_TRUE(sensor_.isPlane()) << "no gravity node";
    sensor_.endRun();
    EXPECT_TRUE(sensor_.isPlane());
}

TEST_F(GroundScene, SurfacesAreTheParentAndThenTheChildrenInTheirOrder)
{
    addParent(square(), at(0, 1, 0));
    addChild(square(), at(0, 2, 0));
    addChild(square(), at(0, 3, 0));
    begin(Way::Host);
    ASSERT_EQ(sensor_.surfaceCount(), 3U);
    EXPECT_NEAR(down(0, 1, 10, 0).distance, 9.0, 1e-12);
    EXPECT_NEAR(down(0, 1, 10, 1).distance, 8.0, 1e-12);
    EXPECT_NEAR(down(0, 1, 10, 2).distance, 7.0, 1e-12);
    EXPECT_FALSE(down(0, 1, 10, 3).hit) << "there is no such surface";

    begin(Way::World);
    ASSERT_EQ(sensor_.surfaceCount(), 1U);
    EXPECT_NEAR(down(0, 1).distance, 7.0, 1e-9) << "the nearest of all";
    begin(Way::Tree);
    ASSERT_EQ(sensor_.surfaceCount(), 1U);
    EXPECT_NEAR(down(0, 1).distance, 9.0, 1e-12) << "a copy of the first";
}

TEST_F(GroundScene, TheToolsOwnBodyIsNoGround)
{
    CNode* const body = tool_->createHelperNode("CarBody", nullptr, nodekind::shape);
    gravityNode().setParent(&static_cast<stage::NodeHandle*>(body)->node());
    ASSERT_EQ(begin(Way::Host, body), Problem::None);
    EXPECT_TRUE(sensor_.isPlane());
    ASSERT_EQ(begin(Way::World, body), Problem::None);
    EXPECT_NEAR(down(1, 1).distance, 10.0, 1e-9) << "the built-in square";
    addChild(square(), at(0, 4, 0));
    begin(Way::Host, body);
    ASSERT_EQ(sensor_.surfaceCount(), 1U);
    EXPECT_NEAR(down(1, 1).distance, 6.0, 1e-12);
}

TEST_F(GroundScene, ASurfaceThatIsNoMeshEndsFastRays)
{
    stage::StageNode& helper = session->stage().addEmpty("pivot");
    gravityNode().setParent(&helper);
    EXPECT_EQ(begin(Way::World), Problem::UnsupportedSurface);
    ASSERT_EQ(sensor_.surfaceCount(), 1U) << "the host's rays take over";
    EXPECT_FALSE(sensor_.isPlane());
    EXPECT_FALSE(down(0, 1).hit);

    addChild(square(), at(0, 4, 0));
    EXPECT_EQ(begin(Way::World), Problem::UnsupportedSurface);
    EXPECT_FALSE(down(0, 1, 10, 0).hit);
    EXPECT_NEAR(down(0, 1, 10, 1).distance, 6.0, 1e-12);
}

TEST_F(GroundScene, OnlyTheHostFollowsASurfaceThatMoves)
{
    stage::StageNode& surface = addParent(square());
    surface.setLocal(at(0, 0, 0), 0.0, true);
    surface.setLocal(at(0, 2, 0), 2.0, true);
    for (const Way way : kWays) {
        SCOPED_TRACE(nameOf(way));
        begin(way);
        EXPECT_NEAR(down(0, 1).distance, 10.0, 1e-9);
        tick(2.0);
        EXPECT_NEAR(down(0, 1).distance, way == Way::Host ? 8.0 : 10.0, 1e-9);
    }
}

TEST_F(GroundScene, TheNextRunSeesAChangedSurface)
{
    stage::StageNode& surface = addParent(square());
    begin(Way::World);
    EXPECT_NEAR(down(1, 1).distance, 10.0, 1e-9);
    CMesh raised = square();
    for (Vector3d& corner : raised.vertex)
        corner.y = 3.0;
    surface.setMesh(raised);
    begin(Way::World);
    EXPECT_NEAR(down(1, 1).distance, 7.0, 1e-9) << "other corners, the same triangles";
    surface.setWorld(scaled(Matrix4(), {2, 2, 2}), 0.0, false);
    begin(Way::World);
    EXPECT_NEAR(down(8, 1).distance, 4.0, 1e-9) << "the same mesh, another scale";
}

TEST_F(GroundScene, SurfacesComeAndGoInARun)
{
    stage::StageNode& surface = addParent(square(), at(0, 1, 0));
    stage::StageNode& child = addChild(square(), at(0, 3, 0));
    GroundSettings stored{.useStaticMesh = false};
    ASSERT_EQ(GroundSensor::storeMesh(*tool_, gravity_, 0.0, stored), "");

    begin(Way::Host);
    session->stage().remove(child);
    EXPECT_FALSE(down(0, 1, 10, 2).hit);
    tick(0.04);
    ASSERT_EQ(sensor_.surfaceCount(), 1U);
    EXPECT_NEAR(down(0, 1).distance, 9.0, 1e-12);
    session->stage().remove(surface);
    tick(0.08);
    EXPECT_TRUE(sensor_.isPlane());
    addChild(square(), at(0, 5, 0));
    tick(0.12);
    EXPECT_NEAR(down(0, 1).distance, 5.0, 1e-12);

    for (const bool fast : {false, true}) {
        stored.useStaticMesh = fast;
        begin(stored);
        EXPECT_NEAR(down(0, 1).distance, 9.0, 1e-9) << "the copy outlives its surface";
    }
    session->stage().remove(gravityNode());
    begin(Way::Host);
    EXPECT_TRUE(sensor_.isPlane());
}

TEST_F(GroundScene, ScaledAndMirroredSurfaces)
{
    Matrix4 sheared;
    sheared.setAxis(1, {0.5, 2.0, 0.0});
    struct Case
    {
        const char* name;
        Matrix4 place;
        double distance; ///< from 10 m above (1, 1)
        Vector3d normal; ///< of the copy and of the host, by the order of the corners
    };
    // The square lifted to y = 1 in its own space.
    const Case cases[] = {
        {"larger", scaled({}, {2, 3, 4}), 7.0, kUp},
        {"smaller", scaled({}, {0.5, 0.25, 0.5}), 9.75, kUp},
        {"mirrored across", scaled({}, {-1, 1, 1}), 9.0, kUp},
        {"upside down", scaled({}, {1, -2, 1}), 12.0, {0, -1, 0}},
        {"sheared", sheared, 8.0, normalise(Vector3d{0.5, 2.0, 0.0})},
    };
    CMesh mesh = transformed(square(), at(0, 1, 0));
    for (const Case& c : cases) {
        stage::StageNode& surface = addParent(mesh, c.place);
        for (const Way way : kWays) {
            SCOPED_TRACE(std::string(c.name) + ", " + nameOf(way));
            begin(way);
            const GroundHit hit = down(1, 1);
            ASSERT_TRUE(hit.hit);
            EXPECT_NEAR(hit.distance, c.distance, 1e-9);
            const bool isWorld = way == Way::World || way == Way::WorldOfCopy;
            EXPECT_NEAR(length(hit.normal - (isWorld ? kUp : c.normal)), 0.0, 1e-12);
        }
        sensor_.endRun();
        session->stage().remove(surface);
    }
}

TEST_F(GroundScene, MaxLengthIsInMetresOfTheWorld)
{
    addParent(square(), scaled({}, {0.1, 0.1, 0.1}));
    for (const Way way : kWays) {
        SCOPED_TRACE(nameOf(way));
        begin(way);
        const GroundRay ray{{0.1, 2.0, 0.2}, {0, -1, 0}};
        EXPECT_TRUE(sensor_.castGroundRay(0, ray, 2.01, nullptr, nullptr));
        EXPECT_FALSE(sensor_.castGroundRay(0, ray, 1.99, nullptr, nullptr));
        const GroundRay up{{0.1, 2.0, 0.2}, {0, 1, 0}};
        EXPECT_FALSE(sensor_.castGroundRay(0, up, kFar, nullptr, nullptr))
            << "ground behind the ray";
    }
}

TEST_F(GroundScene, BrokenTrianglesAreLeftOut)
{
    constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
    CMesh mesh = square();
    mesh.vertex.push_back({kNoNumber, 0, 0});
    mesh.vertex.push_back({0, 1e308, 0});
    for (const int i : {0, 1, 4, 0, 1, 99, -1, 1, 2, 0, 0, 0, 1, 1, 3})
        mesh.face.push_back(i);
    addParent(mesh);
    for (const Way way : {Way::Host, Way::World}) {
        SCOPED_TRACE(nameOf(way));
        ASSERT_EQ(begin(way), Problem::None);
        EXPECT_NEAR(down(2, 1).distance, 10.0, 1e-9);
        EXPECT_FALSE(down(6, 1).hit);
    }
    GroundSettings copied{.useStaticMesh = false};
    copied.storedMesh = mesh;
    begin(copied);
    EXPECT_NEAR(down(2, 1).distance, 10.0, 1e-9);

    CMesh points;
    points.vertex = {{0, 0, 0}, {1, 0, 0}};
    gravityNode().setParent(nullptr);
    addParent(points);
    for (const Way way : {Way::Host, Way::World}) {
        ASSERT_EQ(begin(way), Problem::None) << nameOf(way);
        EXPECT_FALSE(down(0, 0).hit) << nameOf(way);
    }
}

TEST_F(GroundScene, AFlattenedSurfaceHarmsNoRay)
{
    addParent(square(), scaled({}, {1, 0, 1}));
    for (const Way way : kWays) {
        begin(way);
        const GroundHit hit = down(1, 2);
        EXPECT_TRUE(!hit.hit || std::abs(hit.distance - 10.0) < 1e-9) << nameOf(way);
    }
}

TEST_F(GroundScene, WhatStoresNoCopySaysWhy)
{
    GroundSettings settings;
    const auto expectRefused = [&](const char* text) {
        settings.storeMeshData = true;
        settings.storedMesh = square();
        EXPECT_EQ(GroundSensor::storeMesh(*tool_, gravity_, 0.0, settings), text);
        EXPECT_FALSE(settings.storeMeshData) << text;
        EXPECT_EQ(settings.storedMesh.numFaces(), 0U) << text;
    };
    expectRefused("No ground mesh available");
    addChild(square(), at(0, 1, 0));
    expectRefused("No ground mesh available"); // only the parent is copied
    gravityNode().setParent(&session->stage().addEmpty("pivot"));
    expectRefused("Surface not a mesh");
    CMesh points;
    points.vertex = {{0, 0, 0}};
    addParent(points);
    expectRefused("Mesh Invalid");
    CMesh broken = square();
    broken.face.back() = 4;
    addParent(broken);
    expectRefused("Mesh Invalid");

    addParent(square(3.0), at(0, 2, 0));
    EXPECT_EQ(GroundSensor::storeMesh(*tool_, gravity_, 0.0, settings), "");
    EXPECT_TRUE(settings.storeMeshData);
    EXPECT_EQ(settings.storedMesh, square(3.0));
    EXPECT_EQ(settings.storedMatrix, at(0, 2, 0));
    session->stage().remove(gravityNode());
    expectRefused("No ground mesh available");
}

TEST_F(GroundScene, ATickAllocatesNothing)
{
    addParent(hills(30, 0.5));
    addChild(square(), at(0, -2, 0));
    std::vector<GroundRay> rays;
    for (int k = -28; k <= 28; ++k)
        rays.push_back({{0.3, 2.0, 0.1}, {std::sin(0.02 * k), -std::cos(0.02 * k), 0.0}});
    std::vector<GroundHit> hits(rays.size());
    for (const Way way : kWays) {
        begin(way);
        std::size_t warm = 0;
        for (int i = 0; i < 5; ++i) {
            if (i == 2)
                warm = test::allocationCount();
            tick(0.04 * i);
            for (std::size_t surface = 0; surface < sensor_.surfaceCount(); ++surface)
                sensor_.castFan(surface, rays, kFar, hits);
            down(0, 0);
        }
        EXPECT_EQ(test::allocationCount(), warm) << nameOf(way);
    }
}

} // namespace
} // namespace tvw::rgs::tests
