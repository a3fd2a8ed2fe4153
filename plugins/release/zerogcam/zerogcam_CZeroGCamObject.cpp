#include "plugins/release/zerogcam/zerogcam_CZeroGCamObject.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace zerogcam;

CZeroGCamObject::CZeroGCamObject(const CreateParam& param)
    : FlyingCamera(param, kSpec, kItems, "ZeroGCam", kInputTable)
{
    state().nearest("ancZeroGCamVelocity", velocity_);
    state().nearest("ancZeroGCamAngularVelocity", angularVelocity_);
}

void CZeroGCamObject::takesOff(double h)
{
    velocity_ = body_.velocity(h);
    angularVelocity_ = body_.angularVelocity(h);
}

void CZeroGCamObject::fly(double h)
{
    follow(settings.inputs, h);
    push(h);
    brake(h);
    const QTransformd& pose = body_.pose();
    body_.moveTo({pose.translation + velocity_ * h,
                  normalise(pose.rotation * fromRotationVector(angularVelocity_ * h))});
}

void CZeroGCamObject::push(double h)
{
    const auto output = [&](Input input) { return inputs_[input].output; };
    const Quatd& own = body_.pose().rotation;
    const Vector3d force{output(kRight), output(kUp), -output(kForward)};
    const Vector3d torque{output(kPitch), -output(kYaw), -output(kRoll)};
    velocity_ += rotate(own, force) * (settings.relativeScale * h);
    angularVelocity_ += rotate(own, torque) * h;
}

double CZeroGCamObject::brakeDivisor(Input input, double h)
{
    ObserverInput& brake = inputs_[input];
    if (brake.raw == 0.0) {
        brake.stop(); // no tail of the filter
        return 1.0;
    }
    return std::pow(1.0 + std::abs(brake.output), h / kSubStep);
}

void CZeroGCamObject::brake(double h)
{
    const double all = brakeDivisor(kBrakeAll, h);
    velocity_ /= all * brakeDivisor(kTranslBrake, h);
    angularVelocity_ /= all * brakeDivisor(kRotBrake, h);

    // An aeroplane keeps its way ahead and loses every other motion.
    const double airplane = brakeDivisor(kAirplaneBrake, h);
    angularVelocity_ /= airplane;
    const Vector3d back = rotate(body_.pose().rotation, {0, 0, 1});
    const Vector3d along = back * dot(velocity_, back);
    velocity_ = along + (velocity_ - along) / airplane;
}

} // namespace tvw::rgs::addon
