/// The rays of a wheel against Bullet's `castRay` on the same terrain, in each of our ways.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wdouble-promotion"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#include <btBulletDynamicsCommon.h>
#pragma GCC diagnostic pop

#include "adaptor/stage/session.h"
#include "bench/compare.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "plugins/common/ground_bullet_world.h"
#include "plugins/common/ground_sensor.h"

#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace {

using namespace tvw;
using namespace tvw::rgs;

constexpr double kRadius = 0.26 * 0.95;                   ///< of a wheel [m]
constexpr double kMaxLength = (0.5 + 1) * kRadius * 1000; ///< as a wheel asks Bullet [m]
constexpr int kWheels = 64;                               ///< places on the terrain

/// Rolling ground with bumps, `side` by `side` quads round the origin.
CMesh terrain(int side, double cell)
{
    CMesh mesh;
    for (int z = 0; z <= side; ++z) {
        for (int x = 0; x <= side; ++x) {
            const double px = (x - side / 2) * cell;
            const double pz = (z - side / 2) * cell;
            const double height = 2.0 * std::sin(0.11 * px) * std::cos(0.07 * pz) +
                                  0.03 * std::sin(1.7 * px + 0.4 * pz);
            mesh.vertex.push_back({px, height, pz});
            if (x == side || z == side)
                continue;
            const int a = z * (side + 1) + x;
            const int c = a + side + 1;
            for (const int i : {a, c, a + 1, a + 1, c, c + 1})
                mesh.face.push_back(i);
        }
    }
    return mesh;
}

/// The rays of one wheel: three rows of 19, two degrees apart, from above the ground.
using Wheel = std::vector<GroundRay>;

std::vector<Wheel> wheelsOn(int side, double cell)
{
    const double reach = 0.45 * side * cell;
    std::vector<Wheel> wheels(kWheels);
    for (int i = 0; i < kWheels; ++i) {
        // Steps of the golden ratio: spread over the terrain, never along its quads.
        const double x = reach * (2.0 * std::fmod(0.6180339887 * (i + 1), 1.0) - 1.0);
        const double z = reach * (2.0 * std::fmod(0.7548776662 * (i + 1), 1.0) - 1.0);
        const double ground = 2.0 * std::sin(0.11 * x) * std::cos(0.07 * z);
        for (int row = -1; row <= 1; ++row) {
            for (int k = -9; k <= 9; ++k) {
                const double angle = k * 2.0 * 0.017453292519943295;
                wheels[i].push_back({{x + 0.1 * row, ground + kRadius + 0.1, z},
                                     {0.0, -std::cos(angle), std::sin(angle)}});
            }
        }
    }
    return wheels;
}

/// A world of Bullet as one would write it down.
struct BareBullet
{
    explicit BareBullet(const CMesh& mesh)
    {
        btIndexedMesh part;
        part.m_numTriangles = static_cast<int>(mesh.numFaces());
        part.m_triangleIndexBase = reinterpret_cast<const unsigned char*>(mesh.face.data());
        part.m_triangleIndexStride = 12;
        part.m_numVertices = static_cast<int>(mesh.numVertexes());
        part.m_vertexBase = reinterpret_cast<const unsigned char*>(mesh.vertex.data());
        part.m_vertexStride = sizeof(Vector3d);
        triangles.addIndexedMesh(part, PHY_INTEGER);
        shape = std::make_unique<btBvhTriangleMeshShape>(&triangles, true, true);
        body = std::make_unique<btRigidBody>(0.0, nullptr, shape.get());
        world.addRigidBody(body.get());
    }
    ~BareBullet() { world.removeRigidBody(body.get()); }

    double cast(const GroundRay& ray)
    {
        const Vector3d end = ray.origin + ray.direction * kMaxLength;
        const btVector3 from(ray.origin.x, ray.origin.y, ray.origin.z);
        btVehicleRaycaster::btVehicleRaycasterResult result;
        return caster.castRay(from, btVector3(end.x, end.y, end.z), result)
                   ? result.m_distFraction * kMaxLength
                   : -1.0;
    }

    btDefaultCollisionConfiguration configuration;
    btCollisionDispatcher dispatcher{&configuration};
    btAxisSweep3 broadphase{{-1000, -1000, -1000}, {1000, 1000, 1000}, 16384};
    btSequentialImpulseConstraintSolver solver;
    btDiscreteDynamicsWorld world{&dispatcher, &broadphase, &solver, &configuration};
    btDefaultVehicleRaycaster caster{&world};
    btTriangleIndexVertexArray triangles;
    std::unique_ptr<btBvhTriangleMeshShape> shape;
    std::unique_ptr<btRigidBody> body;
};

/// The distance by every triangle near the ray in turn, from its plane and its barycentres.
double exactDistance(const CMesh& mesh, int side, double cell, const GroundRay& ray)
{
    double nearest = -1.0;
    const auto column = [&](double p) { return static_cast<int>(std::floor(p / cell)) + side / 2; };
    const int around = static_cast<int>(1.0 / cell) + 2;
    for (int z = column(ray.origin.z) - around; z <= column(ray.origin.z) + around; ++z) {
        for (int x = column(ray.origin.x) - around; x <= column(ray.origin.x) + around; ++x) {
            if (x < 0 || z < 0 || x >= side || z >= side)
                continue;
            for (int half = 0; half < 2; ++half) {
                const auto* const i = &mesh.face[6 * (z * side + x) + 3 * half];
                const Vector3d a = mesh.vertex[i[0]];
                const Vector3d e1 = mesh.vertex[i[1]] - a;
                const Vector3d e2 = mesh.vertex[i[2]] - a;
                const Vector3d n = cross(e1, e2);
                const double t = dot(a - ray.origin, n) / dot(ray.direction, n);
                const Vector3d p = ray.origin + ray.direction * t - a;
                const double v = dot(cross(e1, p), n);
                const double u = dot(cross(p, e2), n);
                constexpr double kEdge = -1e-12;
                const double whole = dot(n, n);
                if (t >= 0 && u >= kEdge * whole && v >= kEdge * whole &&
                    u + v <= whole * (1.0 - kEdge) && (nearest < 0 || t < nearest))
                    nearest = t;
            }
        }
    }
    return nearest;
}

