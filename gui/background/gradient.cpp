#include "gui/background/gradient.h"

#include "gui/color_rows.h"

namespace tvw::gui::background {

using util::xml::Element;

namespace {

using F = GradientFields;
constexpr Row<F> kRows[] = {
    row<&F::startX>("startx"), row<&F::startY>("starty"), row<&F::endX>("endx"),
    row<&F::endY>("endy"),     row<&F::spread>("spread"), row<&F::coordinates>("coordinates"),
};
constexpr Row<GradientStop> kStopRows[] = {row<&GradientStop::position>("pos")};

} // namespace

LinearGradient::LinearGradient(const Element& element)
{
    readAttributes<F>(element, kRows, fields_);
    for (const Element& child : element.children()) {
        if (child.name() != "color")
            continue;
        GradientStop& stop = stops_.emplace_back();
        readAttributes<GradientStop>(child, kStopRows, stop);
        readAttributes<Color>(child, kColorRows, stop.color);
    }
}

void LinearGradient::writeXml(Element& element) const
{
    element.assign(util::xml::Tag("background"));
    element.setAttribute("type", kType);
    writeAttributes<F>(element, kRows, fields_);
    for (const GradientStop& stop : stops_) {
        util::xml::Tag child("color");
        writeAttributes<GradientStop>(child, kStopRows, stop);
        writeAttributes<Color>(child, kColorRows, stop.color);
        element.addChild(child);
    }
}

} // namespace tvw::gui::background
