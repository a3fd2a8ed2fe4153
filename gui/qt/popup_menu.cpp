#include "gui/qt/popup_menu.h"

#include "gui/attributes.h"

#include <QCursor>
#include <QMenu>
#include <QPointer>

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

std::optional<int> runPopupMenu(const Element& popup, QWidget& owner)
{
    const QPointer<QMenu> menu = new QMenu(&owner); // which ends it, if it ends in the meantime
    fill(*menu, popup);
    const QAction* const chosen = menu->exec(QCursor::pos());
    if (!menu)
        return std::nullopt;
    const std::optional<int> id = chosen ? std::optional(chosen->data().toInt()) : std::nullopt;
    delete menu;
    return id;
}

} // namespace tvw::gui
