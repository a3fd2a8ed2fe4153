#pragma once

#include "gui/component/items.h"
#include "gui/componentinterface/combobox.h"

namespace tvw::gui::component {

class ComboBox : public ItemComponent<componentinterface::ComboBox>
{
public:
    static constexpr KindInfo kKind{kTag, {16832, 16896}};

    explicit ComboBox(const util::xml::Element& element) : ItemComponent(kKind, element) {}

    void addItem(const std::string& text) override { insertItem(text, -1); }
    bool editable() const override { return fields_.editable; }
    void setEditable(bool value) override { fields_.editable = value; }
};

} // namespace tvw::gui::component
