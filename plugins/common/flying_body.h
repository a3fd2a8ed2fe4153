/// A body that flies freely: where it is and where it was, so that whoever lets go of it can give
/// it the speed that it has.
#pragma once

#include "plugins/common/pose.h"
#include "plugins/common/scene_node.h"
#include "plugins/common/state_store.h"

#include <array>
#include <string>

namespace tvw::rgs {

class FlyingBody
{
public:
    void keepIn(StateStore& store, const std::string& prefix)
    {
        newest_ = &store.nearest(prefix + "qTrans", ring_[0]);
        store.nearest(prefix + "qTransPrev", ring_[1]);
        store.nearest(prefix + "qTransPrevPrev", ring_[2]);
    }

    /// Whether the node still stands where a take left the body at a time [s].
    bool continuesAt(const SceneNode& node, double time, double dt) const
    {
        return rgs::continuesAt(newest_->curve(), node.local(time), time, dt);
    }

    /// Takes the node's motion up to a time [s], in steps of h [s].
    void start(const SceneNode& node, double time, double h)
    {
        for (int i = 0; i < 3; ++i)
            ring_[i] = splitPose(node.local(time - i * h)).transform;
    }

    const QTransformd& pose() const { return ring_[0]; }

    void moveTo(const Vector3d& position, const Quatd& orientation)
    {
        ring_[2] = ring_[1];
        ring_[1] = ring_[0];
        ring_[0].translation = position;
        ring_[0].rotation = orientation;
    }

    /// Over the last step of h [s], or over the one before it.
    Vector3d velocity(double h, int stepsBack = 0) const
    {
        return (ring_[stepsBack].translation - ring_[stepsBack + 1].translation) / h;
    }

    /// [rad/s], about the axes of the space that the body is in.
    Vector3d angularVelocity(double h, int stepsBack = 0) const
    {
        return toRotationVector(conjugate(ring_[stepsBack + 1].rotation) *
                                ring_[stepsBack].rotation) /
               h;
    }

private:
    std::array<QTransformd, 3> ring_; ///< the newest first
    const Recorded<AVar_Nearest<QTransformd>>* newest_ = nullptr;
};

} // namespace tvw::rgs
