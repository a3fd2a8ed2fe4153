#include "gui/component/spinner.h"

#include "gui/message_ids.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tvw::gui::component {

namespace {

using F = SpinnerFields;
constexpr Row<F> kRows[] = {
    row<&F::min>("min"),
    row<&F::max>("max"),
    row<&F::step>("step"),
    row<&F::decimals>("decimals"),
    row<&F::defaultValue>("defaultvalue"),
    row<&F::triggerLength>("triggerlength"),
};

constexpr double kRounding = 0.4999999; ///< a little under a half: halves go down

} // namespace

Spinner::Spinner(const util::xml::Element& element) : FieldComponent(kKind, kRows, element)
{
    setTriggerLength(fields_.triggerLength);
    value_ = std::min(std::max(fields_.defaultValue, fields_.min), fields_.max);
}

int Spinner::valueInt() const
{
    const double rounded = std::floor(value() + kRounding);
    constexpr double kLow = std::numeric_limits<int>::min(),
                     kHigh = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(std::max(rounded, kLow), kHigh));
}

void Spinner::setValue(double value)
{
    const double held = std::min(std::max(value, fields_.min), fields_.max);
    if (held == value_)
        return;
    value_ = held;
    notify(message::spinnerChanged);
}

void Spinner::setTriggerLength(int pixels)
{
    fields_.triggerLength = std::max(pixels, 1);
}

int SpinnerDrag::steps(int pixels, int triggerLength, bool ctrl, bool shift)
{
    accumulated += pixels;
    if (std::abs(accumulated) < triggerLength)
        return 0;
    const int whole = accumulated / triggerLength;
    accumulated -= whole * triggerLength;
    return whole * (ctrl ? 10 : 1) * (shift ? 10 : 1);
}

} // namespace tvw::gui::component
