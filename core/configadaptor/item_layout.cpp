#include "core/configadaptor/item_layout.h"

#include <charconv>

namespace tvw::rgs::core::configadaptor {

using util::xml::Element;
using util::xml::Tag;

namespace {

constexpr const char* kRowHeight = "20"; ///< [pixels]

void addTooltip(Element& component, const std::string& tooltip)
{
    if (!tooltip.empty())
        component.addChild(util::xml::TagWithData("tooltip", tooltip));
}

} // namespace

std::string numberText(double value)
{
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

Element makeComponent(const char* tag, const Node& node)
{
    Tag component(tag);
    component.setAttribute("id", std::to_string(node.id()));
    component.setAttribute("fixed", "no");
    component.setAttribute("minheight", kRowHeight);
    component.setAttribute("minwidth", "20");
    addTooltip(component, node.tooltip());
    return component;
}

Element makeRow(const Node& node, const Element& component)
{
    Tag caption("label");
    caption.setAttribute("minheight", kRowHeight);
    caption.addChild(util::xml::Text(node.label()));
    addTooltip(caption, node.tooltip());
    Tag row("list");
    row.setAttribute("type", "horizontal");
    row.addChild(caption);
    row.addChild(component);
    return row;
}

} // namespace tvw::rgs::core::configadaptor
