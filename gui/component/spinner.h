#pragma once

#include "gui/componentinterface/spinner.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

struct SpinnerFields
{
    double min = 0.0, max = 1.0, step = 0.01, defaultValue = 0.0;
    int decimals = 4;
    int triggerLength = 1; ///< [pixels]
};

class Spinner : public FieldComponent<componentinterface::Spinner, SpinnerFields>
{
public:
    static constexpr KindInfo kKind{kTag, {16896, 16960}};

    explicit Spinner(const util::xml::Element& element);

    double value() const override { return value_; }
    int valueInt() const override;
    void setValue(double value) override;
    double min() const override { return fields_.min; }
    double max() const override { return fields_.max; }
    void setMin(double value) override { fields_.min = value; }
    void setMax(double value) override { fields_.max = value; }
    double step() const override { return fields_.step; }
    void setStep(double value) override { fields_.step = value; }
    int triggerLength() const override { return fields_.triggerLength; }
    void setTriggerLength(int pixels) override;
    int decimals() const override { return fields_.decimals; }
    void setDecimals(int count) override { fields_.decimals = count; }
    void setDefault(double value) override { fields_.defaultValue = value; }
    double defaultValue() const override { return fields_.defaultValue; }

private:
    double value_ = 0.0;
};

/// Turns the way of a vertical drag into steps.
struct SpinnerDrag
{
    int accumulated = 0; ///< [pixels], upward positive

    /// Adds a movement; the steps to take for it. A pixel count below triggerLength stays for
    /// later. Ctrl takes ten steps for one, Shift ten as well, both a hundred.
    int steps(int pixels, int triggerLength, bool ctrl, bool shift);
};

} // namespace tvw::gui::component
