#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"

#include "plugins/common/pose.h"
#include "util/filters.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace steadycam;

namespace {

/// The one of q and -q, the same rotation, that lies nearer to the reference.
Quatd nearTo(const Quatd& q, const Quatd& reference)
{
    const double apart = std::abs(q.x - reference.x) + std::abs(q.y - reference.y) +
                         std::abs(q.z - reference.z) + std::abs(q.w - reference.w);
    constexpr double kOpposite = 2.0;
    return apart >= kOpposite ? -q : q;
}

} // namespace

CSteadyCamObject::CSteadyCamObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "SteadyCamDataChunk")
{
    StateStore& saved = state();
    saved.packed("sDataChunkSaveStruct", 2)
        .field(settings.hideAttachedCam)
        .field(settings.hideFollowCam);
    saved.stored("cSteadyCamNodetranslationalResponseFactor", settings.translationalResponseFactor);
    saved.stored("cSteadyCamNoderotationalResponseFactor", settings.rotationalResponseFactor);
    saved.stored("bFirstTime", bFirstTime_);
    saved.nearest("ancSteadyCamNodeqTransMem", memory_);
}

void CSteadyCamObject::runStarts(double time)
{
    if (!node(kAttachedCam).exists())
        return;
    if (bFirstTime_)
        memory_ = attached(time); // so that the first frame doesn't jump
    bFirstTime_ = false;
}

QTransformd CSteadyCamObject::attached(double time) const
{
    return splitPose(node(kAttachedCam).global(time)).transform;
}

void CSteadyCamObject::step(double time)
{
    if (!node(kAttachedCam).exists())
        return;
    const double dt = stepLength();
    FollowingPose follower(node(kFollowCam), time, dt);
    const QTransformd wanted = attached(time);

    Vector3d& position = follower.transform.translation;
    smoothing(memory_.translation, wanted.translation, settings.translationalResponseFactor, dt);
    smoothing(position, memory_.translation, settings.translationalResponseFactor, dt);

    Quatd& rotation = follower.transform.rotation;
    memory_.rotation = nearTo(memory_.rotation, wanted.rotation);
    rotation = nearTo(rotation, memory_.rotation);
    smoothing(memory_.rotation, wanted.rotation, settings.rotationalResponseFactor, dt);
    smoothing(rotation, memory_.rotation, settings.rotationalResponseFactor, dt);

    follower.write();
}

void CSteadyCamObject::itemActed(std::string_view label)
{
    if (label != kReInitialize)
        return;
    runtime().pushUndo(new CVariableModUndo<bool>(&bFirstTime_));
    bFirstTime_ = true;
}

} // namespace tvw::rgs::addon
