#include "plugins/tool_table.h"

#include "plugins/release/1dpositioner/1dpositioner_C1DPositionerPlugin.h"
#include "plugins/release/1drotator/1drotator_C1DRotatorPlugin.h"
#include "plugins/release/activescaler/activescaler_C1DScalerPlugin.h"
#include "plugins/release/angleruler/angleruler_CAngleRulerPlugin.h"
#include "plugins/release/angularplay/angularplay_CAngularPlayPlugin.h"
#include "plugins/release/autofocuscam/autofocuscam_CAutoFocusCamPlugin.h"
#include "plugins/release/carextended/carextended_CCarCamPlugin.h"
#include "plugins/release/directinputlink/directinputlink_CDirectInputLinkPlugin.h"
#include "plugins/release/distanceruler/distanceruler_CDistanceRulerPlugin.h"
#include "plugins/release/gyro/gyro_CGyroCamPlugin.h"
#include "plugins/release/horrorcam/horrorcam_CHorrorCamPlugin.h"
#include "plugins/release/humanizercam/humanizercam_CHumanizerCamPlugin.h"
#include "plugins/release/lookatcam/lookatcam_CLookAtCamPlugin.h"
#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamPlugin.h"
#include "plugins/release/multistatecam/multistatecam_CMultiStateCamPlugin.h"
#include "plugins/release/observercam/observercam_CObserverCamPlugin.h"
#include "plugins/release/observercamfree/observercamfree_CObserverCamFreePlugin.h"
#include "plugins/release/raycaster/raycaster_CRayCasterPlugin.h"
#include "plugins/release/rectangularplay/rectangularplay_CRectangularPlayPlugin.h"
#include "plugins/release/scaleruler/scaleruler_CScaleRulerPlugin.h"
#include "plugins/release/sinusoid/sinusoid_CSinusoidPlugin.h"
#include "plugins/release/spherecam/spherecam_CSphereCamPlugin.h"
#include "plugins/release/sphericalplay/sphericalplay_CSphericalPlayPlugin.h"
#include "plugins/release/statemachine/statemachine_CStateMachinePlugin.h"
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
    &make<addon::CCarCamPlugin>,          &make<addon::CAutoFocusCamPlugin>,
    &make<addon::CHorrorCamPlugin>,       &make<addon::CHumanizerCamPlugin>,
    &make<addon::CLookAtCamPlugin>,       &make<addon::CMotionFilterCamPlugin>,
    &make<addon::CObserverCamFreePlugin>, &make<addon::CObserverCamPlugin>,
    &make<addon::CSphereCamPlugin>,       &make<addon::CSteadyCamPlugin>,
    &make<addon::CZeroGCamPlugin>,        &make<addon::CGyroCamPlugin>,
    &make<addon::CMultiStateCamPlugin>,   &make<addon::C1DPositionerPlugin>,
    &make<addon::C1DRotatorPlugin>,       &make<addon::C1DScalerPlugin>,
    &make<addon::CAngleRulerPlugin>,      &make<addon::CAngularPlayPlugin>,
    &make<addon::CDirectInputLinkPlugin>, &make<addon::CDistanceRulerPlugin>,
    &make<addon::CRayCasterPlugin>,       &make<addon::CRectangularPlayPlugin>,
    &make<addon::CScaleRulerPlugin>,      &make<addon::CSinusoidPlugin>,
    &make<addon::CSphericalPlayPlugin>,   &make<addon::CStateMachinePlugin>,
};

} // namespace

std::span<const MakePlugin> toolTable()
{
    return kTools;
}

} // namespace tvw::rgs
