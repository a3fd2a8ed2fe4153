/// The MotionFilterCam's parameters, and the table that shows them.
#pragma once

#include "plugins/common/camera_pair.h"

namespace tvw::rgs::addon::motionfiltercam {

/// A spring towards the wanted pose: 1 for positions [1/s^2, 1/s, m/s], 1 for rotations
/// [1/s^2, 1/s, rad/s].
struct SpringSettings
{
    bool fixate = false;      ///< the follower is where it should be: no spring
    double stiffness = 30.0;  ///< "Response Factor"; 0: no spring
    double damping = 5.0;     ///< "Smoothing Factor"
    double maxVelocity = 0.0; ///< 0: no limit
};

struct Settings : GeneralModes
{
    SpringSettings translation;
    SpringSettings rotation;
};

using S = Settings;
using I = Items<Settings>;
inline constexpr double kMost = 1e18;

template <auto Member>
constexpr auto kFixate = [](S& s) -> bool& { return (s.*Member).fixate; };
template <auto Member>
constexpr auto kStiffness = [](S& s) -> double& { return (s.*Member).stiffness; };
template <auto Member>
constexpr auto kDamping = [](S& s) -> double& { return (s.*Member).damping; };
template <auto Member>
constexpr auto kMaxVelocity = [](S& s) -> double& { return (s.*Member).maxVelocity; };

inline constexpr std::array kItems{
    I::group("Motion Filter Parameters"),
    I::checkBox<kFixate<&S::translation>>("Fixate Translations",
                                          "Fixates the camera's translations, ie no filtering"),
    I::spinner<kStiffness<&S::translation>>(
        "Translation Response Factor",
        "This factor determines how fast the camera should react to changes in position",
        {0, kMost, 0.01}, kLive),
    I::spinner<kDamping<&S::translation>>(
        "Translation Smoothing Factor",
        "This factor determines how much the camera will smooth out rebounces at a stop",
        {0, kMost, 0.01}, kLive),
    I::spinner<kMaxVelocity<&S::translation>>(
        "Translation Max Velocity",
        "This factor determines the maximum translation velocity of the camera", {0, kMost, 0.01},
        kLive),
    I::checkBox<kFixate<&S::rotation>>("Fixate Rotations",
                                       "Fixates the camera's rotations, ie no filtering"),
    I::spinner<kStiffness<&S::rotation>>(
        "Rotation Response Factor",
        "This factor determines how fast the camera should react to changes in rotation",
        {0, kMost, 0.01}, kLive),
    I::spinner<kDamping<&S::rotation>>(
        "Rotation Smoothing Factor",
        "This factor determines how much the camera will smooth out rebounces at a stop",
        {0, kMost, 0.01}, kLive),
    I::spinner<kMaxVelocity<&S::rotation>>(
        "Rotation Max Velocity",
        "This factor determines the maximum rotation velocity of the camera", {0, kMost, 0.01}, kLive),
    I::end(),
};
static_assert(isSound(kItems));

inline constexpr ToolSpec kSpec{.nodes = kCameraPair};

} // namespace tvw::rgs::addon::motionfiltercam
