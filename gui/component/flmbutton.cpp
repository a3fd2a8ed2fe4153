#include "gui/component/flmbutton.h"

namespace tvw::gui::component {

namespace {

using F = FlmButtonFields;

template <std::size_t Index>
constexpr Row<F> imageRow(const char* key)
{
    return {key, [](std::string_view text, F& fields) { fields.images[Index] = text; },
            [](const F& fields) { return fields.images[Index]; },
            [](const F& a, const F& b) { return a.images[Index] == b.images[Index]; }};
}

constexpr Row<F> kRows[] = {
    imageRow<0>("img_default"), imageRow<1>("img_pressed"),
    imageRow<2>("img_hover"),   row<&F::focusMarker>("focusmarkercolor"),
    row<&F::delay>("delay"),
};

} // namespace

FlmButton::FlmButton(const util::xml::Element& element) : FieldComponent(kKind, kRows, element) {}

void FlmButton::setImage(int index, const std::string& path)
{
    if (index >= 0 && index < static_cast<int>(fields_.images.size()))
        fields_.images[static_cast<std::size_t>(index)] = path;
}

} // namespace tvw::gui::component
