#include "gui/component/textbox.h"

namespace tvw::gui::component {

namespace {

constexpr Row<TextBoxFields> kRows[] = {
    row<&TextBoxFields::defaultText>("defaulttext"),
    row<&TextBoxFields::editable>("editable"),
};

} // namespace

TextBox::TextBox(const util::xml::Element& element)
    : FieldComponent(kKind, kRows, element), text_(fields_.defaultText)
{
}

} // namespace tvw::gui::component
