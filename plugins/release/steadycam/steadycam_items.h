/// The SoftMotionCam's parameters, and the table that shows them.
#pragma once

#include "plugins/common/camera_pair.h"

namespace tvw::rgs::addon::steadycam {

struct Settings : GeneralModes
{
    bool hideAttachedCam = false;
    bool hideFollowCam = false;
    double translationalResponseFactor = 0.1; ///< share of the way per 0.04 s
    double rotationalResponseFactor = 0.4;    ///< share of the way per 0.04 s
};

inline constexpr std::string_view kReInitialize = "Re-Initialize";
inline constexpr std::string_view kHideAttachedCam = "Hide AttachedCam";
inline constexpr std::string_view kHideFollowCam = "Hide FollowCam";

using S = Settings;
using I = Items<Settings>;

inline constexpr std::array kItems{
    I::group("General Modes"),
    I::button(kReInitialize, "Re-initializes the camera position and orientation."),
    I::checkBox<&S::hideAttachedCam>(kHideAttachedCam, kHideAttachedCam, kHeard),
    I::checkBox<&S::hideFollowCam>(kHideFollowCam, kHideFollowCam, kHeard),
    I::end(),
    I::group("Camera Parameters"),
    I::spinner<&S::translationalResponseFactor>(
        "Translation Response Factor",
        "This factor determines how fast the camera should react to changes in position",
        {1e-08, 100, 0.001}, kLive),
    I::spinner<&S::rotationalResponseFactor>(
        "Rotation Response Factor",
        "This factor determines how fast the camera should react to changes in rotation",
        {1e-08, 100, 0.001}, kLive),
    I::end(),
};
static_assert(isSound(kItems));

inline constexpr HideSwitch kSwitches[] = {
    hideSwitch<S, &S::hideAttachedCam>(kHideAttachedCam, NodeGroup::First),
    hideSwitch<S, &S::hideFollowCam>(kHideFollowCam, NodeGroup::Second),
};

inline constexpr ToolSpec kSpec{.nodes = kCameraPair, .switches = kSwitches};

} // namespace tvw::rgs::addon::steadycam
