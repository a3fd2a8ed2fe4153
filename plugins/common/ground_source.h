/// One way of asking for the ground, behind `GroundSensor`.
#pragma once

#include "plugins/common/ground_sensor.h"

#include <vector>

namespace tvw::rgs {

/// The places of the surfaces are those of the present tick; a source of world space has one
/// identity.
class GroundSource
{
public:
    virtual ~GroundSource() = default;

    virtual void beginTick(double /*time*/) {}
    virtual void endTick() {}

    /// As `GroundSensor::castFan`; surface is one of `mParentMesh`, out as long as rays.
    virtual void castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                         std::span<GroundHit> out) = 0;

    std::vector<Matrix4> mParentMesh;     ///< from each surface's space to the world's
    std::vector<Matrix4> mParentMesh_inv; ///< and back

protected:
    void addPlace(const Matrix4& toWorld)
    {
        mParentMesh.push_back(toWorld);
        mParentMesh_inv.push_back(inverse(toWorld));
    }
};

/// A ray of the world in a surface's space.
struct SurfaceRay
{
    Vector3d origin;
    Vector3d direction; ///< of unit length
    double scale;       ///< metres of the world for each unit along it; 0: the surface is flattened

    SurfaceRay(const GroundRay& ray, const Matrix4& toSurface)
        : origin(transformPoint(toSurface, ray.origin)),
          direction(transformDirection(toSurface, ray.direction))
    {
        // Back through the surface's matrix this direction is the ray's own, divided by its length
        // here: so that is the scale, at half the price.
        const double size = length(direction);
        scale = size > 0.0 ? 1.0 / size : 0.0;
        direction *= scale;
    }
};

/// A hit in the surface's space, seen from the world: the offset and the normal go through the
/// whole matrix, and a normal comes out at length 1.
inline GroundHit toWorldHit(double distance, const Vector3d& normal, double scale,
                            const Matrix4& toWorld)
{
    return {distance * scale, normalise(transformDirection(toWorld, normal)), true};
}

} // namespace tvw::rgs
