#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamObject.h"

#include "util/filters.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace motionfiltercam;

namespace {

/// With the stiffest springs of practice (1000 1/s^2) one step of 1/22 s would already overshoot more
/// each time.
constexpr int kSubSteps = 10;

bool isFinite(const Vector3d& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

void springPosition(Vector3d& position, Vector3d& velocity, const Vector3d& target,
                    const SpringSettings& s, double dt)
{
    const double h = dt / kSubSteps;
    for (int i = 0; i < kSubSteps; ++i)
        spring(position, velocity, target, s.stiffness, s.damping, s.maxVelocity, h);
    if (!isFinite(position) || !isFinite(velocity)) { // a spring too stiff for any step: it is there
        position = target;
        velocity = {};
    }
}

void springRotation(Quatd& rotation, Vector3d& velocity, const Quatd& target, const SpringSettings& s,
                    double dt)
{
    spring(rotation, velocity, target, s.stiffness, s.damping, s.maxVelocity, dt);
    if (!std::isfinite(dot(rotation, rotation)) || !isFinite(velocity)) {
        rotation = target;
        velocity = {};
    }
}

} // namespace

CMotionFilterCamObject::CMotionFilterCamObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "MotionFilterCamDataChunk")
{
    StateStore& saved = state();
    saved.stored("bFirstTime", bFirstTime_);
    saved.nearest("ancMotionFilterCamNodeqTransMem", velocities_);
    saved.stored("cMotionFilterCamNode.translationalResponseFactor", settings.translation.stiffness);
    saved.stored("cMotionFilterCamNode.rotationalResponseFactor", settings.rotation.stiffness);
    saved.stored("cMotionFilterCamNode.translationalSmoothingFactor", settings.translation.damping);
    saved.stored("cMotionFilterCamNode.rotationalSmoothingFactor", settings.rotation.damping);
    saved.stored("cMotionFilterCamNode.translationalMaxVel", settings.translation.maxVelocity);
    saved.stored("cMotionFilterCamNode.rotationalMaxVel", settings.rotation.maxVelocity);
    saved.stored("cMotionFilterCamNode.bFixateTranslations", settings.translation.fixate);
    saved.stored("cMotionFilterCamNode.bFixateRotations", settings.rotation.fixate);
}

void CMotionFilterCamObject::runStarts(double)
{
    if (bFirstTime_)
        velocities_ = {};
    bFirstTime_ = false;
}

void CMotionFilterCamObject::step(double time)
{
    const double dt = stepLength();
    FollowingPose follower(node(kFollowCam), time, dt);
    const QTransformd wanted = toTransform(node(kAttachedCam).global(time));

    Vector3d& velocity = velocities_.translation;
    if (settings.translation.fixate)
        follower.transform.translation = wanted.translation;
    else
        springPosition(follower.transform.translation, velocity, wanted.translation,
                       settings.translation, dt);

    Quatd& memory = velocities_.rotation;
    Vector3d angular{memory.x, memory.y, memory.z};
    if (settings.rotation.fixate)
        follower.transform.rotation = wanted.rotation;
    else
        springRotation(follower.transform.rotation, angular, wanted.rotation, settings.rotation, dt);
    memory = {angular.x, angular.y, angular.z, 1.0};

    follower.write();
}

} // namespace tvw::rgs::addon
