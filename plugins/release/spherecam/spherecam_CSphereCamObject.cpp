#include "plugins/release/spherecam/spherecam_CSphereCamObject.h"

#include "plugins/common/aim.h"
#include "plugins/common/lens.h"
#include "plugins/common/pose.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon {

using namespace spherecam;

namespace {

constexpr double kFrame = 0.04; // [s]: the speeds are per frame at 25 frames a second

/// The rotation by twice `half` [rad] about an axis.
Quatd byHalf(const Vector3d& axis, double half)
{
    const Vector3d v = axis * std::sin(half);
    return {v.x, v.y, v.z, std::cos(half)};
}

} // namespace

CSphereCamObject::CSphereCamObject(const CreateParam& param)
    : ObserverTool(param, kSpec, kItems, "SphereCamDataChunk")
{
    StateStore& saved = state();
    saved.nearest("ancSphereCamFollowSphereqTrans", sphere_);
    saved.nearest("ancSphereCamOrbit", orbit_);
    cameraLine_ = &saved.nearest("ancSphereCamqTrans", camera_);
    saved.nearest("ancSphereCamRadius", radius_);
    saved.nearest("ancSphereCamMinimumRadius", minimumRadius_);
    keepInputs("ancSphereCam", kInputTable);
}

bool CSphereCamObject::nodesCreated()
{
    constexpr double kFieldOfView = 54.0; // [degrees]
    return withLens(runtime(), node(kTargetCamera), runtime().getTime(),
                    [](CSnapshot_Lens& lens) { lens.setFieldOfView(kFieldOfView); });
}

bool CSphereCamObject::startsAnew(double time)
{
    anew_ =
        !continuesAt(cameraLine_->curve(), node(kTargetCamera).global(time), time, stepLength());
    return anew_;
}

void CSphereCamObject::runStarts(double time)
{
    scale_ = keptScale(node(kTargetCamera).global(time));
    if (!anew_ || !node(kTargetMesh).exists())
        return;
    takeOrbit(time);
    moveCamera(0.0); // a camera without softness looks at the centre from the first key on
    writeCamera(time);
}

void CSphereCamObject::writeCamera(double time)
{
    node(kTargetCamera).setGlobal(time, scaled(toMatrix(camera_), scale_));
}

Quatd CSphereCamObject::sphereRotation(const Quatd& target) const
{
    return settings.gyro ? yawOnly(target) : target;
}

/// From where the camera stands; its horizon stays, its view turns to the centre.
void CSphereCamObject::takeOrbit(double time)
{
    constexpr double kSmallest = 0.01; // of the radius at the start
    const QTransformd target = splitPose(node(kTargetMesh).global(time)).transform;
    sphere_ = {target.translation, sphereRotation(target.rotation)};
    camera_ = splitPose(node(kTargetCamera).global(time)).transform;
    const Vector3d right = rotate(camera_.rotation, {1, 0, 0});
    const Vector3d in = sphere_.translation - camera_.translation;
    radius_ = length(in);
    minimumRadius_ = kSmallest * radius_;
    if (radius_ == 0.0) {
        orbit_ = camera_.rotation * conjugate(sphere_.rotation);
        return;
    }
    const Quatd level = toQuat(lookAlong(in / radius_, right));
    const Quatd aimed = fromRotationVector(Vector3d{0, 0, rollOf(camera_.rotation)}) * level;
    orbit_ = aimed * conjugate(sphere_.rotation);
}

void CSphereCamObject::step(double time)
{
    if (!node(kTargetMesh).exists())
        return;
    const double dt = stepLength();
    hear();
    follow(settings.inputs, dt);
    const QTransformd target = splitPose(node(kTargetMesh).global(time)).transform;
    const Vector3d before = translationOf(node(kTargetMesh).global(time - dt));
    followTarget(target, dt);
    resize(length(target.translation - before), dt);
    turnOrbit(dt);
    moveCamera(dt);
    level(dt);
    writeCamera(time);
}

void CSphereCamObject::followTarget(const QTransformd& target, double dt)
{
    smoothing(sphere_.translation, target.translation, settings.spherePosition, dt);
    smoothing(sphere_.rotation, sphereRotation(target.rotation), settings.sphereOrientation, dt);
}

/// A moving target pulls the sphere in; travelled: its way in this frame.
void CSphereCamObject::resize(double travelled, double dt)
{
    constexpr double kPull = 0.1 * 0.05; // per length travelled
    constexpr double kLeastFactor = 0.01;
    constexpr double kLargest = 1e12;
    if (radius_ >= minimumRadius_)
        radius_ -= travelled * kPull;
    const double factor = std::max(1.0 - inputs_[kForward].output, kLeastFactor);
    radius_ *= std::pow(factor, dt / kFrame);
    radius_ = std::clamp(radius_, minimumRadius_, std::max(minimumRadius_, kLargest));
}

void CSphereCamObject::turnOrbit(double dt)
{
    const double frames = dt / kFrame;
    const Quatd yaw = byHalf({0, 1, 0}, inputs_[kRight].output * frames);
    const Quatd pitch = byHalf({1, 0, 0}, -inputs_[kUp].output * frames);
    const Quatd roll = byHalf({0, 0, 1}, -inputs_[kRoll].output * frames);
    orbit_ = normalise(yaw * pitch * roll * orbit_);
}

void CSphereCamObject::level(double dt)
{
    const double factor = std::clamp(settings.antiRoll * inputs_[kAntiRoll].output, 0.0, 1.0);
    if (factor != 0.0) // where a filter would jump
        response(orbit_, antiRollTarget(orbit_), factor, dt);
}

void CSphereCamObject::moveCamera(double dt)
{
    const Quatd rotation = orbit_ * sphere_.rotation;
    const Vector3d position = sphere_.translation + rotate(rotation, {0, 0, radius_});
    response(camera_.translation, position, settings.cameraPosition, dt);
    response(camera_.rotation, rotation, settings.cameraOrientation, dt);
}

} // namespace tvw::rgs::addon
