/// The rays of a wheel against Bullet's `castRay` on the same terrain, in each of our ways.
#include "adaptor/stage/session.h"
#include "bench/bullet_terrain.h"
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
using tvw::bench::BareBullet;
using tvw::bench::terrain;

constexpr double kRadius = 0.26 * 0.95;                   ///< of a wheel [m]
constexpr double kMaxLength = (0.5 + 1) * kRadius * 1000; ///< as a wheel asks Bullet [m]
constexpr int kWheels = 64;                               ///< places on the terrain

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
                const bool same =
                    hits[i].hit && exact > 0 &&
                    std::abs(hits[i].distance - exact) <= tolerance * exact &&
                    std::abs(bullet.cast(wheel[i].origin, wheel[i].direction, kMaxLength) -
                             exact) <= 1e-4 * exact;
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
                    benchmark::DoNotOptimize(bullet.cast(ray.origin, ray.direction, kMaxLength));
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
            GroundBulletWorld world(1);
            world.addSurface(mesh, Matrix4());
            benchmark::DoNotOptimize(&world);
        });
}
BENCHMARK(worldBuildAgainstBullet)->Name("bullet_mode_build_vs_bullet");

} // namespace
