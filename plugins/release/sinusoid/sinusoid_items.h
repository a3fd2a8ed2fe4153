/// The Sinusoid's parameters, and the tables that show them.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/tool_object.h"

#include <numbers>

namespace tvw::rgs::addon::sinusoid {

struct Settings : GeneralModes
{
    double sinusVal = 0.0;       ///< the last value [scene units]
    double userAmplitude = 1.0;  ///< wanted [scene units]
    double userFrequency = 1.0;  ///< wanted [rad/s]
    double responseFactor = 0.1; ///< 0 to 1, share of the way per 0.04 s
    bool sinusAbs = false;
};

inline constexpr std::string_view kUpdateValues = "Update Values";
inline constexpr std::string_view kFrequency = "Angular Frequency";
inline constexpr std::string_view kAmplitude = "Amplitude";
inline constexpr std::string_view kHideDuringRecording = "Hide Helpers During Recording";

using S = Settings;
using I = Items<Settings>;
inline constexpr double kPi = std::numbers::pi;

inline constexpr std::array kItems{
    I::group("Sinus Values"),
    I::button(kUpdateValues, "Click this button to update the Sinus Value."),
    I::spinner<&S::sinusVal>("Current Value", "Shows the Sinus Value.", {-1, 1, 0.01}),
    I::spinner<&S::userFrequency>(kFrequency, "Sets the angular frequency.",
                                  {-100 * kPi, 100 * kPi, kPi / 4}, kLive | kHeard),
    I::spinner<&S::userAmplitude>(kAmplitude, "Sets the amplitude of the sinus wave.",
                                  {-100, 100, 0.1}, kLive | kHeard),
    I::spinner<&S::responseFactor>("Response Factor",
                                   "Sets the Response Factor for the amplitude and frequency.",
                                   {0, 1, 0.01}, kLive),
    I::checkBox<&S::sinusAbs>("Absolute Values", "Set the sinus to absolute values.", kHeard),
    I::end(),
    I::group("General Modes"),
    I::checkBox<&S::hideDuringRecording>(kHideDuringRecording, kHideDuringRecording),
    I::end(),
};
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kReferenceNode, kSinusNode };

inline constexpr NodeRow kNodes[] = {
    {.prefix = {}, .name = "Reference Node", .mesh = &shape::relativeCage, .color = kReferenceColor,
     .keyed = false, .selected = true},
    {.prefix = {}, .name = "SinusNode", .mesh = &shape::target},
};

inline constexpr OutputRow kOutputs[] = {{"Sinus value"}};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .outputs = kOutputs};

} // namespace tvw::rgs::addon::sinusoid
