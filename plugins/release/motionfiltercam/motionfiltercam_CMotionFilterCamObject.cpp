#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamObject.h"

#include "plugins/common/pose.h"
#include "util/filters.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon {

using namespace motionfiltercam;

namespace {

/// The steps in which `spring` turns a rotation.
constexpr int kSubSteps = 10;

void spring(Vector3d& position, Vector3d& velocity, const Vector3d& target, const SpringSettings& s,
            double dt)
{
    for (int i = 0; i < kSubSteps; ++i)
        tvw::spring(position, velocity, target, s.stiffness, s.damping, s.maxVelocity,
                    dt / kSubSteps);
}

void spring(Quatd& rotation, Vector3d& velocity, const Quatd& target, const SpringSettings& s,
            double dt)
{
    tvw::spring(rotation, velocity, target, s.stiffness, s.damping, s.maxVelocity, dt);
}

/// A step in which a spring does more than its whole way throws the state further off each time:
/// what is stiffer gets more steps, and what is too stiff for any is as stiff as they carry.
template <class T>
void follow(T& state, Vector3d& velocity, const T& target, SpringSettings s, double dt)
{
    constexpr double kMostRounds = 100.0; // of kSubSteps each
    const double rate = std::max(s.damping, std::sqrt(s.stiffness));
    const double rounds = std::clamp(std::ceil(rate * dt / kSubSteps), 1.0, kMostRounds);
    const double most = kSubSteps * rounds / dt;
    s.damping = std::min(s.damping, most);
    s.stiffness = std::min(s.stiffness, most * most);
    for (int i = 0; i < static_cast<int>(rounds); ++i)
        spring(state, velocity, target, s, dt / rounds);
}

} // namespace

CMotionFilterCamObject::CMotionFilterCamObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "MotionFilterCamDataChunk")
{
    StateStore& saved = state();
    saved.stored("bFirstTime", bFirstTime_);
    saved.nearest("ancMotionFilterCamNodeqTransMem", velocities_);
    saved.stored("cMotionFilterCamNode.translationalResponseFactor",
                 settings.translation.stiffness);
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
    if (!node(kAttachedCam).exists())
        return;
    const double dt = stepLength();
    FollowingPose follower(node(kFollowCam), time, dt);
    const QTransformd wanted = splitPose(node(kAttachedCam).global(time)).transform;

    Vector3d& velocity = velocities_.translation;
    if (settings.translation.fixate)
        follower.transform.translation = wanted.translation;
    else
        follow(follower.transform.translation, velocity, wanted.translation, settings.translation,
               dt);

    Quatd& memory = velocities_.rotation;
    Vector3d angular{memory.x, memory.y, memory.z};
    if (settings.rotation.fixate)
        follower.transform.rotation = wanted.rotation;
    else
        follow(follower.transform.rotation, angular, wanted.rotation, settings.rotation, dt);
    memory = {angular.x, angular.y, angular.z, 1.0};

    follower.write();
}

} // namespace tvw::rgs::addon
