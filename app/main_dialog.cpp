#include "app/main_dialog.h"

#include "app/main_dialog_ids.h"
#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/library_manager.h"
#include "core/tool.h"
#include "core/version.h"
#include "gui/componentinterface/button.h"
#include "gui/componentinterface/checkbox.h"
#include "gui/componentinterface/dialog.h"
#include "gui/componentinterface/flmbutton.h"
#include "gui/componentinterface/list.h"
#include "gui/componentinterface/spinner.h"
#include "gui/message_ids.h"
#include "gui/qt/style.h"

#include <QTimer>
#include <QToolButton>
#include <QVariant>
#include <QWidget>

#include <cmath>
#include <utility>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::CoreImplementation;

namespace {

struct CategoryRow
{
    int button;
    const char* picture;
};
constexpr CategoryRow kCategoryRows[kCategories] = {
    {id::vehicles, "veh"}, {id::cameras, "cam"}, {id::accessories, "acc"}, {id::templates, "prm"}};

/// What makes or ends tools: not under a run, which steps those that it began with.
constexpr int kIdleOnly[] = {id::vehicles, id::cameras, id::accessories, id::templates, id::group,
                             id::clone,    id::unplug,  id::unplugAll,   id::remove};

core::InstanceManager& instances()
{
    return CoreImplementation::instance().instances();
}

} // namespace

/// Single shot: runs once, however often it is started meanwhile.
class MainDlg::Timer
{
public:
    explicit Timer(std::function<void()> run)
    {
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, std::move(run));
    }
    void start() { timer_.start(0); }

private:
    QTimer timer_;
};

MainDlg::MainDlg(MainDialogDoors doors) : WindowBase("MainDlg"), doors_(std::move(doors)) {}

MainDlg::~MainDlg()
{
    if (auto* const shown = as<ci::Tree>(id::tree))
        shown->setRoot(nullptr, true);
}

void MainDlg::init()
{
    if (!build("rgs_main"))
        return;
    if (gui::Component* const button = find(id::record); button && button->widget())
        button->widget()->setProperty(gui::kRecords, true);
    tree_ = std::make_unique<ToolTreeNode>(*instances().root());
    if (auto* const shown = as<ci::Tree>(id::tree))
        shown->setRoot(tree_.get(), true);
    popoutTimer_ = std::make_unique<Timer>([this] { fillToolListsNow(); });
    fillToolListsNow();
}

void MainDlg::open()
{
    if (!root())
        return;
    root()->setLabel(std::string("Rigstage v") + kVersion + " x64");
    listen({id::window,     id::menubar,    id::tree,      id::record,  id::resimulate,
            id::slowMotion, id::autoExpand, id::vehicles,  id::cameras, id::accessories,
            id::templates,  id::remove,     id::group,     id::clone,   id::unplugAll,
            id::unplug,     id::inputs,     id::configure, id::status,  id::lowPoly,
            id::fromFirst});
    fillMenus();
    if (auto* const dialog = gui::toDialog(root()))
        dialog->setTopmost(CoreImplementation::instance().getSettings().alwaysOnTop);
    show();
    for (int i = 0; i < kCategories; ++i)
        showCategoryImages(static_cast<Category>(i));
    refreshRunState();
}

bool MainDlg::autoExpand() const
{
    auto* const box = as<ci::CheckBox>(id::autoExpand);
    return !box || box->value();
}

bool MainDlg::lowPolyOnRecord() const
{
    auto* const box = as<ci::CheckBox>(id::lowPoly);
    return box && box->value();
}

bool MainDlg::resimulateFromFirst() const
{
    auto* const box = as<ci::CheckBox>(id::fromFirst);
    return !box || box->value();
}

void MainDlg::refreshTree()
{
    if (!tree_)
        return;
    tree_->synchronise();
    if (auto* const shown = as<ci::Tree>(id::tree))
        shown->reset();
    if (doors_.refreshConfiguration)
        doors_.refreshConfiguration();
}

void MainDlg::treeEntryChanged()
{
    if (gui::Component* const shown = find(id::tree))
        shown->repaint();
    if (doors_.refreshConfiguration)
        doors_.refreshConfiguration();
}

void MainDlg::beginRename(core::InstanceReference* reference)
{
    auto* const shown = as<ci::Tree>(id::tree);
    if (shown && reference)
        shown->beginRename(tree_->nodeOf(*reference));
}

void MainDlg::refreshRunState()
{
    CoreImplementation& core = CoreImplementation::instance();
    if (auto* const button = as<ci::Button>(id::record))
        button->setChecked(core.isRunning() && !core.isResimulating());
    if (auto* const button = as<ci::Button>(id::resimulate))
        button->setChecked(core.isResimulating());
    for (const int place : kIdleOnly) {
        gui::Component* const button = find(place);
        if (button && button->widget())
            button->widget()->setEnabled(!core.isRunning());
    }
    if (auto* const spinner = as<ci::Spinner>(id::slowMotion);
        spinner && spinner->value() != core.getTimeScale())
        spinner->setValue(core.getTimeScale());
}

