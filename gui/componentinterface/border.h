/// A frame around one component.
#pragma once

#include "gui/componentinterface/container.h"

namespace tvw::gui {

namespace componentinterface {

class Border : public Framed
{
public:
    static constexpr const char* kTag = "border";
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Border* toBorder(Component* component)
{
    return toKind<componentinterface::Border>(component);
}

} // namespace tvw::gui
