/// The StateMachine's parameters, and the tables that show them.
#pragma once

#include "plugins/common/state_machine.h"

namespace tvw::rgs::addon::statemachine {

struct Settings : machine::Settings
{
    static constexpr machine::StateLimits kAll{
        .dMaxVel = 10.0, .dMaxAngVel = 90.0, .dVelRespFactor = 0.4, .dRotVelRespFactor = 0.4};
    static constexpr machine::StateLimits kEach{.dVelRespFactor = 0.2, .dRotVelRespFactor = 0.2};

    constexpr Settings() : machine::Settings(kAll, kEach) {}
};

using S = Settings;
using I = Items<Settings>;
using Limits = machine::StateLimits;

struct LimitRows
{
    template <auto Access>
    static constexpr std::array<Item<S>, 4> make()
    {
        constexpr double kMost = 100000000.0;
        constexpr Bounds kFactor{1e-08, 1, 0.001};
        constexpr std::string_view kFactorTip =
            "The smaller the value the softer the CurrentState approaches the states. A value "
            "above the scene FPS will yield an instant jump to the chosen state.";
        return {
            I::spinner<[](S& s) -> double& { return Access(s).dMaxVel; }>(
                "Maximum Linear Velocity (units/sec)",
                "Sets the maximum speed of the CurrentState mesh. 0.0 will switch off the limiter.",
                {0, kMost, 0.001}, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dMaxAngVel; }>(
                "Maximum Rotation Velocity (Degs/sec)",
                "Sets the maximum angular speed of the CurrentState mesh. 0.0 will switch off the "
                "limiter.",
                {0, kMost, 0.1}, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dVelRespFactor; }>(
                "Linear Response Factor", kFactorTip, kFactor, kLive),
            I::spinner<[](S& s) -> double& { return Access(s).dRotVelRespFactor; }>(
                "Rotation Response Factor", kFactorTip, kFactor, kLive),
        };
    }
};

inline constexpr std::array kItems =
    join(machine::firstItems<S>("StateMachine Parameters",
                                "When checked the below settings will override the settings in the "
                                "WantedStateXX groups under them."),
         LimitRows::make<[](S& s) -> machine::StateLimits& { return s.simplified; }>(),
         machine::stateGroups<S, LimitRows>(), machine::lastItems<S>());
static_assert(isSound(kItems));

inline constexpr auto kNodes = machine::nodeRows(nodekind::shape, &shape::actuator);
inline constexpr auto kInputs = machine::inputRows();
inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputs, .inputsBeforeItems = true};

} // namespace tvw::rgs::addon::statemachine
