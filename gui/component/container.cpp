#include "gui/component/container.h"

namespace tvw::gui::component {

namespace {

using F = ContainerFields;
constexpr Row<F> kFramedRows[] = {
    row<&F::style>("style"),
    row<&F::halign>("halign"),
    row<&F::valign>("valign"),
};
constexpr Row<F> kAlignedRows[] = {
    row<&F::halign>("halign"),
    row<&F::valign>("valign"),
};

constexpr F bordered()
{
    F fields;
    fields.style = FrameStyle::Normal;
    return fields;
}

} // namespace

void readSpacing(const util::xml::Element& element, ContainerFields& fields)
{
    readSides(element, "padding", fields.padding);
    readSides(element, "margin", fields.margin);
}

void writeSpacing(const ContainerFields& fields, util::xml::Element& element)
{
    if (fields.padding != Sides{})
        element.setAttribute("padding", textOf(fields.padding));
    if (fields.margin != Sides{})
        element.setAttribute("margin", textOf(fields.margin));
}

List::List(const util::xml::Element& element) : FramedContainer(kKind, kFramedRows, element)
{
    fields_.vertical = element.attributeValue("type") != "horizontal";
}

void List::writeXml(util::xml::Element& element) const
{
    FramedContainer::writeXml(element);
    if (!fields_.vertical)
        element.setAttribute("type", "horizontal");
}

void List::setDirection(bool vertical)
{
    fields_.vertical = vertical;
    applyLayout();
}

Border::Border(const util::xml::Element& element)
    : FramedContainer(kKind, kFramedRows, element, bordered())
{
}

Group::Group(const util::xml::Element& element) : Container(kKind, kAlignedRows, element) {}

} // namespace tvw::gui::component
