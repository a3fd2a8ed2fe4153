#include "core/instance_reference.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_manager.h"
#include "core/instance_undo.h"
#include "core/library_manager.h"
#include "core/tool.h"
#include "core/tool_record.h"

#include <utility>

namespace tvw::rgs::core {

namespace {

constexpr std::size_t at(Column column)
{
    return static_cast<std::size_t>(column);
}

Windows& windows()
{
    return CoreImplementation::instance().windows();
}

/// The commands of an entry's menu.
enum MenuId {
    kConfigure = 1,
    kInputs,
    kHelp,
    kClone,
    kDelete,
    kBrowse,
    kRename,
    kFirstTool = 1000
};

const char* const kModelFilter = "Tarvo Pre-Rigged Models (*.prm);;All files (*.*)";

/// What changes the tree is gray while a run holds its tools.
bool isOffered(int id)
{
    return !CoreImplementation::instance().isRunning() || id == kConfigure || id == kInputs ||
           id == kHelp || id == kRename;
}

util::xml::Element menuItem(int id, const std::string& label)
{
    util::xml::Element item = util::xml::Tag("item");
    item.setAttribute("id", std::to_string(id));
    item.setAttribute("label", label);
    if (!isOffered(id))
        item.setAttribute("grayed", "yes");
    return item;
}

} // namespace

InstanceReference::InstanceReference(Instance* instance) : instance_(instance)
{
    instance_->setReference(this);
    if (adaptor()->isUndoOpen())
        adaptor()->pushUndo(new InstanceReferenceCreateRestore(this));
}

/// A whole scene that goes takes its tools along with no word from the user: while a tool is whole
/// its windows close, a question that one of them asks must find the tool gone.
InstanceReference::~InstanceReference()
{
    if (std::exchange(alive_, false))
        instance_->leaveTree();
    *watch_ = nullptr;
    detach();
    while (!childItems().empty())
        childItems().back()->destroy();
    if (const auto owner = limboOwner_.lock())
        owner->reference = nullptr;
    instance_->setReference(nullptr);
    instance_->destroy();
}

std::shared_ptr<LimboOwner> InstanceReference::limboOwner()
{
    std::shared_ptr<LimboOwner> owner = limboOwner_.lock();
    if (!owner) {
        owner = std::make_shared<LimboOwner>(this);
        limboOwner_ = owner;
    }
    return owner;
}

std::string InstanceReference::getText() const
{
    return instance_->name();
}

std::string InstanceReference::getToolTip() const
{
    const std::string& typeName = instance_->type()->name();
    if (instance_->tool()->isSupported(code::noToolTip) || instance_->name().starts_with(typeName))
        return {};
    return typeName;
}

std::string InstanceReference::iconPath() const
{
    return instance_->iconPath();
}

void InstanceReference::rename(const std::string& text)
{
    const UndoScope undo("Rename");
    const std::string before = instance_->name();
    instance_->setName(text.empty() ? instance_->type()->name() : text);
    adaptor()->pushUndo(new InstanceReferenceRename(*this, before, instance_->name()));
    windows().treeEntryChanged(this);
}

// Columns.

ColumnState InstanceReference::getState(Column column) const
{
    return states_[at(column)];
}

void InstanceReference::setState(Column column, ColumnState state, bool recursive)
{
    const bool changed = states_[at(column)] != state;
    states_[at(column)] = state;
    if (column != Column::Run && state != ColumnState::Mixed)
        showNodes(column, state == ColumnState::On);
    if (changed)
        windows().treeEntryChanged(this);
    if (recursive) {
        for (InstanceReference* const child : childReferences())
            child->setState(column, state, true);
    }
}

void InstanceReference::saveState(Column column)
{
    if (states_[at(column)] != ColumnState::Mixed)
        saved_[at(column)] = states_[at(column)];
}

void InstanceReference::restoreState(Column column)
{
    setState(column, saved_[at(column)], false);
    saveState(column);
}

void InstanceReference::showMixed(Column column)
{
    saveState(column);
    bool differs = false;
    forEach([&](const InstanceReference& entry) {
        differs = differs || entry.getState(column) != getState(column);
    });
    if (differs)
        setState(column, ColumnState::Mixed, false);
}

bool InstanceReference::takesPart() const
{
    const ColumnState shown = states_[at(Column::Run)];
    return (shown == ColumnState::Mixed ? saved_[at(Column::Run)] : shown) == ColumnState::On;
}

/// Low-poly: the tool's own nodes, but a camera stays for the view through it. Hi-poly: what hangs
/// on them and belongs to no tool.
void InstanceReference::showNodes(Column column, bool visible)
{
    for (CoreNode* const node : instance_->nodes()) {
        if (node->isDeleted())
            continue;
        if (column == Column::HiPoly)
            showUnownedChildren(*adaptor(), node, visible);
        else if (!isCamera(node))
            visible ? node->show() : node->hide();
    }
    adaptor()->redrawViews();
}

// Place in the tree.

InstanceReference* InstanceReference::parentReference() const
{
    return static_cast<InstanceReference*>(parentItem());
}

std::vector<InstanceReference*> InstanceReference::childReferences() const
{
    std::vector<InstanceReference*> all;
    all.reserve(childItems().size());
    for (TreeItem* const child : childItems())
        all.push_back(static_cast<InstanceReference*>(child));
    return all;
}

void InstanceReference::takeOut()
{
    detach();
    alive_ = false;
    instance_->leaveTree();
    windows().refreshTree();
}

void InstanceReference::putIn(InstanceReference* parent, int index)
{
    instance_->enterTree();
    alive_ = true;
    parent->attach(this, index);
    windows().refreshTree();
}

std::string parentToolName(const InstanceReference* reference)
{
    const InstanceReference* const parent = reference ? reference->parentReference() : nullptr;
    return parent && parent->parentReference() ? parent->instance().name() : std::string();
}

InstanceReference* InstanceReference::clone()
{
    return cloneTool(*this);
}

// Menu.

util::xml::Element InstanceReference::buildMenu()
{
    util::xml::Element menu = util::xml::Tag("popup");
    menu.addChild(menuItem(kConfigure, "Configure"));
    menu.addChild(menuItem(kInputs, "Input Settings"));
    menu.addChild(menuItem(kHelp, "Help documentation"));
    menu.addChild(menuItem(kRename, "Rename"));
    menu.addChild(menuItem(kClone, "Clone"));
    menu.addChild(menuItem(kDelete, "Delete"));
    menu.addChild(util::xml::Tag("separator"));
    menu.addChild(menuItem(kBrowse, "Browse..."));

    util::xml::Element newTool = util::xml::Tag("popup");
    newTool.setAttribute("label", "New tool");
    const std::vector<Tool*> tools = LibraryManager::instance().listTools(true);
    for (std::size_t i = 0; i < tools.size(); ++i) {
        if (tools[i]->isListed())
            newTool.addChild(menuItem(kFirstTool + static_cast<int>(i), tools[i]->name()));
    }
    menu.addChild(newTool);
    return menu;
}

void InstanceReference::onMenuCommand(int id)
{
    InstanceManager& manager = CoreImplementation::instance().instances();
    if (!isOffered(id)) // a run began while the menu was open
        return;
    switch (id) {
    case kConfigure:
        windows().openConfiguration(instance_);
        break;
    case kInputs:
        instance_->showInputDialog();
        break;
    case kHelp:
        windows().openHelp(instance_->type()->name());
        break;
    case kRename:
        windows().beginRename(this);
        break;
    case kClone: {
        const UndoScope undo("Clone tool");
        clone();
        break;
    }
    case kDelete: {
        if (!parentReference())
            break;
        const UndoScope undo("Delete tool");
        InstanceManager::deleteReference(this, true);
        break;
    }
    case kBrowse: {
        const std::string path = windows().chooseFile("Browse...", kModelFilter);
        if (path.empty())
            break;
        if (const Status loaded = manager.loadFile(path, this); !loaded)
            CoreImplementation::instance().messageBox(nullptr, loaded.reason(), "Error",
                                                      box::ok | box::critical, false);
        break;
    }
    default: {
        const std::vector<Tool*> tools = LibraryManager::instance().listTools(true);
        const int place = id - kFirstTool;
        if (place < 0 || place >= static_cast<int>(tools.size()))
            break;
        const UndoScope undo("Create Tool");
        manager.create(tools[static_cast<std::size_t>(place)]->name(), {}, this);
        break;
    }
    }
}

} // namespace tvw::rgs::core
