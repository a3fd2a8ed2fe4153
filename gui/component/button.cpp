#include "gui/component/button.h"

namespace tvw::gui::component {

namespace {

using F = ButtonFields;

template <ButtonImage Image>
constexpr Row<F> imageRow(const char* key)
{
    constexpr auto kIndex = static_cast<std::size_t>(Image);
    return {key, [](std::string_view text, F& fields) { fields.images[kIndex] = text; },
            [](const F& fields) { return fields.images[kIndex]; },
            [](const F& a, const F& b) { return a.images[kIndex] == b.images[kIndex]; }};
}

constexpr Row<F> kRows[] = {
    row<&F::isDefault>("default"),
    row<&F::flat>("flat"),
    row<&F::toggle>("toggle"),
    row<&F::flatDefault>("flatcolor_default"),
    row<&F::flatPressed>("flatcolor_pressed"),
    row<&F::flatHover>("flatcolor_hover"),
    imageRow<ButtonImage::Default>("img_default"),
    imageRow<ButtonImage::Pressed>("img_pressed"),
    imageRow<ButtonImage::Hover>("img_hover"),
    imageRow<ButtonImage::ToggleDefault>("img_toggle_default"),
    imageRow<ButtonImage::TogglePressed>("img_toggle_pressed"),
    imageRow<ButtonImage::ToggleHover>("img_toggle_hover"),
    imageRow<ButtonImage::Disabled>("img_disabled"),
};

} // namespace

Button::Button(const util::xml::Element& element) : FieldComponent(kKind, kRows, element) {}

void Button::setImage(int index, const std::string& path)
{
    if (index >= 0 && index < kButtonImages)
        fields_.images[static_cast<std::size_t>(index)] = path;
}

} // namespace tvw::gui::component
