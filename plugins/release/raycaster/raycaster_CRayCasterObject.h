/// Casts a ray from a node onto a surface, and puts another node where it hits.
#pragma once

#include "plugins/release/raycaster/raycaster_items.h"

#include <optional>

namespace tvw::rgs::addon {

class CRayCasterObject final : public Tool<raycaster::Settings>
{
public:
    explicit CRayCasterObject(const CreateParam& param);

private:
    struct Ray
    {
        Vector3d origin;
        Vector3d direction; ///< of unit length
    };
    struct Hit
    {
        Vector3d position;
        Vector3d normal{0, 1, 0}; ///< of unit length
        bool missed = false;
    };

    /// So that the first frame does not jump.
    void runStarts(double time) override { placeHit(time, time - stepLength()); }
    void step(double time) override { placeHit(time, time - stepLength()); }
    void itemActed(std::string_view label) override;

    /// scaleTime: when the hit node's own scale is read [s].
    void placeHit(double time, double scaleTime);

    /// Against the surface that the child hangs on; without one against the plane y = 0. Nothing
    /// where that parent is no mesh: the hit node then stays.
    std::optional<Hit> cast(const Ray& ray, double time) const;
    Hit castOnPlane(const Ray& ray) const;
    std::optional<Hit> castOnSurface(const Ray& ray, CNode& surface, double time) const;
    Hit miss(const Ray& ray) const;
};

} // namespace tvw::rgs::addon
