#include "plugins/release/horrorcam/horrorcam_CHorrorCamObject.h"

#include "plugins/common/lens.h"
#include "plugins/common/pose.h"
#include "plugins/common/sub_steps.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tvw::rgs::addon {

using namespace horrorcam;

namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;

bool isNear(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * (1.0 + std::abs(a));
}

} // namespace

CHorrorCamObject::CHorrorCamObject(const CreateParam& param)
    : ObserverTool(param, kSpec, kItems, "HorrorCamDataChunk")
{
    StateStore& saved = state();
    saved.nearest("ancHorrorCamObjectHalfSize", objectHalfSize_);
    saved.nearest("ancHorrorCamInitialDistance", initialDistance_);
    distanceLine_ = &saved.nearest("ancHorrorCamDistance", distance_);
    fovLine_ = &saved.nearest("ancHorrorCamFov", fov_);
    poseLine_ = &saved.nearest("ancHorrorCamqTrans", pose_);
    keepInputs("ancHorrorCam", kInputTable);
}

double CHorrorCamObject::measure(double time) const
{
    return length(translationOf(node(kTargetMesh).global(time)) -
                  translationOf(node(kTargetCamera).global(time)));
}

/// A take goes on only while camera, target and lens are as it left them.
bool CHorrorCamObject::startsAnew(double time)
{
    anew_ = !continuesAt(poseLine_->curve(), node(kTargetCamera).local(time), time, stepLength()) ||
            !isNear(measure(time), distanceLine_->curve().get(time));
    withLens(runtime(), node(kTargetCamera), time, [&](CSnapshot_Lens& lens) {
        anew_ = anew_ || !isNear(lens.getFieldOfView(), fovLine_->curve().get(time));
    });
    return anew_;
}

void CHorrorCamObject::runStarts(double time)
{
    if (!anew_ || !node(kTargetMesh).exists())
        return;
    pose_ = toTransform(node(kTargetCamera).local(time));
    initialDistance_ = distance_ = measure(time);
    withLens(runtime(), node(kTargetCamera), time, [&](CSnapshot_Lens& lens) {
        fov_ = lens.getFieldOfView();
        lens.setFieldOfView(fov_);
        lens.setTargetDistance(distance_);
    });
    objectHalfSize_ = std::tan(fov_ / 2.0 / kDegrees) * initialDistance_;
}

void CHorrorCamObject::step(double time)
{
    if (!node(kTargetMesh).exists())
        return;
    const double dt = stepLength();
    drive(time, dt);
    hear();
    const SubSteps steps = subSteps(dt);
    for (int i = 0; i < steps.count; ++i)
        follow(settings.inputs, steps.length);
    zoom(time);
}

/// By the speed of the last frame. A share of the distance, so that the move looks alike at any
/// scale.
void CHorrorCamObject::drive(double time, double dt)
{
    constexpr double kShare = 1.0 / 50.0; // of the distance per frame
    constexpr double kFrame = 0.04;       // [s]
    constexpr double kLeastFactor = 0.1;  // never through the target
    constexpr double kMostFactor = 10.0;
    const double factor = std::clamp(1.0 - kShare * inputs_[0].output, kLeastFactor, kMostFactor);
    const double forward = distance_ * (1.0 - std::pow(factor, dt / kFrame));

    SceneNode& camera = node(kTargetCamera);
    Matrix4 pose = camera.local(time - dt);
    const double unit = length(camera.global(time - dt).axis(2)); // of a parent that scales
    if (unit > 0.0)
        setTranslation(pose, translationOf(pose) - pose.axis(2) * (forward / unit));
    camera.setLocal(time, pose);
    pose_ = toTransform(pose);
}

void CHorrorCamObject::zoom(double time)
{
    distance_ = measure(time);
    const double least = std::max(initialDistance_ * 1e-16, 1e-16);
    fov_ = 2.0 * std::atan(objectHalfSize_ / std::max(distance_, least)) * kDegrees;
    withLens(runtime(), node(kTargetCamera), time, [&](CSnapshot_Lens& lens) {
        lens.setTargetDistance(distance_);
        lens.setFieldOfView(fov_);
    });
}

} // namespace tvw::rgs::addon
