/// The four-wheeler's parameters, and the tables that show them.
#pragma once

#include "plugins/common/items.h"
#include "plugins/common/tool_object.h"
#include "plugins/release/carextended/carextended_parameters.h"

#include <span>

namespace tvw::rgs::addon::carextended {

struct Settings : GeneralModes
{
    CarParameters car;

    double dInitialVelocity = 0.0; ///< percent of the maximum
    double dVelocityConversionMult = 3.6;
    double maximumVelocity = 38.0376; ///< what follows is shown, not set; in the multiplier's units
    double currentVelocity = 0.0;
    double currentPercent = 0.0;
    double secondsTo100 = 3.943466;
    double secondsTo60 = 2.36608;

    bool hideFollowCam = true;
    bool hideDriverCam = true;
    bool hideTopViewCam = true;
    bool bSaveDynamicData = true;
    bool bKeyframeOnlyEssential = false;
    double dSteeringWheelRotMult = 1.0;
    bool bFixateWheelBottomNodes = false;
    bool bMoveWheelCenterNodeToGroundHitPoint = false;
    bool bAlignWheelCenterToGroundNormal = false;
    bool bUseStaticMesh = true;
    bool bStoreGroundMeshData = false;
};

inline constexpr std::string_view kReInitialize = "Re-Initialize Car Attributes";
inline constexpr std::string_view kMultiplier = "Multiplier";
inline constexpr std::string_view kAcceleration = "Acceleration (scale relative)";
inline constexpr std::string_view kGasMaximum = "Gas Pedal (Forw/Backw) Maximum";
inline constexpr std::string_view kTurnBase = "Turn Base (Back Wheel Relative)";
inline constexpr std::string_view kFastRayCast = "Use Fast Ray Cast";
inline constexpr std::string_view kStoreGround = "Store Ground Mesh Data";
inline constexpr std::string_view kHideFollowCam = "Hide Follow Camera";
inline constexpr std::string_view kHideDriverCam = "Hide Driver Camera";
inline constexpr std::string_view kHideTopViewCam = "Hide TopView Camera";

inline constexpr HideSwitch kSwitches[] = {
    hideSwitch<Settings, &Settings::hideFollowCam>(kHideFollowCam, NodeGroup::First),
    hideSwitch<Settings, &Settings::hideDriverCam>(kHideDriverCam, NodeGroup::Second),
    hideSwitch<Settings, &Settings::hideTopViewCam>(kHideTopViewCam, NodeGroup::Third),
};

std::span<const Item<Settings>> items();

} // namespace tvw::rgs::addon::carextended
