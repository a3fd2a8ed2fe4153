/// The HumanizerCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/tool_object.h"

namespace tvw::rgs::addon::humanizercam {

/// An input that the tool does not have: its two numbers stand in the profiles, and do nothing.
struct UnusedInput
{
    double responseFactor = 1.0;
    double maximum = 1.0;
};

struct Settings : GeneralModes
{
    double shakeMultiplier = 10.0; ///< [hundredths]: the part of the amplitude that is always there
    double yawShake = 500.0;       ///< size of a full kick by axis
    double pitchShake = 200.0;
    double rollShake = 100.0;
    double damping = 0.03;          ///< share of the way per 0.04 s, of each of two filters
    double irregularity = 20;       ///< exponent: how rare the strong kicks are
    double threshold = 10.0;        ///< [percent] of a full kick: weaker ones are left out
    double amplitudeResponse = 1.0; ///< share of the way per 0.04 s
    double amplitudeMaximum = 4.0;  ///< [hundredths] at full deflection
    std::array<UnusedInput, 3> unused;
};

inline constexpr std::string_view kReInitialize = "Re-Initialize";

using S = Settings;
using I = Items<Settings>;
inline constexpr double kMost = 1e16;

inline constexpr std::array kUsedItems{
    I::group("Camera Parameters"),
    I::button(kReInitialize, "Re-initializes the camera position and orientation."),
    I::spinner<&S::shakeMultiplier>("Shake Multiplier", "Shake Multiplier", {0, kMost, 0.01},
                                    kLive),
    I::spinner<&S::yawShake>("Yaw Shake", "Yaw Shake", {0, kMost, 0.1}, kLive),
    I::spinner<&S::pitchShake>("Pitch Shake", "Pitch Shake", {0, kMost, 0.1}, kLive),
    I::spinner<&S::rollShake>("Roll Shake", "Roll Shake", {0, kMost, 0.1}, kLive),
    I::spinner<&S::damping>("Damping Factor", "Damping Factor", {1e-8, 1, 0.0001}, kLive),
    I::spinner<&S::irregularity>("Irregularity", "Irregularity", {0.1, 1000, 0.01}, kLive),
    I::spinner<&S::threshold>("Shaker Threshold", "Shaker Threshold", {0, 100, 0.1}, kLive),
    I::end(),
    I::group("Input Property Parameters"),
    I::spinner<&S::amplitudeResponse>("Shaker Amplitude Response Factor",
                                      "Shaker Amplitude Response Factor", {1e-8, 1, 0.001}, kLive),
    I::spinner<&S::amplitudeMaximum>("Shaker Amplitude Maximum", "Shaker Amplitude Maximum",
                                     {0, kMost, 0.001}, kLive),
};

template <std::size_t Index>
inline constexpr std::array kUnusedPair{
    I::spinner<[](S& s) -> double& { return s.unused[Index].responseFactor; }>(
        " Response Factor", " Response Factor", {1e-8, 1, 0.001}),
    I::spinner<[](S& s) -> double& { return s.unused[Index].maximum; }>(" Maximum", " Maximum",
                                                                        {0, kMost, 0.001}),
};

/// The three nameless pairs stand last, so that profiles keep their numbers.
inline constexpr auto kItems =
    join(kUsedItems, kUnusedPair<0>, kUnusedPair<1>, kUnusedPair<2>, std::array{I::end()});
static_assert(isSound(join(kUsedItems, kUnusedPair<0>, std::array{I::end()})));

inline constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "HumanizerCam",
     .mesh = &shape::camera,
     .color = kCameraColor,
     .kind = nodekind::camera,
     .selected = true},
};

inline constexpr InputRow kInputs[] = {
    {.prefix = {},
     .name = "Shaker Amplitude",
     .kindMask = unidevice::kind::trinary | unidevice::kind::analogue | unidevice::kind::unbounded},
};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputs};

} // namespace tvw::rgs::addon::humanizercam
