/// A titled frame around one component; its title is the label().
#pragma once

#include "gui/componentinterface/container.h"

namespace tvw::gui {

namespace componentinterface {

class Group : public Aligned
{
public:
    static constexpr const char* kTag = "group";
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Group* toGroup(Component* component)
{
    return toKind<componentinterface::Group>(component);
}

} // namespace tvw::gui