core::InstanceReference* MainDlg::selected() const
{
    auto* const shown = as<ci::Tree>(id::tree);
    return shown ? referenceOf(shown->selected()) : nullptr;
}

void MainDlg::select(core::InstanceReference& reference)
{
    auto* const shown = as<ci::Tree>(id::tree);
    if (shown && tree_)
        shown->select(tree_->nodeOf(reference));
}

bool MainDlg::isRootSelected() const
{
    return selected() == instances().root();
}

// Messages.

void MainDlg::handle(gui::Component& component, Message& message)
{
    if (handleEntry(component, message))
        return;
    const int from = component.id();
    if (from < id::first || from > id::last)
        return;
    switch (from) {
    case id::window:
        handleWindowKeys(message);
        return;
    case id::tree:
        handleTree(message);
        return;
    case id::menubar:
        if (message.id == gui::message::menuChosen)
            handleMenu(static_cast<int>(message.param));
        else if (message.id == gui::message::menuAboutToShow)
            grayMenuItems();
        return;
    case id::slowMotion:
        if (message.id == gui::message::spinnerChanged)
            CoreImplementation::instance().setTimeScale(
                static_cast<int>(std::floor(as<ci::Spinner>(id::slowMotion)->value())));
        return;
    default:
        if (message.id == gui::message::buttonClicked)
            handleButton(from);
    }
}

bool MainDlg::handleEntry(gui::Component& component, const Message& message)
{
    const auto found = entries_.find(&component);
    if (found == entries_.end())
        return false;
    if (message.id != gui::message::buttonClicked)
        return true;
    const Entry entry = found->second; // creating can fill the lists anew
    constexpr int kChoose = 0;
    if (component.id() == kChoose) {
        const auto place = static_cast<std::size_t>(entry.category);
        current_[place] = entry.tool->name();
        if (auto* const button = as<ci::FlmButton>(kCategoryRows[place].button))
            button->hideMenu();
        showCategoryImages(entry.category);
        create(*entry.tool);
    } else {
        showToolInformation(*entry.tool);
    }
    return true;
}

void MainDlg::handleButton(int from)
{
    for (std::size_t i = 0; i < kCategories; ++i) {
        if (from != kCategoryRows[i].button)
            continue;
        core::Tool* const tool =
            current_[i].empty() ? nullptr : core::LibraryManager::instance().findTool(current_[i]);
        if (tool)
            create(*tool);
        else
            flyOut(from);
        return;
    }
    switch (from) {
    case id::remove:
        deleteSelected();
        break;
    case id::unplugAll:
        unplugAll();
        break;
    case id::configure:
        if (isRootSelected())
            doors_.openPreferences();
        else
            configureSelected();
        break;
    case id::inputs:
        inputsOfSelected();
        break;
    case id::unplug:
        unplugSelected();
        break;
    case id::clone:
        cloneSelected();
        break;
    case id::group:
        createGroup();
        break;
    case id::updateBar + 1:
        if (doors_.openUpdates)
            doors_.openUpdates();
        break;
    case id::record:
        pressRecord();
        break;
    case id::resimulate:
        pressResimulate();
        break;
    default:
        break;
    }
}

/// Nothing was chosen from the category yet: whoever does not know that the button is to be held
/// finds the tools too.
void MainDlg::flyOut(int button)
{
    auto* const widget = qobject_cast<QToolButton*>(find(button)->widget());
    if (widget) // the menu has an event loop of its own, which must not run within a message
        QTimer::singleShot(0, widget, [widget] { widget->showMenu(); });
}

void MainDlg::handleTree(const Message& message)
{
    if (message.id == gui::message::treeHeaderClicked)
        setHeaderFlag(static_cast<int>(message.param));
    else if ((message.id == gui::message::treeFlagClicked ||
              message.id == gui::message::treeDoubleClicked) &&
             doors_.refreshConfiguration)
        doors_.refreshConfiguration();
    if (message.id == gui::message::treeDoubleClicked)
        configureSelected();
}

void MainDlg::setHeaderFlag(int column)
{
    auto* const shown = as<ci::Tree>(id::tree);
    if (!shown || column < 0 || column >= core::kColumnCount)
        return;
    const auto state = static_cast<core::ColumnState>(shown->headerState(column));
    for (core::Instance* const instance : instances().collect(false)) {
        if (core::InstanceReference* const reference = instance->reference())
            reference->setState(static_cast<core::Column>(column), state, false);
    }
    find(id::tree)->repaint();
}

// Actions.

