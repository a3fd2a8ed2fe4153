/// The input of a vehicle: a device's value on its way to what the model uses.
///
/// The device gives `dInput`; the tool's rules bend it; `dValue` follows `dMaximum` x `dInput`. The
/// two parameters of each channel are items, declared by a row-maker.
#pragma once

#include "plugins/common/items.h"
#include "plugins/common/tool_object.h"
#include "unidevice/control.h"
#include "util/filters.h"

#include <array>
#include <string_view>
#include <utility>

namespace tvw::rgs {

struct InputChannel
{
    bool bUnipolar = false; ///< 0 to 1, else -1 to 1
    std::string_view name;
    std::string_view tooltip;
    double dInput = 0.0;
    double dValue = 0.0;
    double dResponseFactor = 1.0; ///< 0 to 1, share of the way per 0.04 s; 0: at once
    double dMaximum = 1.0;        ///< value at full deflection

    void follow(double dt) { smoothing(dValue, dMaximum * dInput, dResponseFactor, dt); }

    /// Share of the maximum; 0 where that is 0.
    double share() const { return dMaximum != 0.0 ? dValue / dMaximum : 0.0; }
};

/// A new property's exponent: fine near the middle, full at the end.
inline constexpr double kVehicleExponent = 1.3;

constexpr InputRow inputRow(const InputChannel& channel)
{
    namespace kind = unidevice::kind;
    constexpr std::uint32_t kBothWays = kind::trinary | kind::analogue | kind::unbounded;
    return {.prefix = {},
            .name = channel.name,
            .kindMask = channel.bUnipolar ? kBothWays | kind::binary : kBothWays,
            .exponent = kVehicleExponent};
}

template <std::size_t N>
constexpr std::array<InputRow, N> inputRows(const std::array<InputChannel, N>& channels)
{
    std::array<InputRow, N> rows{};
    for (std::size_t i = 0; i < N; ++i)
        rows[i] = inputRow(channels[i]);
    return rows;
}

/// The rows "<name> Response Factor" and "<name> Maximum" of one channel. Channels: a captureless
/// lambda from S& to its array of channels.
template <class S, auto Channels, std::size_t Index>
constexpr std::array<Item<S>, 2> channelItems(const InputChannel& channel, Bounds response,
                                              Bounds maximum)
{
    const auto makeRow = [&](std::string_view end, double& (*number)(S&), Bounds bounds) {
        return Item<S>{.kind = ItemKind::Spinner,
                       .owner = channel.name,
                       .label = end,
                       .tooltip = channel.tooltip,
                       .number = number,
                       .bounds = bounds,
                       .flags = kHeard};
    };
    std::array<Item<S>, 2> rows{
        makeRow(
            " Response Factor", [](S& s) -> double& { return Channels(s)[Index].dResponseFactor; },
            response),
        makeRow(
            " Maximum", [](S& s) -> double& { return Channels(s)[Index].dMaximum; }, maximum)};
    rows[0].tooltipEnd = ": Response Factor";
    rows[1].tooltipEnd = ": Maximum";
    return rows;
}

} // namespace tvw::rgs
