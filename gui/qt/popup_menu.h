/// Menus from `popup` elements.
#pragma once

#include <memory>
#include <optional>

class QMenu;
class QWidget;

namespace tvw::util::xml {
class Element;
}

namespace tvw::gui {

/// The menu of the element's items, separators and nested popups; an action's data() is its item's
/// id.
std::unique_ptr<QMenu> makePopupMenu(const util::xml::Element& popup, QWidget& owner);

/// Runs it at the mouse; the id of the item that the user chose, nothing if none.
std::optional<int> runPopupMenu(const util::xml::Element& popup, QWidget& owner);

} // namespace tvw::gui
