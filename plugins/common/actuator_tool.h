/// Tools that turn inputs straight into the motion of one node, in the frame of a cage.
#pragma once

#include "plugins/common/actuator_channel.h"
#include "plugins/common/helper_meshes.h"
#include "plugins/common/tool_object.h"

#include <array>
#include <string>
#include <utility>

namespace tvw::rgs {

/// One channel as the user sets it.
struct ActuatorParameters : ActuatorSettings
{
    double maximum = 1.0; ///< output at full deflection [units or rad]; 0 switches the channel off
    double minimum = 1e-06; ///< of the output, where the tool has such an item
};

template <std::size_t N>
struct ActuatorToolSettings : GeneralModes
{
    static constexpr std::size_t kChannels = N;

    std::array<ActuatorParameters, N> channels{};
};

namespace actuator {

/// Of the devices that fit: those that go both ways.
inline constexpr std::uint32_t kBothWays = 14;

enum NodeIndex : std::size_t { kCage, kActuator };

inline constexpr NodeRow kCageRow{.prefix = {},
                                  .name = "RelativeCageMesh",
                                  .mesh = &shape::relativeCage,
                                  .color = kReferenceColor,
                                  .keyed = false,
                                  .selected = true};
inline constexpr NodeRow kActuatorRow{
    .prefix = {}, .name = "ActuatorMesh", .mesh = &shape::actuator, .parent = kCage};
inline constexpr NodeRow kNodes[] = {kCageRow, kActuatorRow};

template <std::size_t N>
constexpr std::array<InputRow, N> inputRows(const std::array<std::string_view, N>& names)
{
    std::array<InputRow, N> rows{};
    for (std::size_t i = 0; i < N; ++i)
        rows[i] = {.prefix = {}, .name = names[i], .kindMask = kBothWays};
    return rows;
}

template <class S>
constexpr auto generalItems()
{
    constexpr std::string_view kHideHelpers = "Hide Helpers";
    constexpr std::string_view kHideDuringRecording = "Hide Helpers During Recording";
    using I = Items<S>;
    return std::array{
        I::group("General Modes"),
        I::template checkBox<&S::hideHelpers>(kHideHelpers, kHideHelpers, kHeard),
        I::template checkBox<&S::hideDuringRecording>(kHideDuringRecording, kHideDuringRecording),
    };
}

/// The rows of channel Index, by the parts that channels have in common.
template <class S, std::size_t Index>
struct ChannelRows
{
    using I = Items<S>;
    std::string_view name;

    constexpr Item<S> response() const
    {
        return I::template spinner<[](S& s) -> double& {
            return s.channels[Index].responseFactor;
        }>(" Response Factor", "How quickly the to respond to input value changes.", {0, 1, 0.001},
           kLive, name);
    }
    constexpr Item<S> minimum(Bounds bounds) const
    {
        return I::template spinner<[](S& s) -> double& { return s.channels[Index].minimum; }>(
            " Minimum", "The minimum value of the input.", bounds, kLive, name);
    }
    constexpr Item<S> maximum(std::string_view tooltip, Bounds bounds) const
    {
        return I::template spinner<[](S& s) -> double& { return s.channels[Index].maximum; }>(
            " Maximum", tooltip, bounds, kLive, name);
    }
    constexpr Item<S> changeLimit() const
    {
        return I::template spinner<[](S& s) -> double& { return s.channels[Index].changeLimit; }>(
            " Change Limit",
            "This parameter limits the rate of change (the velocity) of the input.",
            {0, 1000, 0.01}, kLive, name);
    }
    constexpr Item<S> keepState() const
    {
        return I::template checkBox<[](S& s) -> bool& { return s.channels[Index].keepState; }>(
            " Keep Trinary State",
            "If checked the input value is held until activated again by which it returns to zero. "
            "If an analog input is used the trigger value is 0.5 (or -0.5).",
            kPlain, name);
    }
    constexpr Item<S> integrate() const
    {
        return I::template checkBox<[](S& s) -> bool& { return s.channels[Index].integrate; }>(
            " Integrate",
            "If checked the input value is integrated (the value is increased/decreased until the "
            "input value is zero again).",
            kPlain, name);
    }
};

/// The five rows of each channel that moves or turns.
template <class S, std::size_t N>
constexpr auto motionItems(const std::array<std::string_view, N>& names)
{
    const auto rows = [&]<std::size_t Index>() {
        const ChannelRows<S, Index> channel{names[Index]};
        return std::array{
            channel.response(),
            channel.maximum("The maximum/minimum value of the input.", {0, 1e+16, 0.001}),
            channel.changeLimit(), channel.keepState(), channel.integrate()};
    };
    return [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        return join(rows.template operator()<I>()...);
    }
    (std::make_index_sequence<N>{});
}

} // namespace actuator

/// S: an `ActuatorToolSettings`. Nodes begin with the cage and the actuator, input i is channel
/// i's.
template <class S>
class ActuatorTool : public Tool<S>
{
protected:
    static constexpr std::size_t kChannels = S::kChannels;
    using Outputs = std::array<double, kChannels>;

