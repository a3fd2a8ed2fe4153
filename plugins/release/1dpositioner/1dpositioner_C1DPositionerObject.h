/// One channel that moves an actuator along its cage's -Z axis.
#pragma once

#include "plugins/release/1dpositioner/1dpositioner_items.h"

namespace tvw::rgs::addon {

class C1DPositionerObject final : public ActuatorTool<positioner::Settings>
{
public:
    explicit C1DPositionerObject(const CreateParam& param)
        : ActuatorTool(param, positioner::kSpec, positioner::kItems, Range::BothWays)
    {
    }

private:
    Matrix4 poseOf(const Outputs& out) const override
    {
        return toMatrix(QTransformd{{0, 0, -out[0]}, {}});
    }
};

} // namespace tvw::rgs::addon
