/// Components in a row or a column.
#pragma once

#include "gui/componentinterface/container.h"

namespace tvw::gui {

namespace componentinterface {

class List : public Framed
{
public:
    static constexpr const char* kTag = "list";

    virtual void setDirection(bool vertical) = 0;
    [[nodiscard]] virtual bool direction() const = 0; ///< true: vertical
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::List* toList(Component* component)
{
    return toKind<componentinterface::List>(component);
}

} // namespace tvw::gui
