/// Menus from `popup` elements.
#pragma once

#include <optional>

class QWidget;

namespace tvw::util::xml {
class Element;
}

namespace tvw::gui {

/// Runs the menu of the element's items, separators and nested popups at the mouse. The id of the
/// item that the user chose; nothing if none, or if the owner has ended meanwhile.
std::optional<int> runPopupMenu(const util::xml::Element& popup, QWidget& owner);

} // namespace tvw::gui
