/// A scene with a gravity node, and ground for it whose hits can be computed by hand.
#pragma once

#include "plugins/common/ground_sensor.h"
#include "tests/runs/run_fixture.h"

#include <cmath>
#include <optional>
#include <random>

namespace tvw::rgs::tests {

inline constexpr double kFar = 100.0; ///< longest ray [m]

/// Which of the three ways answers.
enum class Way { Host, Tree, World, WorldOfCopy };

inline const char* nameOf(Way way)
{
    constexpr const char* kNames[] = {"host", "tree", "world", "world of the stored copy"};
    return kNames[static_cast<int>(way)];
}

inline constexpr Way kWays[] = {Way::Host, Way::Tree, Way::World, Way::WorldOfCopy};

inline Matrix4 at(double x, double y, double z)
{
    Matrix4 out;
    setTranslation(out, {x, y, z});
    return out;
}

/// A square of two triangles in the plane y = 0 that face up, from -edge to edge.
inline CMesh square(double edge = 5.0)
{
    CMesh mesh;
    mesh.vertex = {{-edge, 0, -edge}, {edge, 0, -edge}, {edge, 0, edge}, {-edge, 0, edge}};
    mesh.face = {0, 2, 1, 0, 3, 2};
    return mesh;
}

/// Quads of `cell` round the origin that face up.
inline CMesh hills(int cells, double cell)
{
    CMesh mesh;
    for (int z = 0; z <= cells; ++z) {
        for (int x = 0; x <= cells; ++x) {
            const double px = (x - cells / 2) * cell;
            const double pz = (z - cells / 2) * cell;
            mesh.vertex.push_back({px, std::sin(0.5 * px) * std::cos(0.4 * pz), pz});
            if (x == cells || z == cells)
                continue;
            const int a = z * (cells + 1) + x;
            const int c = a + cells + 1;
            for (const int i : {a, c, a + 1, a + 1, c, c + 1})
                mesh.face.push_back(i);
        }
    }
    return mesh;
}

/// Every triangle in turn, in world space.
inline GroundHit nearestByHand(const CMesh& world, const GroundRay& ray)
{
    GroundHit nearest;
    for (std::size_t i = 0; i < world.face.size(); i += 3) {
        const Vector3d a = world.vertex[world.face[i]];
        const Vector3d e1 = world.vertex[world.face[i + 1]] - a;
        const Vector3d e2 = world.vertex[world.face[i + 2]] - a;
        const Vector3d n = cross(e1, e2);
        const double t = dot(a - ray.origin, n) / dot(ray.direction, n);
        const Vector3d p = ray.origin + ray.direction * t - a;
        const double v = dot(cross(e1, p), n) / dot(n, n);
        const double u = dot(cross(p, e2), n) / dot(n, n);
        if (u >= 0 && v >= 0 && u + v <= 1 && t >= 0 && (!nearest.hit || t < nearest.distance))
            nearest = {t, normalise(n), true};
    }
    return nearest;
}

class GroundScene : public RunTest
{
protected:
    void SetUp() override
    {
        open();
        tool_ = &create("Sinusoid");
        gravity_ = tool_->createHelperNode("GravityDirectionMesh", nullptr, nodekind::shape);
    }

    stage::StageNode& gravityNode() { return static_cast<stage::NodeHandle*>(gravity_)->node(); }

    stage::StageNode& addParent(const CMesh& mesh, const Matrix4& place = {})
    {
        stage::StageNode& surface = session->stage().addMesh("surface", mesh, place);
        gravityNode().setParent(&surface);
        return surface;
    }
    stage::StageNode& addChild(const CMesh& mesh, const Matrix4& place)
    {
        stage::StageNode& surface = session->stage().addMesh("child", mesh, place);
        surface.setParent(&gravityNode());
        return surface;
    }

    /// Begins a run that asks in that way.
    GroundSensor::Problem begin(Way way, CNode* ownBody = nullptr)
    {
        GroundSettings settings;
        settings.useStaticMesh = way == Way::World || way == Way::WorldOfCopy;
        if (way == Way::Tree || way == Way::WorldOfCopy) {
            EXPECT_EQ(GroundSensor::storeMesh(*tool_, gravity_, 0.0, settings), "");
        }
        return begin(settings, ownBody);
    }
    GroundSensor::Problem begin(const GroundSettings& settings, CNode* ownBody = nullptr)
    {
        const auto problem =
            sensor_.beginRun(*tool_, gravity_, settings, 0.0, kBodyLength, ownBody);
        sensor_.beginTick(0.0);
        return problem;
    }
    void tick(double time)
    {
        sensor_.endTick();
        sensor_.beginTick(time);
    }

    GroundHit down(double x, double z, double from = 10.0, std::size_t surface = 0)
    {
        GroundHit out;
        out.hit = sensor_.castGroundRay(surface, {{x, from, z}, {0, -1, 0}}, kFar, &out.distance,
                                        &out.normal);
        return out;
    }

    static constexpr double kBodyLength = 4.0;

    core::Instance* tool_ = nullptr;
    CNode* gravity_ = nullptr;
    GroundSensor sensor_;
};

} // namespace tvw::rgs::tests
