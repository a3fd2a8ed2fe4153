#pragma once

#include "gui/component/items.h"
#include "gui/componentinterface/listbox.h"

namespace tvw::gui::component {

class ListBox : public ItemComponent<componentinterface::ListBox>
{
public:
    static constexpr KindInfo kKind{kTag, {16832, 16896}};

    explicit ListBox(const util::xml::Element& element) : ItemComponent(kKind, element) {}
};

} // namespace tvw::gui::component
