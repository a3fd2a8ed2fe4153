#include "gui/component/menubar.h"

namespace tvw::gui::component {

using util::xml::Element;

Menubar::Menubar(const Element& element) : StdComponent(kKind, element)
{
    Menubar::rebuild(element);
}

void Menubar::writeXml(Element& element) const
{
    StdComponent::writeXml(element);
    for (const Element& menu : menus_.children()) {
        if (menu.name() == "menu")
            element.addChild(menu);
    }
}

void Menubar::rebuild(const Element& element)
{
    const Element copy = element; // it may be our own
    menus_ = copy;
    items_.clear();
    for (const Element& menu : menus_.children()) {
        if (menu.name() == "menu")
            collect(menu);
    }
}

void Menubar::collect(const Element& menu)
{
    for (const Element& entry : menu.children()) {
        if (entry.name() == "menu")
            collect(entry);
        if (entry.name() != "item")
            continue;
        MenuItem item;
        readValue(entry.attributeValue("id"), item.id);
        item.label = entry.attributeValue("label");
        readValue(entry.attributeValue("grayed"), item.grayed);
        items_.push_back(std::move(item));
    }
}

const MenuItem* Menubar::itemAt(std::size_t index) const
{
    return index < items_.size() ? &items_[index] : nullptr;
}

void Menubar::setItemGrayed(int id, bool grayed)
{
    for (MenuItem& item : items_) {
        if (item.id == id)
            item.grayed = grayed;
    }
}

} // namespace tvw::gui::component
