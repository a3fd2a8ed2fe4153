#include "gui/component/checkbox.h"

namespace tvw::gui {

// The states' names, for the table below.
static void readValue(std::string_view text, CheckState& state)
{
    if (text == "true")
        state = CheckState::On;
    else if (text == "undetermined")
        state = CheckState::Undetermined;
    else if (text == "false")
        state = CheckState::Off;
}

static std::string textOf(CheckState state)
{
    constexpr const char* kNames[] = {"false", "undetermined", "true"};
    return kNames[static_cast<std::size_t>(state)];
}

namespace component {

namespace {

using F = CheckBoxFields;
constexpr Row<F> kRows[] = {
    {"defaultstate",
     [](std::string_view text, F& fields) { gui::readValue(text, fields.defaultState); },
     [](const F& fields) { return gui::textOf(fields.defaultState); },
     [](const F& a, const F& b) { return a.defaultState == b.defaultState; }},
    row<&F::tristate>("tristate"),
    row<&F::paintGroup>("paintgroup"),
};

} // namespace

CheckBox::CheckBox(const util::xml::Element& element)
    : FieldComponent(kKind, kRows, element), state_(fields_.defaultState)
{
}

} // namespace component

} // namespace tvw::gui
