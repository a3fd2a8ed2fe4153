/// One channel that turns an actuator round its cage's Z axis.
#pragma once

#include "plugins/release/1drotator/1drotator_items.h"

namespace tvw::rgs::addon {

class C1DRotatorObject final : public ActuatorTool<rotator::Settings>
{
public:
    explicit C1DRotatorObject(const CreateParam& param)
        : ActuatorTool(param, rotator::kSpec, rotator::kItems, Range::BothWays)
    {
    }

private:
    Matrix4 poseOf(const Outputs& out) const override
    {
        return toMatrix(fromRotationVector(Vector3d{0, 0, -out[0]}));
    }
};

} // namespace tvw::rgs::addon
