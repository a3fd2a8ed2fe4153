#include "app/config_window.h"

#include "app/config_panel.h"
#include "app/config_profiles.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/tool.h"
#include "gui/componentinterface/combobox.h"
#include "gui/componentinterface/dialog.h"
#include "gui/message_ids.h"

#include <QObject>
#include <QTimer>

#include <utility>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::CoreImplementation;

namespace {

namespace id {
enum {
    window = 99,
    tree = 100,
    profile = 101,
    save = 103,
    createNew,
    importFile,
    exportFile,
    remove,
    status = 108,
    close = 109,
    rename = 110,
    saveAs = 111,
    holder = 112,
    saveAsStartup = 113,
    preferences = 114, ///< stands in the panel of "Main Preferences" alone
    scroll = 200
};
}

constexpr int kOfProfiles[] = {id::profile,    id::save,       id::createNew,
                               id::importFile, id::exportFile, id::remove,
                               id::rename,     id::saveAs,     id::saveAsStartup};

core::InstanceReference* rootOfTools()
{
    return CoreImplementation::instance().instances().root();
}

} // namespace

ConfigWindow::ConfigWindow()
    : WindowBase("Config Window"), views_([this] { markChanged(true); }, [this] { dropPanel(); }),
      context_(std::make_unique<QObject>())
{
}

ConfigWindow::~ConfigWindow()
{
    views_.unlink();
    if (auto* const shown = as<ci::Tree>(id::tree))
        shown->setRoot(nullptr, true);
}

// The tree.

/// Builds the window at its first use.
bool ConfigWindow::prepare()
{
    if (root())
        return true;
    if (!rootOfTools() || !build("rgs_config"))
        return false;
    listen({id::window, id::tree, id::close});
    for (const int control : kOfProfiles)
        listen({control});
    tree_ = std::make_unique<ConfigTreeNode>(*rootOfTools());
    if (auto* const shown = as<ci::Tree>(id::tree))
        shown->setRoot(tree_.get(), true);
    return true;
}

void ConfigWindow::open(core::Instance* instance)
{
    if (!prepare())
        return;
    core::Instance* const tool = instance ? instance : shownTool();
    const bool isThere = isShown() && tool == shownTool() && panel_;
    refreshTree();
    if (!isThere)
        showTool(tool && tool->reference() != rootOfTools() ? tool : nullptr);
    selectShown();
    if (auto* const dialog = gui::toDialog(root()))
        dialog->setTopmost(CoreImplementation::instance().getSettings().alwaysOnTop);
    if (isShown())
        raise();
    else
        show();
}

void ConfigWindow::refreshTree()
{
    if (!tree_)
        return;
    tree_->synchronise();
    if (auto* const shown = as<ci::Tree>(id::tree))
        shown->reset();
    showTitle();
}

void ConfigWindow::closeOf(core::Instance& instance)
{
    if (!shown_ || *shown_ == nullptr || *shown_ != instance.reference())
        return;
    shown_ = nullptr;
    dropPanel();
    hide();
}

void ConfigWindow::selectShown()
{
    auto* const shown = as<ci::Tree>(id::tree);
    core::Instance* const tool = shownTool();
    if (shown)
        shown->select(tool ? tree_->nodeOf(*tool->reference()) : tree_.get());
}

void ConfigWindow::showSelected()
{
    auto* const shown = as<ci::Tree>(id::tree);
    core::InstanceReference* const selected = shown ? referenceOf(shown->selected()) : nullptr;
    core::Instance* const tool =
        selected && selected != rootOfTools() ? &selected->instance() : nullptr;
    if (tool != shownTool() || !panel_)
        showTool(tool);
}

// The panel.

core::Instance* ConfigWindow::shownTool() const
{
    core::InstanceReference* const reference = shown_ ? *shown_ : nullptr;
    return reference && reference->isAlive() ? &reference->instance() : nullptr;
}

void ConfigWindow::showTool(core::Instance* tool)
{
    dropPanel();
    shown_ = tool && tool->reference() ? tool->reference()->watch() : nullptr;
    if (tool)
        placeItems(*tool);
    else
        placePreferences();
    for (const int control : kOfProfiles) {
        if (gui::Component* const component = find(control))
            component->setEnabled(tool != nullptr, false);
    }
    showTitle();
    showProfiles();
}

