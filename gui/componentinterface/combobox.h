/// A list of texts of which one shows.
#pragma once

#include "gui/componentinterface/items.h"

namespace tvw::gui {

namespace componentinterface {

/// What application code changes here tells no listener.
class ComboBox : public Items
{
public:
    static constexpr const char* kTag = "combobox";

    virtual void addItem(const std::string& text) = 0; ///< behind the last one
    [[nodiscard]] virtual bool editable() const = 0;
    virtual void setEditable(bool value) = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::ComboBox* toComboBox(Component* component)
{
    return toKind<componentinterface::ComboBox>(component);
}

} // namespace tvw::gui
