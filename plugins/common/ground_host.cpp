#include "plugins/common/ground_host.h"

#include "plugins/common/ground_surfaces.h"

#include <algorithm>
#include <cmath>
#include <emmintrin.h>

namespace tvw::rgs {

namespace {

/// 1 / sqrt; 0 of what is not above 0.
__m128d invertedRoots(__m128d squares)
{
    const __m128d root = _mm_sqrt_pd(squares);
    return _mm_and_pd(1.0 / root, _mm_cmpgt_pd(root, _mm_setzero_pd()));
}

/// Two vectors by their axes: what the processor works on at once. The arithmetic is that of the
/// single ones, step by step.
struct Pair
{
    __m128d x, y, z;

    /// Of a matrix's columns, as `transformDirection`.
    [[nodiscard]] Pair turned(const double* m) const
    {
        return {m[0] * x + m[4] * y + m[8] * z, m[1] * x + m[5] * y + m[9] * z,
                m[2] * x + m[6] * y + m[10] * z};
    }
    [[nodiscard]] __m128d squares() const { return x * x + y * y + z * z; }
    [[nodiscard]] Pair operator*(__m128d s) const { return {x * s, y * s, z * s}; }

    void store(Vector3d* two) const
    {
        auto* const out = reinterpret_cast<double*>(two);
        _mm_storeu_pd(out, _mm_unpacklo_pd(x, y));
        _mm_storeu_pd(out + 2, _mm_shuffle_pd(z, x, 2));
        _mm_storeu_pd(out + 4, _mm_unpackhi_pd(y, z));
    }
};

/// Two rays.
struct RayPair
{
    Pair origin, direction;

    explicit RayPair(const GroundRay* two)
    {
        const auto* const in = reinterpret_cast<const double*>(two);
        const auto lows = [&](int i) {
            return _mm_unpacklo_pd(_mm_loadu_pd(in + i), _mm_loadu_pd(in + 6 + i));
        };
        const auto highs = [&](int i) {
            return _mm_unpackhi_pd(_mm_loadu_pd(in + i), _mm_loadu_pd(in + 6 + i));
        };
        origin = {lows(0), highs(0), lows(2)};
        direction = {highs(2), lows(4), highs(4)};
    }
};
static_assert(sizeof(GroundRay) == 48 && sizeof(Vector3d) == 24);

/// `transformPoint` of points that are numbers, by a matrix whose last row ends in m[15] alone.
Pair movedPoints(const double* m, const Pair& points)
{
    const Pair turned = points.turned(m);
    const Pair moved{turned.x + m[12], turned.y + m[13], turned.z + m[14]};
    return m[15] == 0.0 || m[15] == 1.0 ? moved
                                        : Pair{moved.x / m[15], moved.y / m[15], moved.z / m[15]};
}

bool keepsParallels(const Matrix4& M)
{
    return M.m[3] == 0.0 && M.m[7] == 0.0 && M.m[11] == 0.0;
}

/// Calls f(i) for pairs i, i + 1 that cover all of `count`, at least 2.
template <class F>
void forPairs(std::size_t count, F&& f)
{
    for (std::size_t i = 0; i + 2 <= count; i += 2)
        f(i);
    if (count % 2 != 0)
        f(count - 2);
}

/// A fan of rays in a surface's space. All that ask of a thread ask in turn and share one, which so
/// stays in the nearest cache.
struct LocalFan
{
    void toSurface(const Matrix4& place, std::span<const GroundRay> rays);
    void ask(CSnapshot_Mesh& mesh, double maxDistance);
    void toWorld(const Matrix4& place, double maxLength, std::span<GroundHit> out) const;

    std::vector<Vector3d> origins; // these grow to the longest fan and stay
    std::vector<Vector3d> directions;
    std::vector<double> scales;
    std::vector<double> distances;
    std::vector<Vector3d> normals;
};

void LocalFan::toSurface(const Matrix4& place, std::span<const GroundRay> rays)
{
    origins.resize(rays.size());
    directions.resize(rays.size());
    scales.resize(rays.size());
    distances.resize(rays.size());
    normals.resize(rays.size());
    if (rays.size() < 2 || !keepsParallels(place)) {
        for (std::size_t i = 0; i < rays.size(); ++i) {
            const SurfaceRay ray(rays[i], place);
            origins[i] = ray.origin;
            directions[i] = ray.direction;
            scales[i] = ray.scale;
        }
        return;
    }
    forPairs(rays.size(), [&](std::size_t i) {
        const RayPair two(&rays[i]);
        movedPoints(place.m, two.origin).store(&origins[i]);
        const Pair direction = two.direction.turned(place.m);
        const __m128d scale = invertedRoots(direction.squares());
        (direction * scale).store(&directions[i]);
        _mm_storeu_pd(&scales[i], scale);
    });
}

void LocalFan::toWorld(const Matrix4& place, double maxLength, std::span<GroundHit> out) const
{
    const Vector3d* last = nullptr; // neighbours mostly hit the same triangle
    Vector3d normal;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double distance = distances[i] * scales[i];
        if (!(distances[i] >= 0.0 && distance <= maxLength)) {
            out[i] = {};
            continue;
        }
        if (!last || !(*last == normals[i])) {
            last = &normals[i];
            normal = normalise(transformDirection(place, normals[i]));
        }
        out[i] = {distance, normal, true};
    }
}

void LocalFan::ask(CSnapshot_Mesh& mesh, double maxDistance)
{
    MeshRayFan fan{origins, directions, maxDistance, distances, normals};
    if (mesh.call(code::castRayFan, &fan) != 0)
        return;
    for (std::size_t i = 0; i < origins.size(); ++i) {
        if (!mesh.rayCast(origins[i], directions[i], &distances[i], &normals[i]))
            distances[i] = -1.0;
    }
}

} // namespace

void GroundHost::beginTick(double time)
{
    endTick();
    collectSurfaces(gravityNode_, ownBody_, surfaces_);
    for (CNode* const surface : surfaces_) {
        Matrix4 place;
        const bool isThere = !surface->isDeleted() && readPlace(runtime_, *surface, time, place);
        meshes_.push_back(isThere ? runtime_.getMeshSnapshot(surface, time) : nullptr);
        addPlace(place);
    }
}

void GroundHost::endTick()
{
    for (CSnapshot_Mesh* const mesh : meshes_) {
        if (mesh)
            runtime_.releaseMeshSnapshot(mesh);
    }
    meshes_.clear();
    releaseSurfaces(gravityNode_, surfaces_);
    mParentMesh.clear();
    mParentMesh_inv.clear();
}

void GroundHost::castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                         std::span<GroundHit> out)
{
    CSnapshot_Mesh* const mesh = meshes_[surface];
    if (!mesh || rays.empty()) {
        std::fill(out.begin(), out.end(), GroundHit{});
        return;
    }
    static thread_local LocalFan fan;
    fan.toSurface(mParentMesh_inv[surface], rays);
    const double smallest = *std::min_element(fan.scales.begin(), fan.scales.end());
    fan.ask(*mesh, smallest > 0.0 ? maxLength / smallest : 0.0);
    fan.toWorld(mParentMesh[surface], maxLength, out);
}

} // namespace tvw::rgs
