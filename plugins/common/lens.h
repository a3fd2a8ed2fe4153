/// The lens of a tool's camera. Angles are degrees, as hosts give them; distances scene units.
#pragma once

#include "plugins/common/scene_node.h"
#include "plugins/common/state_store.h"

#include <string>

namespace tvw::rgs {

/// Calls work(lens) with the node's lens at a time [s]; false when the node has none. [live]
template <class Work>
bool withLens(CInterface& runtime, const SceneNode& node, double time, Work&& work)
{
    CSnapshot_Lens* const lens =
        node.exists() ? runtime.getLensSnapshot(node.handle(), time) : nullptr;
    if (!lens)
        return false;
    work(*lens);
    runtime.releaseLensSnapshot(lens);
    return true;
}

/// Two spinners that set a lens when they are turned, and leave it alone otherwise.
struct LensSpinners
{
    double fieldOfView = 0.0;    ///< [degrees]; 0: as the camera has it
    double targetDistance = 0.0; ///< [scene units]
};

class SpunLens
{
public:
    void keepIn(StateStore& store, const std::string& prefix)
    {
        store.nearest(prefix + "fPrevFOV", previous_.fieldOfView);
        store.nearest(prefix + "fPrevTargetDistance", previous_.targetDistance);
    }

    /// At the start of a run the lens is as the spinners say.
    void start(CInterface& runtime, const SceneNode& node, double time, const LensSpinners& wanted)
    {
        write(runtime, node, time, 0.0, wanted);
    }

    /// In a frame of dt [s]. A change lays a key a frame earlier too, with the value there: the
    /// host would glide towards the change from the last key.
    void write(CInterface& runtime, const SceneNode& node, double time, double dt,
               const LensSpinners& wanted)
    {
        if (wanted.fieldOfView != previous_.fieldOfView && wanted.fieldOfView > 0.0)
            change(runtime, node, time, dt, wanted.fieldOfView, &CSnapshot_Lens::getFieldOfView,
                   &CSnapshot_Lens::setFieldOfView);
        if (wanted.targetDistance != previous_.targetDistance)
            change(runtime, node, time, dt, wanted.targetDistance,
                   &CSnapshot_Lens::getTargetDistance, &CSnapshot_Lens::setTargetDistance);
        previous_ = wanted;
    }

private:
    static void change(CInterface& runtime, const SceneNode& node, double time, double dt,
                       double value, double (CSnapshot_Lens::*get)(),
                       void (CSnapshot_Lens::*set)(double))
    {
        if (dt > 0.0)
            withLens(runtime, node, time - dt,
                     [&](CSnapshot_Lens& lens) { (lens.*set)((lens.*get)()); });
        withLens(runtime, node, time, [&](CSnapshot_Lens& lens) { (lens.*set)(value); });
    }

    LensSpinners previous_; ///< as last written
};

} // namespace tvw::rgs
