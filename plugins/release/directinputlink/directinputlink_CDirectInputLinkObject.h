/// Six channels that move and turn an actuator with a camera on it.
#pragma once

#include "plugins/release/directinputlink/directinputlink_items.h"

namespace tvw::rgs::addon {

class CDirectInputLinkObject final : public ActuatorTool<directinputlink::Settings>
{
public:
    explicit CDirectInputLinkObject(const CreateParam& param)
        : ActuatorTool(param, directinputlink::kSpec, directinputlink::kItems, Range::BothWays)
    {
        savedFlags().field(settings.hideCamera);
    }

private:
    /// Roll acts first, yaw last: a heading does not tilt the horizon.
    Matrix4 poseOf(const Outputs& out) const override
    {
        using namespace directinputlink;
        const auto turn = [](double x, double y, double z) {
            return fromRotationVector(Vector3d{x, y, z});
        };
        return toMatrix(QTransformd{{out[kRight], out[kUp], -out[kForward]},
                                    turn(0, 0, -out[kRoll]) * turn(out[kPitch], 0, 0) *
                                        turn(0, -out[kYaw], 0)});
    }
};

} // namespace tvw::rgs::addon
