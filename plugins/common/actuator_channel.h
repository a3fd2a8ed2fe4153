/// The input of an actuator: a device's value through a latch, a limit of its rate of change, a sum
/// and two filters in series. Each stage can be left out.
#pragma once

#include "plugins/common/change_line.h"
#include "plugins/common/state_store.h"
#include "util/filters.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

namespace tvw::rgs {

/// What the user sets of a channel.
struct ActuatorSettings
{
    double responseFactor = 0.2; ///< share of the way per 0.04 s; 0: at once
    double changeLimit = 20.0;   ///< [1/s] of full deflection; 0: none
    bool keepState = false;      ///< a tap holds the value, the next one lets it go
    bool integrate = false;      ///< the value grows while the device is deflected
};

class ActuatorChannel
{
public:
    double raw = 0.0; ///< the device's, -1 to 1; without one the offset

    double output() const { return output_; }
    double integral() const { return integral_; }

    /// The device's value, or what its taps switch on and off: -1, 0 or 1.
    double latched(bool keepState)
    {
        if (!keepState)
            return raw;
        const std::int32_t pressed = std::abs(raw) <= 0.5 ? 0 : raw >= 0.0 ? 1 : -1;
        if (trinaryPrev_ == 0 && pressed != 0)
            trinaryState_ = trinaryState_ != 0 ? 0 : pressed;
        trinaryPrev_ = pressed;
        return trinaryState_;
    }

    /// A value that follows another no faster than the limit [1/s]. dt: step [s].
    double limited(double value, double changeLimit, double dt)
    {
        if (changeLimit == 0.0)
            return value;
        const double reach = changeLimit * dt;
        if (std::abs(value - previous_) > reach)
            value = previous_ + std::copysign(reach, value - previous_);
        return previous_ = value;
    }

    /// The sum of rate x dt, or with `integrate` off the rate itself, as which the sum then goes
    /// on.
    double summed(double rate, bool integrate, double dt)
    {
        return integral_ = integrate ? integral_ + rate * dt : rate;
    }

    /// Both filters, as `smoothing` (cameras) or `response` (actuators) take them.
    void smooth(double value, double factor, double dt)
    {
        smoothing(filterMem_, value, factor, dt);
        smoothing(output_, filterMem_, factor, dt);
    }
    void respond(double value, double factor, double dt)
    {
        response(filterMem_, value, factor, dt);
        response(output_, filterMem_, factor, dt);
    }

    /// Neither filter stays below the value.
    void keepAbove(double minimum)
    {
        if (output_ < minimum)
            output_ = filterMem_ = minimum;
    }

    /// Every stage rests at this value.
    void settle(double value) { previous_ = integral_ = filterMem_ = output_ = value; }

    /// The sum goes on from here.
    void setIntegral(double value) { integral_ = value; }

    /// Registers what the channel leaves for the next tick; number: of the channel in its tool.
    /// A channel at rest costs no records: most of a tool's channels are.
    void keepIn(StateStore& store, int number)
    {
        const std::string end = std::to_string(number);
        keep(store, "ancDILpcInputPrevLimitedInpValue" + end, previous_);
        keep(store, "ancDILpcInputfIntegratedInpValue" + end, integral_);
        keep(store, "ancDILpcInputFilterMem" + end, filterMem_);
        keep(store, "ancDILpcInputiTrinaryState" + end, trinaryState_);
        keep(store, "ancDILpcInputiTrinaryPrev" + end, trinaryPrev_);
        keep(store, "ancDILpcInputOutput" + end, output_);
        keep(store, "ancDILpcInputRaw" + end, raw);
    }

private:
    template <class T>
    static void keep(StateStore& store, std::string name, T& variable)
    {
        store.add<Recorded<ChangeLine<T>>>(std::move(name), variable);
    }

    double previous_ = 0.0; ///< after the limit
    double integral_ = 0.0;
    double filterMem_ = 0.0; ///< after the first filter
    double output_ = 0.0;    ///< after both
    std::int32_t trinaryState_ = 0;
    std::int32_t trinaryPrev_ = 0; ///< the device's value of the last step, as the latch sees it
};

} // namespace tvw::rgs
