#include "plugins/release/zerogcam/zerogcam_CZeroGCamObject.h"

#include <cmath>
#include <span>

namespace tvw::rgs::addon {

using namespace zerogcam;

namespace {

/// What an input's brake divides speeds by in sub-steps of h [s]. The power is taken anew only
/// where the output has changed.
class Brake
{
public:
    Brake(ObserverInput& input, double h) : input_(input), exponent_(h / kSubStep) {}

    /// 1 without the brake.
    double divisor()
    {
        if (input_.raw == 0.0) {
            input_.stop(); // no tail of the filter
            return 1.0;
        }
        if (input_.output != output_) {
            output_ = input_.output;
            divisor_ = std::pow(1.0 + std::abs(output_), exponent_);
        }
        return divisor_;
    }

private:
    ObserverInput& input_;
    double exponent_;
    double output_ = 0.0; ///< to which the divisor belongs
    double divisor_ = 1.0;
};

} // namespace

struct CZeroGCamObject::Brakes
{
    Brakes(std::span<ObserverInput> inputs, double h)
        : all(inputs[kBrakeAll], h), transl(inputs[kTranslBrake], h), rot(inputs[kRotBrake], h),
          airplane(inputs[kAirplaneBrake], h)
    {
    }

    Brake all, transl, rot, airplane;
};

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

void CZeroGCamObject::fly(const SubSteps& steps)
{
    const double h = steps.length;
    const Drives drives(inputs_, settings.inputs, h);
    Brakes brakes(inputs_, h);
    for (int i = 0; i < steps.count; ++i) {
        drives.step();
        const QTransformd& pose = body_.pose();
        const Matrix4 own = toMatrix(pose.rotation);
        push(own, h);
        brake(own, brakes);
        body_.moveTo(pose.translation + velocity_ * h,
                     normalise(pose.rotation * fromRotationVector(angularVelocity_ * h)));
    }
}

void CZeroGCamObject::push(const Matrix4& own, double h)
{
    const auto output = [&](Input input) { return inputs_[input].output; };
    const Vector3d force{output(kRight), output(kUp), -output(kForward)};
    const Vector3d torque{output(kPitch), -output(kYaw), -output(kRoll)};
    velocity_ += transformDirection(own, force) * (settings.relativeScale * h);
    angularVelocity_ += transformDirection(own, torque) * h;
}

void CZeroGCamObject::brake(const Matrix4& own, Brakes& brakes)
{
    const double all = brakes.all.divisor();
    velocity_ /= all * brakes.transl.divisor();
    angularVelocity_ /= all * brakes.rot.divisor();

    // An aeroplane keeps its way ahead and loses every other motion.
    const double airplane = brakes.airplane.divisor();
    angularVelocity_ /= airplane;
    const Vector3d back = own.axis(2);
    const Vector3d along = back * dot(velocity_, back);
    velocity_ = along + (velocity_ - along) / airplane;
}

} // namespace tvw::rgs::addon
