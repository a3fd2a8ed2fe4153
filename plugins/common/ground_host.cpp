#include "plugins/common/ground_host.h"

#include "plugins/common/ground_surfaces.h"

#include <algorithm>
#include <cmath>
#include <emmintrin.h>

namespace tvw::rgs {

namespace {

/// 1 / sqrt of each; 0 of what is not above 0.
void invertRoots(std::span<double> squares)
{
    std::size_t i = 0;
    for (; i + 1 < squares.size(); i += 2) {
        const __m128d root = _mm_sqrt_pd(_mm_loadu_pd(&squares[i]));
        const __m128d inverse = _mm_div_pd(_mm_set1_pd(1.0), root);
        _mm_storeu_pd(&squares[i], _mm_and_pd(inverse, _mm_cmpgt_pd(root, _mm_setzero_pd())));
    }
    if (i < squares.size()) {
        const double root = std::sqrt(squares[i]);
        squares[i] = root > 0.0 ? 1.0 / root : 0.0;
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
    toSurface(mParentMesh_inv[surface], rays);
    const double smallest = *std::min_element(scales_.begin(), scales_.end());
    ask(*mesh, smallest > 0.0 ? maxLength / smallest : 0.0);
    toWorld(mParentMesh[surface], maxLength, out);
}

void GroundHost::toSurface(const Matrix4& place, std::span<const GroundRay> rays)
{
    origins_.resize(rays.size());
    directions_.resize(rays.size());
    scales_.resize(rays.size());
    distances_.resize(rays.size());
    normals_.resize(rays.size());
    // As `SurfaceRay`, the roots and divisions two at a time.
    for (std::size_t i = 0; i < rays.size(); ++i) {
        origins_[i] = transformPoint(place, rays[i].origin);
        directions_[i] = transformDirection(place, rays[i].direction);
        scales_[i] = lengthSquared(directions_[i]);
    }
    invertRoots(scales_);
    for (std::size_t i = 0; i < rays.size(); ++i)
        directions_[i] *= scales_[i];
}

void GroundHost::toWorld(const Matrix4& place, double maxLength, std::span<GroundHit> out) const
{
    const Vector3d* last = nullptr; // neighbours mostly hit the same triangle
    Vector3d normal;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double distance = distances_[i] * scales_[i];
        if (!(distances_[i] >= 0.0 && distance <= maxLength)) {
            out[i] = {};
            continue;
        }
        if (!last || !(*last == normals_[i])) {
            last = &normals_[i];
            normal = normalise(transformDirection(place, normals_[i]));
        }
        out[i] = {distance, normal, true};
    }
}

void GroundHost::ask(CSnapshot_Mesh& mesh, double maxDistance)
{
    MeshRayFan fan{origins_, directions_, maxDistance, distances_, normals_};
    if (mesh.call(code::castRayFan, &fan) != 0)
        return;
    for (std::size_t i = 0; i < origins_.size(); ++i) {
        if (!mesh.rayCast(origins_[i], directions_[i], &distances_[i], &normals_[i]))
            distances_[i] = -1.0;
    }
}

} // namespace tvw::rgs
