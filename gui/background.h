/// What is painted under a component.
#pragma once

#include "util/dynamicobject.h"

namespace tvw::util::xml {
class Element;
}

namespace tvw::gui {

class Component;

/// Built by AbstractFactory<Background> from a `background` element, by its `type`. The order of
/// the virtual functions, behind DynamicObject's, is frozen.
class Background : public DynamicObject
{
public:
    /// Fills the whole of the component's widget. Only within a paint event of that widget.
    virtual void paint(Component& component) const = 0;
    virtual void writeXml(util::xml::Element& element) const = 0;
    /// The caller owns it.
    [[nodiscard]] virtual Background* clone() const = 0;
};

} // namespace tvw::gui
