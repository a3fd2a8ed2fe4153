/// A camera that follows another through two springs, and can bounce.
#pragma once

#include "plugins/release/motionfiltercam/motionfiltercam_items.h"

namespace tvw::rgs::addon {

class CMotionFilterCamObject final : public Tool<motionfiltercam::Settings>
{
public:
    explicit CMotionFilterCamObject(const CreateParam& param);

private:
    void runStarts(double time) override;
    void step(double time) override;

    bool bFirstTime_ = true;

    /// Both velocities as the time line holds them: [m/s] as the translation, [rad/s] in the follower's
    /// own frame as the rotation's x, y and z; its w stays 1.
    QTransformd velocities_;
};

} // namespace tvw::rgs::addon
