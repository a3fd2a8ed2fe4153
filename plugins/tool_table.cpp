#include "plugins/tool_table.h"

#include "plugins/release/autofocuscam/autofocuscam_CAutoFocusCamPlugin.h"
#include "plugins/release/carextended/carextended_CCarCamPlugin.h"
#include "plugins/release/gyro/gyro_CGyroCamPlugin.h"
#include "plugins/release/horrorcam/horrorcam_CHorrorCamPlugin.h"
#include "plugins/release/humanizercam/humanizercam_CHumanizerCamPlugin.h"
#include "plugins/release/lookatcam/lookatcam_CLookAtCamPlugin.h"
#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamPlugin.h"
#include "plugins/release/observercam/observercam_CObserverCamPlugin.h"
#include "plugins/release/observercamfree/observercamfree_CObserverCamFreePlugin.h"
#include "plugins/release/sinusoid/sinusoid_CSinusoidPlugin.h"
#include "plugins/release/spherecam/spherecam_CSphereCamPlugin.h"
#include "plugins/release/steadycam/steadycam_CSteadyCamPlugin.h"
#include "plugins/release/zerogcam/zerogcam_CZeroGCamPlugin.h"

namespace tvw::rgs {

namespace {

template <class Plugin>
CCameraPlugin* make()
{
    return new Plugin;
}

constexpr MakePlugin kTools[] = {
    &make<addon::CCarCamPlugin>,
    &make<addon::CAutoFocusCamPlugin>,
    &make<addon::CHorrorCamPlugin>,
    &make<addon::CHumanizerCamPlugin>,
    &make<addon::CLookAtCamPlugin>,
    &make<addon::CMotionFilterCamPlugin>,
    &make<addon::CObserverCamFreePlugin>,
    &make<addon::CObserverCamPlugin>,
    &make<addon::CSphereCamPlugin>,
    &make<addon::CSteadyCamPlugin>,
    &make<addon::CZeroGCamPlugin>,
    &make<addon::CGyroCamPlugin>,
    &make<addon::CSinusoidPlugin>,
};

} // namespace

std::span<const MakePlugin> toolTable() { return kTools; }

} // namespace tvw::rgs
