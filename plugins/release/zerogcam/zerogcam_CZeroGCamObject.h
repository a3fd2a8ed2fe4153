/// A camera that floats: forces push and turn it, and only a brake stops it.
#pragma once

#include "plugins/release/zerogcam/zerogcam_items.h"

namespace tvw::rgs::addon {

class CZeroGCamObject final : public FlyingCamera<zerogcam::Settings, zerogcam::kInputs>
{
public:
    explicit CZeroGCamObject(const CreateParam& param);

private:
    struct Brakes; ///< of a frame

    void takesOff(double h) override;
    void fly(const SubSteps& steps) override;
    void push(const Matrix4& own, double h);
    void brake(const Matrix4& own, Brakes& brakes);

    Vector3d velocity_;        ///< [m/s] in the parent's axes
    Vector3d angularVelocity_; ///< [rad/s] in the parent's axes
};

} // namespace tvw::rgs::addon