/// Torn-off lists stay open and lit while a run is on; what they made would go with the take.
void MainDlg::create(core::Tool& tool)
{
    if (CoreImplementation::instance().isRunning())
        return;
    core::InstanceReference* made = nullptr;
    {
        core::UndoScope undo("Create Tool");
        made = instances().create(tool.name(), "", isRootSelected() ? nullptr : selected());
        if (!made)
            undo.cancel();
    }
    refreshTree();
    if (made)
        select(*made);
}

void MainDlg::createGroup()
{
    if (core::Tool* const group = core::LibraryManager::instance().findTool("Group"))
        create(*group);
}

void MainDlg::deleteSelected()
{
    core::InstanceReference* const reference = selected();
    if (reference && !isRootSelected())
        core::InstanceManager::deleteReference(reference, false);
}

void MainDlg::unplugAll()
{
    if (!selected())
        return;
    const core::UndoScope undo("Unplug tool");
    core::InstanceManager::deleteReference(instances().root(), true);
}

void MainDlg::unplugSelected()
{
    core::InstanceReference* const reference = selected();
    if (!reference)
        return;
    const core::UndoScope undo("Unplug tool");
    core::InstanceManager::deleteReference(reference, true);
}

void MainDlg::cloneSelected()
{
    core::InstanceReference* const reference = selected();
    if (!reference || isRootSelected())
        return;
    core::InstanceReference* copy = nullptr;
    {
        const core::UndoScope undo("Clone tool");
        copy = reference->clone();
    }
    refreshTree();
    if (copy)
        select(*copy);
}

void MainDlg::configureSelected()
{
    core::InstanceReference* const reference = selected();
    if (reference && !isRootSelected() && doors_.openConfiguration)
        doors_.openConfiguration(&reference->instance());
}

void MainDlg::inputsOfSelected()
{
    core::InstanceReference* const reference = selected();
    if (reference && !isRootSelected() && doors_.openInputs)
        doors_.openInputs(&reference->instance());
}

void MainDlg::pressRecord()
{
    CoreImplementation& core = CoreImplementation::instance();
    if (!core.isResimulating()) {
        if (core.isRunning())
            core.stopRecord();
        else
            core.startRecord();
    }
    refreshRunState();
}

void MainDlg::pressResimulate()
{
    CoreImplementation& core = CoreImplementation::instance();
    if (!core.isRunning()) {
        core::TimeRange range;
        core::adaptor()->getRange(range);
        core.startResimulation(resimulateFromFirst() ? range.start : core::adaptor()->getTime(),
                               range.end);
    }
    refreshRunState();
}

// Fly-outs.

void MainDlg::refreshToolLists()
{
    if (popoutTimer_)
        popoutTimer_->start();
}

void MainDlg::fillToolListsNow()
{
    entries_.clear();
    for (int i = 0; i < kCategories; ++i) {
        const auto category = static_cast<Category>(i);
        gui::Component* const button = find(kCategoryRows[i].button);
        gui::Component* const page = button ? button->findById(id::toolPage) : nullptr;
        if (!page)
            continue;
        fillToolPage(*page, category, [&](gui::Component& entry, core::Tool& tool) {
            constexpr int kChoose = 0;
            constexpr int kInformation = 2;
            for (const int place : {kChoose, kInformation}) {
                if (gui::Component* const part = entry.findById(place)) {
                    entries_[part] = {&tool, category};
                    listenTo(part);
                }
            }
        });
        if (page->isShown())
            page->show();
    }
    if (isShown())
        fillMenus();
}

void MainDlg::showCategoryImages(Category category)
{
    const CategoryRow& row = kCategoryRows[static_cast<std::size_t>(category)];
    const std::string& current = current_[static_cast<std::size_t>(category)];
    core::Tool* const tool =
        current.empty() ? nullptr : core::LibraryManager::instance().findTool(current);
    const std::string base =
        tool ? tool->getImagePath() + "/button_product_" : std::string("[images]/") + row.picture;
    auto* const button = as<ci::FlmButton>(row.button);
    if (!button)
        return;
    button->setImage(static_cast<int>(gui::ButtonImage::Default),
                     base + (tool ? "default.png" : ".png"));
    button->setImage(static_cast<int>(gui::ButtonImage::Pressed),
                     base + (tool ? "pressed.png" : "_pressed.png"));
    button->setImage(static_cast<int>(gui::ButtonImage::Hover),
                     base + (tool ? "hover.png" : "_hover.png"));
    find(row.button)->repaint();
}

void MainDlg::showToolInformation(const core::Tool& tool)
{
    if (!information_)
        information_ = std::make_unique<ToolInformation>();
    information_->open(tool);
}

void MainDlg::addUpdateBar(gui::Component* bar)
{
    gui::Component* const place = find(id::updateBar);
    if (!place || place->childCount() > 0) {
        bar->destroy();
        return;
    }
    place->addChild(bar);
    listenAll(*bar);
    if (place->isShown())
        bar->show();
}

} // namespace tvw::rgs::app
