/// A list of texts.
#pragma once

#include "gui/componentinterface/items.h"

namespace tvw::gui {

namespace componentinterface {

class ListBox : public Items
{
public:
    static constexpr const char* kTag = "listbox";
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::ListBox* toListBox(Component* component)
{
    return toKind<componentinterface::ListBox>(component);
}

} // namespace tvw::gui
