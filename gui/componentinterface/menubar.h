/// The menus of a window.
#pragma once

#include "gui/componentinterface/interface.h"
#include "util/xml/element.h"

#include <cstddef>
#include <string>

namespace tvw::gui {

struct MenuItem
{
    int id = kNoId;
    std::string label;
    bool grayed = false;
};

namespace componentinterface {

class Menubar : public Interface
{
public:
    static constexpr const char* kTag = "menubar";

    /// Takes the menus of a `menubar` element; a menu may hold further menus.
    virtual void rebuild(const util::xml::Element& element) = 0;
    /// The items of all menus in the order of the element; null behind the last one. Valid until
    /// the next rebuild.
    [[nodiscard]] virtual const MenuItem* itemAt(std::size_t index) const = 0;
    virtual void setItemGrayed(int id, bool grayed) = 0; ///< every item with that id
    /// The element that the menus were built from last.
    [[nodiscard]] virtual const util::xml::Element& element() const = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Menubar* toMenubar(Component* component)
{
    return toKind<componentinterface::Menubar>(component);
}

} // namespace tvw::gui
