#include "gui/qt/popup_menu.h"

#include "gui/attributes.h"

#include <QCursor>
#include <QMenu>

namespace tvw::gui {

using util::xml::Element;

namespace {

QString text(const Element& entry)
{
    return QString::fromStdString(entry.attributeValue("label"));
}

void fill(QMenu& menu, const Element& popup)
{
    for (const Element& entry : popup.children()) {
        if (entry.name() == "separator") {
            menu.addSeparator();
        } else if (entry.name() == "popup") {
            fill(*menu.addMenu(text(entry)), entry);
        } else if (entry.name() == "item") {
            int id = kNoId;
            bool grayed = false;
            readValue(entry.attributeValue("id"), id);
            readValue(entry.attributeValue("grayed"), grayed);
            QAction* const action = menu.addAction(text(entry));
            action->setData(id);
            action->setEnabled(!grayed);
        }
    }
}

} // namespace

std::unique_ptr<QMenu> makePopupMenu(const Element& popup, QWidget& owner)
{
    auto menu = std::make_unique<QMenu>(&owner);
    fill(*menu, popup);
    return menu;
}

std::optional<int> runPopupMenu(const Element& popup, QWidget& owner)
{
    const std::unique_ptr<QMenu> menu = makePopupMenu(popup, owner);
    const QAction* const chosen = menu->exec(QCursor::pos());
    return chosen ? std::optional(chosen->data().toInt()) : std::nullopt;
}

} // namespace tvw::gui
