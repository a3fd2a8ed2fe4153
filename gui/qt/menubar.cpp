#include "gui/qt/menubar.h"

#include <QMenu>
#include <QPointer>

namespace tvw::gui::component::qt {

using util::xml::Element;

namespace {

QString text(const Element& entry)
{
    return QString::fromStdString(entry.attributeValue("label"));
}

} // namespace

Menubar::Menubar(const Element& element) : QtComponent(element)
{
    setNativeMenuBar(false);
    addMenus();
}

void Menubar::rebuild(const Element& element)
{
    component::Menubar::rebuild(element);
    actions_.clear();
    for (QAction* const action : actions()) {
        if (QMenu* const menu = action->menu())
            menu->deleteLater(); // an item of it may be what asks for this
        removeAction(action);
    }
    addMenus();
}

void Menubar::addMenus()
{
    for (const Element& entry : element().children()) {
        if (entry.name() == "menu")
            fill(*addMenu(text(entry)), entry);
    }
}

void Menubar::fill(QMenu& menu, const Element& element)
{
    int menuId = kNoId;
    readValue(element.attributeValue("id"), menuId);
    QObject::connect(&menu, &QMenu::aboutToShow, this, [this, menuId] {
        notify(message::menuAboutToShow, static_cast<std::uint32_t>(menuId));
    });
    for (const Element& entry : element.children()) {
        if (entry.name() == "separator") {
            menu.addSeparator();
        } else if (entry.name() == "menu") {
            fill(*menu.addMenu(text(entry)), entry);
        } else if (entry.name() == "item") {
            QAction* const action = menu.addAction(text(entry));
            const MenuItem& item = *itemAt(actions_.size());
            action->setEnabled(!item.grayed);
            QObject::connect(action, &QAction::triggered, this, [this, id = item.id] {
                notify(message::menuChosen, static_cast<std::uint32_t>(id));
            });
            actions_.push_back(action);
        }
    }
}

void Menubar::setItemGrayed(int id, bool grayed)
{
    component::Menubar::setItemGrayed(id, grayed);
    for (std::size_t i = 0; i < actions_.size(); ++i) {
        if (itemAt(i)->id == id)
            actions_[i]->setEnabled(!grayed);
    }
}

} // namespace tvw::gui::component::qt