/// One terrain with all that is asked about it.
class Course
{
public:
    Course(int side, double cell)
        : mesh(terrain(side, cell)), wheels(wheelsOn(side, cell)), hits(wheels[0].size()),
          side_(side), cell_(cell)
    {
        auto started = stage::Session::start({.framesPerSecond = 25.0, .isolated = true});
        session_ = *std::move(started);
        tool_ = &(*session_->create("Sinusoid", {}, nullptr))->instance();
        gravity_ = tool_->createHelperNode("gravity", nullptr, nodekind::shape);
        stage::StageNode& ground = session_->stage().addMesh("ground", mesh);
        static_cast<stage::NodeHandle*>(gravity_)->node().setParent(&ground);
    }

    void begin(bool useStaticMesh)
    {
        GroundSettings settings;
        settings.useStaticMesh = useStaticMesh;
        sensor.beginRun(*tool_, gravity_, settings, 0.0, 4.0, nullptr);
        sensor.beginTick(0.0);
    }

    void castAll()
    {
        for (const Wheel& wheel : wheels) {
            sensor.castFan(0, wheel, kMaxLength, hits);
            benchmark::DoNotOptimize(hits.data());
        }
    }

    /// tolerance: of ours, relative. Bullet's own triangles are wider by 1e-4.
    bool agree(benchmark::State& state, BareBullet& bullet, double tolerance)
    {
        for (const Wheel& wheel : wheels) {
            sensor.castFan(0, wheel, kMaxLength, hits);
            for (std::size_t i = 0; i < wheel.size(); ++i) {
                const double exact = exactDistance(mesh, side_, cell_, wheel[i]);
                const bool same = hits[i].hit && exact > 0 &&
                                  std::abs(hits[i].distance - exact) <= tolerance * exact &&
                                  std::abs(bullet.cast(wheel[i]) - exact) <= 1e-4 * exact;
                if (!same) {
                    state.SkipWithError("the hits differ");
                    return false;
                }
            }
        }
        return true;
    }

    CMesh mesh;
    std::vector<Wheel> wheels;
    std::vector<GroundHit> hits;

private:
    int side_;
    double cell_;
    std::unique_ptr<stage::Session> session_;
    core::Instance* tool_ = nullptr;
    CNode* gravity_ = nullptr;

public:
    GroundSensor sensor; ///< goes before the session whose nodes it holds
};

void compareRays(benchmark::State& state, int side, double cell, bool useStaticMesh)
{
    Course course(side, cell);
    BareBullet bullet(course.mesh);
    course.begin(useStaticMesh);
    if (!course.agree(state, bullet, useStaticMesh ? 1e-4 : 1e-9))
        return;
    tvw::bench::compare(
        state,
        [&] {
            for (const Wheel& wheel : course.wheels) {
                for (const GroundRay& ray : wheel)
                    benchmark::DoNotOptimize(bullet.cast(ray));
            }
        },
        [&] { course.castAll(); });
    state.counters["rays"] = static_cast<double>(kWheels * course.hits.size());
}

/// Quads of half a metre: a few triangles lie under a wheel.
void raysAgainstBullet(benchmark::State& state)
{
    compareRays(state, static_cast<int>(state.range(0)), 0.5, false);
}
BENCHMARK(raysAgainstBullet)->Name("ground_rays_vs_bullet")->Arg(32)->Arg(316)->Arg(1000);

/// Quads of 2 cm: hundreds of triangles lie under a wheel.
void fineRaysAgainstBullet(benchmark::State& state)
{
    compareRays(state, 1000, 0.02, false);
}
BENCHMARK(fineRaysAgainstBullet)->Name("ground_rays_fine_vs_bullet");

void bulletModeAgainstBullet(benchmark::State& state)
{
    compareRays(state, 316, 0.5, true);
}
BENCHMARK(bulletModeAgainstBullet)->Name("bullet_mode_vs_bullet");

/// What a run of 200,000 triangles waits for before its first host ray, against Bullet's tree.
void buildAgainstBullet(benchmark::State& state)
{
    const CMesh mesh = terrain(316, 0.5);
    tvw::bench::compare(
        state, [&] { benchmark::DoNotOptimize(std::make_unique<BareBullet>(mesh)); },
        [&] { benchmark::DoNotOptimize(stage::MeshTree(mesh.vertex, mesh.face).triangleCount()); });
}
BENCHMARK(buildAgainstBullet)->Name("terrain_build_vs_bullet");

/// Our world of Bullet, with its copy of the mesh, against the bare one.
void worldBuildAgainstBullet(benchmark::State& state)
{
    const CMesh mesh = terrain(316, 0.5);
    tvw::bench::compare(
        state, [&] { benchmark::DoNotOptimize(std::make_unique<BareBullet>(mesh)); },
        [&] {
            GroundBulletWorld world;
            world.addSurface(mesh, Matrix4());
            benchmark::DoNotOptimize(&world);
        });
}
BENCHMARK(worldBuildAgainstBullet)->Name("bullet_mode_build_vs_bullet");

} // namespace
