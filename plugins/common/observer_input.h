/// The input of a free camera: a device's value, eased by two filters in series.
///
/// Each has two items, "<name> Response Factor" and "<name> Maximum", and an input of its name. A
/// family of inputs is one array of names; rows of items and inputs are made from it.
#pragma once

#include "plugins/common/items.h"
#include "plugins/common/state_store.h"
#include "plugins/common/tool_object.h"
#include "util/filters.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace tvw::rgs {

/// What the user sets of an input.
struct ObserverSettings
{
    double responseFactor = 0.2; ///< share of the way per 0.04 s; 0 and below, 1: at once
    double maximum = 1.0;        ///< output at full deflection

    /// The factor as the filters take it: the item's lower bound lies far below 0, where they would
    /// run away.
    double share() const { return std::clamp(responseFactor, 0.0, 1.0); }
};

struct ObserverInput
{
    double raw = 0.0;       ///< the device's, -1 to 1; without one the offset
    double filterMem = 0.0; ///< after the first filter
    double output = 0.0;    ///< after both

    /// Puts the output to `value` and the filters so that it goes on with the slope that it has:
    /// `previous` is the value one step of dt [s] earlier.
    void launch(double value, double previous, const ObserverSettings& settings, double dt)
    {
        const double factor = settings.share();
        const bool atOnce = factor == 0.0 || factor == 1.0 || dt <= 0.0;
        output = value;
        filterMem =
            atOnce ? value : lagStep(value, previous, factor, dt / tvw::detail::kFilterTimeBase);
    }

    void stop() { filterMem = output = 0.0; }
};

/// What N inputs have in common in the steps of a frame, in which what the device gives and the
/// settings stay. It moves the inputs that it was made from.
template <std::size_t N>
class ObserverDrives
{
public:
    /// Inputs that get to their goal at once are put there. dt: of each step [s].
    ObserverDrives(std::array<ObserverInput, N>& inputs,
                   const std::array<ObserverSettings, N>& settings, double dt)
    {
        for (std::size_t i = 0; i < N; ++i) {
            const Drive drive{&inputs[i], inputs[i].raw * settings[i].maximum,
                              Response(settings[i].share(), dt)};
            if (drive.response.isAtOnce())
                drive.step();
            else
                slow_[slowCount_++] = drive;
        }
    }

    void step() const
    {
        for (std::size_t i = 0; i < slowCount_; ++i)
            slow_[i].step();
    }

private:
    struct Drive
    {
        ObserverInput* input = nullptr;
        double goal = 0.0;
        Response response{};

        void step() const
        {
            response.step(input->filterMem, goal);
            response.step(input->output, input->filterMem);
        }
    };

    std::array<Drive, N> slow_{};
    std::size_t slowCount_ = 0;
};

/// An input as its tool's table has it.
struct ObserverRow
{
    std::string_view name;
    ObserverSettings defaults;
    bool button = false; ///< a control with two states will do
};

template <std::size_t N>
constexpr std::array<ObserverSettings, N> observerDefaults(const std::array<ObserverRow, N>& table)
{
    std::array<ObserverSettings, N> defaults{};
    for (std::size_t i = 0; i < N; ++i)
        defaults[i] = table[i].defaults;
    return defaults;
}

template <std::size_t N>
constexpr std::array<InputRow, N> observerInputRows(const std::array<ObserverRow, N>& table)
{
    namespace kind = unidevice::kind;
    constexpr std::uint32_t kAxis = kind::trinary | kind::analogue | kind::unbounded;
    std::array<InputRow, N> rows{};
    for (std::size_t i = 0; i < N; ++i)
        rows[i] = {.prefix = {},
                   .name = table[i].name,
                   .kindMask = table[i].button ? kAxis | kind::binary : kAxis};
    return rows;
}

namespace detail {

template <class S, auto Array, std::size_t Index>
constexpr std::array<Item<S>, 2> observerItemPair(std::string_view name, unsigned flags)
{
    constexpr double kFar = 1e16;
    const auto row = [&](std::string_view end, double& (*number)(S&), Bounds bounds) {
        return Item<S>{.kind = ItemKind::Spinner,
                       .owner = name,
                       .label = end,
                       .tooltip = name,
                       .number = number,
                       .bounds = bounds,
                       .flags = flags,
                       .tooltipEnd = end};
    };
    return {row(" Response Factor",
                [](S& s) -> double& { return (s.*Array)[Index].responseFactor; },
                {-kFar, 1, 0.001}),
            row(" Maximum", [](S& s) -> double& { return (s.*Array)[Index].maximum; },
                {-kFar, kFar, 0.001})};
}

template <class S, auto Array, std::size_t N, std::size_t... I>
constexpr auto observerItemPairs(const std::array<ObserverRow, N>& table, unsigned flags,
                                 std::index_sequence<I...>)
{
    return join(observerItemPair<S, Array, I>(table[I].name, flags)...);
}

} // namespace detail

/// The items of all inputs. Array: the member of S that holds their settings.
template <class S, auto Array, std::size_t N>
constexpr auto observerItems(const std::array<ObserverRow, N>& table, unsigned flags)
{
    return detail::observerItemPairs<S, Array>(table, flags, std::make_index_sequence<N>{});
}

/// A tool with settings S and N such inputs, which are its first ones.
template <class S, std::size_t N>
class ObserverTool : public Tool<S>
{
protected:
    using Tool<S>::Tool;

    /// Registers what the inputs leave for the next tick, under the prefix and their names.
    void keepInputs(const std::string& prefix, const std::array<ObserverRow, N>& table)
    {
        for (std::size_t i = 0; i < N; ++i) {
            const std::string word = prefix + std::string(table[i].name);
            this->state().nearest(word + "raw", inputs_[i].raw);
            this->state().nearest(word + "filterMem", inputs_[i].filterMem);
            this->state().nearest(word + "output", inputs_[i].output);
        }
    }

    void hear()
    {
        for (std::size_t i = 0; i < N; ++i) {
            inputs_[i].raw = this->input(i).value();
        }
    }

    using Drives = ObserverDrives<N>;

    void follow(const std::array<ObserverSettings, N>& each, double dt)
    {
        Drives(inputs_, each, dt).step();
    }

    std::array<ObserverInput, N> inputs_;
};

} // namespace tvw::rgs
