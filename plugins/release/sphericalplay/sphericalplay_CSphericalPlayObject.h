/// A slider that is loose in a sphere.
#pragma once

#include "plugins/release/sphericalplay/sphericalplay_items.h"

namespace tvw::rgs::addon {

class CSphericalPlayObject final : public PlayTool
{
public:
    explicit CSphericalPlayObject(const CreateParam& param)
        : PlayTool(param, sphericalplay::kSpec, sphericalplay::kItems, "SphericalPlayDataChunk",
                   Clearance::Sphere)
    {
    }
};

} // namespace tvw::rgs::addon
