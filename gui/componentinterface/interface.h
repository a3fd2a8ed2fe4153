/// The base of what application code holds to talk to one kind of component.
#pragma once

#include "gui/component.h"

#include <type_traits>

namespace tvw::gui {

namespace componentinterface {

class Interface
{
public:
    virtual ~Interface() = default;
};

} // namespace componentinterface

/// The interface of a component of that kind; null for null and for any other kind.
template <class Kind>
[[nodiscard]] Kind* toKind(Component* component)
{
    static_assert(std::is_base_of_v<componentinterface::Interface, Kind>);
    if (component == nullptr || tagOf(component) != Kind::kTag)
        return nullptr;
    return static_cast<Kind*>(component->interface());
}

} // namespace tvw::gui