    enum class Range { BothWays, AboveMinimum };

    ActuatorTool(const CCamera::CreateParam& param, const ToolSpec& spec,
                 std::span<const Item<S>> items, Range range)
        : Tool<S>(param, spec, items, "DILDataChunk"), range_(range)
    {
        StateStore& saved = this->state();
        flags_ = &saved.packed("sDataChunkSaveStruct", 3)
                      .field(this->settings.hideHelpers)
                      .field(this->settings.hideDuringRecording);
        for (std::size_t i = 0; i < kChannels; ++i) {
            const std::string end = std::to_string(i);
            ActuatorParameters& channel = this->settings.channels[i];
            saved.stored("cDILpcInputbIsTrinaryStateValue" + end, channel.keepState);
            saved.stored("cDILpcInputbIsIntegratedValue" + end, channel.integrate);
            saved.stored("fChangeLimit" + end, channel.changeLimit);
            channels_[i].keepIn(saved, static_cast<int>(i));
        }
    }

    /// For the tool's own flag, in its constructor.
    PackedState& savedFlags() { return *flags_; }

    /// The actuator in the cage for these outputs of the channels.
    virtual Matrix4 poseOf(const Outputs& outputs) const = 0;

    /// The start shows what the channels hold, so that the first frame does not jump.
    void runStarts(double time) override
    {
        for (std::size_t i = 0; i < kChannels; ++i) {
            if (this->settings.channels[i].keepState)
                channels_[i].raw = 0.0;
            if (range_ == Range::AboveMinimum)
                channels_[i].keepAbove(this->settings.channels[i].minimum);
        }
        writePose(time);
    }

    void step(double time) override
    {
        const double dt = this->stepLength();
        for (std::size_t i = 0; i < kChannels; ++i) {
            channels_[i].raw = this->input(i).value();
            advance(channels_[i], this->settings.channels[i], dt);
        }
        writePose(time);
    }

private:
    void advance(ActuatorChannel& channel, const ActuatorParameters& wanted, double dt) const
    {
        const double value =
            channel.limited(channel.latched(wanted.keepState), wanted.changeLimit, dt);
        channel.respond(channel.summed(value, wanted.integrate, dt) * wanted.maximum,
                        wanted.responseFactor, dt);
        if (range_ == Range::AboveMinimum)
            channel.keepAbove(wanted.minimum);
    }

    void writePose(double time)
    {
        Outputs outputs;
        for (std::size_t i = 0; i < kChannels; ++i)
            outputs[i] = channels_[i].output();
        this->node(actuator::kActuator).setLocal(time, poseOf(outputs));
    }

    Range range_;
    PackedState* flags_ = nullptr;
    std::array<ActuatorChannel, kChannels> channels_;
};

} // namespace tvw::rgs
