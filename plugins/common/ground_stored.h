/// The ground by a tree over the tool's own copy of a surface.
#pragma once

#include "plugins/common/ground_source.h"
#include "plugins/common/ground_triangle_tree.h"

namespace tvw::rgs {

/// One surface, which stands where it stood when the copy was taken. The tree must outlive it.
class GroundStored final : public GroundSource
{
public:
    GroundStored(const CGroundTriangleTree& tree, const Matrix4& place) : tree_(tree)
    {
        addPlace(place);
    }

    void castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                 std::span<GroundHit> out) override
    {
        for (std::size_t i = 0; i < rays.size(); ++i)
            out[i] = cast(rays[i], mParentMesh[surface], mParentMesh_inv[surface], maxLength);
    }

private:
    GroundHit cast(const GroundRay& ray, const Matrix4& toWorld, const Matrix4& toSurface,
                   double maxLength) const
    {
        const SurfaceRay local(ray, toSurface);
        double distance = 0.0;
        Vector3d normal;
        if (local.scale == 0.0 || !tree_.castRay(local.origin, local.direction,
                                                 maxLength / local.scale, distance, normal))
            return {};
        return toWorldHit(distance, normal, local.scale, toWorld);
    }

    const CGroundTriangleTree& tree_;
};

} // namespace tvw::rgs
