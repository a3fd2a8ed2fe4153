/// Three channels that scale an actuator along the axes of its cage.
#pragma once

#include "plugins/release/activescaler/activescaler_items.h"

namespace tvw::rgs::addon {

class C1DScalerObject final : public ActuatorTool<activescaler::Settings>
{
public:
    explicit C1DScalerObject(const CreateParam& param)
        : ActuatorTool(param, activescaler::kSpec, activescaler::kItems, Range::AboveMinimum)
    {
    }

private:
    Matrix4 poseOf(const Outputs& out) const override
    {
        using namespace activescaler;
        return scaled({}, {out[kRight], out[kUp], out[kForward]});
    }
};

} // namespace tvw::rgs::addon
