#include "gui/background/color.h"

#include "gui/color_rows.h"

namespace tvw::gui::background {

ColorFill::ColorFill(const util::xml::Element& element)
{
    readAttributes<Color>(element, kColorRows, color_);
}

void ColorFill::writeXml(util::xml::Element& element) const
{
    element.assign(util::xml::Tag("background"));
    element.setAttribute("type", kType);
    writeAttributes<Color>(element, kColorRows, color_);
}

} // namespace tvw::gui::background
