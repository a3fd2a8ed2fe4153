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

    void write(CInterface& runtime, const SceneNode& node, double time, const LensSpinners& wanted)
    {
        const bool turned = wanted.fieldOfView != previous_.fieldOfView && wanted.fieldOfView > 0.0;
        const bool focused = wanted.targetDistance != previous_.targetDistance;
        if (turned || focused)
            withLens(runtime, node, time, [&](CSnapshot_Lens& lens) {
                if (turned)
                    lens.setFieldOfView(wanted.fieldOfView);
                if (focused)
                    lens.setTargetDistance(wanted.targetDistance);
            });
        previous_ = wanted;
    }

private:
    LensSpinners previous_; ///< as last written
};

} // namespace tvw::rgs
