/// A camera that floats: forces push and turn it, and only a brake stops it.
#pragma once

#include "plugins/release/zerogcam/zerogcam_items.h"

namespace tvw::rgs::addon {

class CZeroGCamObject final : public FlyingCamera<zerogcam::Settings, zerogcam::kInputs>
{
public:
    explicit CZeroGCamObject(const CreateParam& param);

private:
    void takesOff(double h) override;
    void fly(double h) override;
    void push(double h);
    void brake(double h);

    /// What speeds are divided by in a sub-step of h [s]; 1 without the brake.
    double brakeDivisor(zerogcam::Input input, double h);

    Vector3d velocity_;        ///< [m/s] in the parent's axes
    Vector3d angularVelocity_; ///< [rad/s] in the parent's axes
};

} // namespace tvw::rgs::addon
