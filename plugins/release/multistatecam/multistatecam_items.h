/// The MultiStateCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/state_machine.h"

namespace tvw::rgs::addon::multistatecam {

struct Settings : machine::Settings
{
    constexpr Settings() : machine::Settings({}, {}) {}
};

using S = Settings;
using I = Items<Settings>;

struct LimitRows
{
    template <auto Access>
    static constexpr std::array<Item<S>, 8> make()
    {
        constexpr double kMost = 100000000.0;
        constexpr Bounds kFactor{0, 1000, 0.001};
        constexpr std::string_view kFactorTip =
            "The smaller the value the softer the CurrentState approaches the states. A value "
            "above the scene FPS will yield an instant jump to the chosen state.";
        return {
            I::spinner<[](S& s) -> double& { return Access(s).dMaxVel; }>(
                "Maximum Translation Velocity (units/sec)",
                "Sets the maximum speed of the CurrentState camera. 0.0 will switch off the "
                "limiter.",
                {0, kMost, 0.001}, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dVelRespFactor; }>(
                "Translation Response Factor", kFactorTip, kFactor, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dMaxAngVel; }>(
                "Maximum Rotation Velocity (degs/sec)",
                "Sets the maximum angular speed of the CurrentState camera. 0.0 will switch off "
                "the limiter.",
                {0, kMost, 0.1}, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dRotVelRespFactor; }>(
                "Rotation Response Factor", kFactorTip, kFactor, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dMaxFov; }>(
                "FOV Maximum Rate of Change (units/sec)",
                "Sets the maximum FOV rate of change of the CurrentState camera. 0.0 will switch "
                "off the limiter.",
                {0, 180, 0.1}, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dFovRespFactor; }>(
                "FOV Response Factor", kFactorTip, kFactor, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dMaxTargetDist; }>(
                "Maximum Target Distance Rate of Change (units/sec)",
                "Sets the maximum target distance rate of change of the CurrentState camera. 0.0 "
                "will switch off the limiter.",
                {0, kMost, 0.1}, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dTDistRespFactor; }>(
                "Target Distance Response Factor", kFactorTip, kFactor, kLive),
        };
    }
};

inline constexpr std::array kItems =
    join(machine::firstItems<S>("MultiStateCam Parameters",
                                "When checked the below settings will override the settings in the "
                                "XXWantedState groups under them."),
         LimitRows::make<[](S& s) -> machine::StateLimits& { return s.simplified; }>(),
         machine::stateGroups<S, LimitRows>(), machine::lastItems<S>());
static_assert(isSound(kItems));

inline constexpr auto kNodes = machine::nodeRows(nodekind::camera, &shape::camera);
inline constexpr auto kInputs = machine::inputRows();
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputs, .inputsBeforeItems = true};

} // namespace tvw::rgs::addon::multistatecam
