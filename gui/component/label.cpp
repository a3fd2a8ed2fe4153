#include "gui/component/label.h"

namespace tvw::gui::component {

namespace {

using F = LabelFields;
constexpr Row<F> kRows[] = {
    row<&F::imagePath>("imagepath"),   row<&F::style>("style"), row<&F::halign>("halign"),
    row<&F::valign>("valign"),         row<&F::wrap>("wrap"),   row<&F::selectable>("selectable"),
    row<&F::hyperlinks>("hyperlinks"),
};

} // namespace

Label::Label(const util::xml::Element& element) : FieldComponent(kKind, kRows, element)
{
    if (!element.text().empty())
        StdComponent::setLabel(std::string(element.text()));
}

void Label::writeXml(util::xml::Element& element) const
{
    FieldComponent::writeXml(element);
    if (label().empty())
        return;
    // The text goes first, where a writer leaves it on the line as it is.
    util::xml::Tag written(kTag);
    for (std::size_t i = 0; i < element.attributeCount(); ++i) {
        const util::xml::Attribute attribute = element.attributeAt(i);
        if (attribute.key != "label")
            written.setAttribute(attribute.key, attribute.value);
    }
    written.addChild(util::xml::Text(label()));
    for (const util::xml::Element& child : element.children())
        written.addChild(child);
    element.assign(written);
}

void Label::setFlags(int flags)
{
    fields_.selectable = (flags & kSelectable) != 0;
    fields_.hyperlinks = (flags & kHyperlinks) != 0;
}

int Label::flags() const
{
    return (fields_.selectable ? kSelectable : 0) | (fields_.hyperlinks ? kHyperlinks : 0);
}

} // namespace tvw::gui::component
