/// The menus of the main window, and what their files need.
#include "app/choose_output.h"
#include "app/main_dialog.h"
#include "app/main_dialog_ids.h"
#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/library_manager.h"
#include "core/paths.h"
#include "core/tool.h"
#include "core/tool_record.h"
#include "gui/box.h"
#include "gui/componentinterface/menubar.h"

#include <QFileDialog>

#include <algorithm>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::CoreImplementation;
using util::xml::Element;

namespace {

constexpr const char* kCreateMenus[kCategories] = {"Create Vehicle tool", "Create Camera tool",
                                                   "Create Accessory tool", "Create Template"};
constexpr const char* kToolHelpMenu = "Tool Help Documentation";

/// The menu of that label, anywhere below; null: none.
Element* menuLabelled(Element& menus, std::string_view label)
{
    for (Element& menu : menus.children()) {
        if (menu.name() == "menu" && menu.attributeValue("label") == label)
            return &menu;
        if (Element* const found = menuLabelled(menu, label))
            return found;
    }
    return nullptr;
}

void addItem(Element* menu, int itemId, const std::string& label)
{
    if (!menu)
        return;
    Element item = util::xml::Tag("item");
    item.setAttribute("id", std::to_string(itemId));
    item.setAttribute("label", label);
    menu->addChild(item);
}

void say(const std::string& text, const std::string& title)
{
    CoreImplementation::instance().messageBox(nullptr, text, title,
                                              gui::box::ok | gui::box::warning, false);
}

} // namespace

void MainDlg::fillMenus()
{
    auto* const bar = as<ci::Menubar>(id::menubar);
    if (!bar)
        return;
    Element menus = bar->element();
    addToolItems(menus);
    bar->rebuild(menus);
    grayMenuItems();
}

void MainDlg::addToolItems(Element& menus)
{
    for (const char* const label : kCreateMenus) {
        Element* const menu = menuLabelled(menus, label);
        while (menu && menu->childCount() > 0)
            menu->removeChild(menu->childAt(0));
    }
    Element* const help = menuLabelled(menus, kToolHelpMenu);
    while (help && help->childCount() > 0)
        help->removeChild(help->childAt(0));

    const std::vector<core::Tool*> inOrder = core::LibraryManager::instance().listTools(false);
    for (int i = 0; i < kCategories; ++i) {
        const auto category = static_cast<Category>(i);
        for (core::Tool* const tool : toolsOf(category)) {
            const auto place = std::find(inOrder.begin(), inOrder.end(), tool) - inOrder.begin();
            addItem(menuLabelled(menus, kCreateMenus[i]),
                    id::itemFirstTool + static_cast<int>(place), tool->getDisplayName());
            if (category != Category::Template)
                addItem(help, id::itemFirstHelp + static_cast<int>(place), tool->getDisplayName());
        }
    }
}

void MainDlg::grayMenuItems()
{
    auto* const bar = as<ci::Menubar>(id::menubar);
    if (!bar)
        return;
    const bool gray = !selected() || isRootSelected();
    const bool runs = CoreImplementation::instance().isRunning();
    for (const int item : {id::itemConfigure, id::itemInputs})
        bar->setItemGrayed(item, gray);
    for (const int item : {id::itemDelete, id::itemClone})
        bar->setItemGrayed(item, gray || runs);
    for (const int item : {id::itemBrowse, id::itemSave, id::itemUnplugAll})
        bar->setItemGrayed(item, runs);
}

void MainDlg::handleMenu(int item)
{
    if (handleToolItem(item))
        return;
    const auto open = [](const std::function<void()>& door) {
        if (door)
            door();
    };
    switch (item) {
    case id::itemBrowse:
        browse();
        break;
    case id::itemSave:
        saveSelected();
        break;
    case id::itemUnplugAll:
        unplugAll();
        break;
    case id::itemPreferences:
        open(doors_.openPreferences);
        break;
    case id::itemClose:
        hide();
        break;
    case id::itemConfigure:
        configureSelected();
        break;
    case id::itemInputs:
        inputsOfSelected();
        break;
    case id::itemDelete:
        deleteSelected();
        break;
    case id::itemClone:
        cloneSelected();
        break;
    case id::itemUpdates:
        open(doors_.openUpdates);
        break;
    case id::itemAbout:
        open(doors_.openAbout);
        break;
    case id::itemHelp:
    case id::itemWebsite:
    case id::itemForum:
        CoreImplementation::instance().windows().openHelp("");
        break;
    default:
        break;
    }
}

bool MainDlg::handleToolItem(int item)
{
    if (item < id::itemFirstTool || item >= id::itemToolEnd)
        return false;
    const bool help = item >= id::itemFirstHelp;
    core::Tool* const tool = core::LibraryManager::instance().toolAt(
        item - (help ? id::itemFirstHelp : id::itemFirstTool));
    if (tool && help)
        CoreImplementation::instance().windows().openHelp(tool->name());
    else if (tool)
        create(*tool);
    return true;
}

void MainDlg::browse()
{
    const QString path = QFileDialog::getOpenFileName(
        root()->widget(), "Browse", {}, "Tarvo Pre-Rigged Models (*.prm);;All files (*.*)");
    if (path.isEmpty())
        return;
    core::InstanceReference* const below = isRootSelected() ? nullptr : selected();
    core::UndoScope undo("Create Tool");
    if (const Status loaded =
            CoreImplementation::instance().instances().loadFile(path.toStdString(), below);
        !loaded) {
        undo.cancel();
        say(loaded.reason(), "Error");
    }
}

void MainDlg::saveSelected()
{
    if (!selected())
        return;
    const QString path = chooseOutput(root()->widget(), "Save", {}, "prm files (*.prm)", "prm");
    if (path.isEmpty())
        return;
    Element record;
    core::writeRecord(*CoreImplementation::instance().instances().root(), core::recordflag::plain,
                      record);
    if (const Status saved = record.save(path.toStdString()); !saved)
        say(saved.reason(), "Error");
}

} // namespace tvw::rgs::app