void ConfigWindow::placeItems(core::Instance& tool)
{
    core::configadaptor::Node* const items = tool.configuration();
    gui::ComponentPtr panel =
        items && items->childCount() > 0 ? buildConfigPanel(*items) : buildEmptyPanel();
    if (items && panel) {
        panel->setVariable("[images]", tool.type()->getImagePath());
        views_.link(*items, *panel);
    }
    placePanel(std::move(panel));
}

void ConfigWindow::placePreferences()
{
    placePanel(buildPreferencesPanel(id::preferences));
    if (gui::Component* const button = find(id::preferences)) {
        button->setEnabled(openPreferences_ != nullptr, false);
        listen({id::preferences});
    }
}

void ConfigWindow::placePanel(gui::ComponentPtr panel)
{
    gui::Component* const scroll = find(id::scroll);
    if (!scroll || !panel)
        return;
    panel_ = panel.release();
    scroll->addChild(panel_);
    if (scroll->isShown())
        panel_->show();
}

/// A button of the panel can be what ends its tool: the components go when its event is over.
void ConfigWindow::dropPanel()
{
    views_.unlink();
    gui::Component* const gone = std::exchange(panel_, nullptr);
    if (!gone)
        return;
    if (gone->isShown())
        gone->hide();
    gone->detach();
    retired_.emplace_back(gone);
    tidyLater();
}

/// Ends panels that are out of use. A tool may have thrown its items away for others.
void ConfigWindow::tidyLater()
{
    QTimer::singleShot(0, context_.get(), [this] {
        retired_.clear();
        if (isShown() && !panel_)
            showTool(shownTool());
    });
}

// What stands round it.

void ConfigWindow::showTitle()
{
    const core::Instance* const tool = shownTool();
    if (root())
        root()->setLabel("Configuration" + (tool ? " for " + tool->name() : std::string()) +
                         " for Rigstage");
}

void ConfigWindow::showProfiles()
{
    auto* const box = as<ci::ComboBox>(id::profile);
    if (!box)
        return;
    box->clear();
    core::Instance* const tool = shownTool();
    if (!tool)
        return;
    ConfigProfiles profiles(*tool);
    for (const std::string& name : profiles.store().names())
        box->addItem(name);
    box->selectText(profiles.current());
    const util::xml::Element& stored = profiles.store().profile(profiles.current());
    markChanged(!stored.isEmpty() && profiles.differsFrom(stored));
}

/// The button that would keep the changes stands out.
void ConfigWindow::markChanged(bool isChanged)
{
    if (gui::Component* const button = find(id::save))
        button->setHighlight(isChanged);
}

// Messages.

void ConfigWindow::handle(gui::Component& component, Message& message)
{
    switch (component.id()) {
    case id::window:
        if (message.id == gui::message::hideBegins)
            views_.unlink(); // a hidden window costs a tick nothing
        else if (message.id == gui::message::showEnded &&
                 (!panel_ || (shownTool() && !views_.isLinked())))
            showTool(shownTool());
        else
            handleWindowKeys(message);
        break;
    case id::tree:
        if (message.id == gui::message::treeSelectionChanged)
            showSelected();
        break;
    case id::profile:
        if (message.id == gui::message::itemActivated)
            handleProfileButton(id::profile);
        break;
    default:
        if (message.id == gui::message::buttonClicked)
            handleButton(component.id());
    }
}

void ConfigWindow::handleButton(int from)
{
    if (from == id::close)
        hide();
    else if (from == id::preferences && openPreferences_)
        openPreferences_();
    else
        handleProfileButton(from);
}

void ConfigWindow::handleProfileButton(int from)
{
    core::Instance* const tool = shownTool();
    auto* const box = as<ci::ComboBox>(id::profile);
    if (!tool || !box)
        return;
    const std::string chosen = box->currentText();
    ConfigProfiles profiles(*tool);
    ProfileActions actions(profiles, root()->widget());
    switch (from) {
    case id::profile:
        actions.select(chosen);
        break;
    case id::save:
        actions.save(chosen);
        break;
    case id::createNew:
        actions.createNew();
        break;
    case id::importFile:
        actions.importFile();
        break;
    case id::exportFile:
        actions.exportFile();
        break;
    case id::remove:
        actions.remove(chosen);
        break;
    case id::rename:
        actions.rename(chosen);
        break;
    case id::saveAs:
        actions.saveAs();
        break;
    case id::saveAsStartup:
        if (actions.saveAsStartup())
            setText(id::status, "Start Profile saved");
        break;
    default:
        return;
    }
    if (isShown())
        showProfiles();
}

} // namespace tvw::rgs::app
