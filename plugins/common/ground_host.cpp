#include "plugins/common/ground_host.h"

#include "plugins/common/ground_surfaces.h"

#include <algorithm>

namespace tvw::rgs {

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
    for (std::size_t i = 0; i < rays.size(); ++i) {
        const SurfaceRay local(rays[i], place);
        origins_[i] = local.origin;
        directions_[i] = local.direction;
        scales_[i] = local.scale;
    }
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
