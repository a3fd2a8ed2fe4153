#include "app/tool_tree.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance_manager.h"
#include "core/instance_reference.h"
#include "core/paths.h"

#include <algorithm>

namespace tvw::rgs::app {

namespace {

core::Column columnOf(int column)
{
    return static_cast<core::Column>(std::clamp(column, 0, core::kColumnCount - 1));
}

ToolTreeNode* toolNode(gui::componentinterface::Tree::Node* node)
{
    return static_cast<ToolTreeNode*>(node);
}

} // namespace

void ToolTreeNode::synchronise()
{
    std::vector<ToolTreeNode*> before;
    while (childCount() > 0) {
        before.push_back(toolNode(childAt(0)));
        before.back()->detach();
    }
    for (core::TreeItem* const item : item_->childItems()) {
        const auto kept = std::find_if(before.begin(), before.end(), [&](const ToolTreeNode* node) {
            return node->item_ == item;
        });
        if (kept == before.end()) {
            addChild(new ToolTreeNode(*item));
            continue;
        }
        (*kept)->synchronise();
        addChild(*kept);
        before.erase(kept);
    }
    for (ToolTreeNode* const gone : before)
        gone->destroy();
}

ToolTreeNode* ToolTreeNode::nodeOf(const core::TreeItem& item)
{
    if (item_ == &item)
        return this;
    for (std::size_t i = 0; i < childCount(); ++i) {
        if (ToolTreeNode* const found = toolNode(childAt(i))->nodeOf(item))
            return found;
    }
    return nullptr;
}

void ToolTreeNode::childGiven(Node* child, std::size_t index)
{
    core::InstanceManager::move(*referenceOf(child), *referenceOf(this), static_cast<int>(index));
}

void ToolTreeNode::setState(int column, int state, bool recursive)
{
    item_->setState(columnOf(column), static_cast<core::ColumnState>(state), recursive);
}

int ToolTreeNode::getState(int column) const
{
    return static_cast<int>(item_->getState(columnOf(column)));
}

void ToolTreeNode::saveState(int column)
{
    item_->saveState(columnOf(column));
}
void ToolTreeNode::restoreState(int column)
{
    if (item_->getState(columnOf(column)) == core::ColumnState::Mixed)
        item_->restoreState(columnOf(column)); // else what is hidden by other means would show
}
void ToolTreeNode::showMixed(int column)
{
    item_->showMixed(columnOf(column));
}

gui::componentinterface::Tree::Node* ToolTreeNode::clone() const
{
    core::TreeItem* const copy = item_->clone();
    return copy ? new ToolTreeNode(*copy) : nullptr;
}

bool ToolTreeNode::dropBegins(bool isCopy)
{
    if (core::CoreImplementation::instance().isRunning())
        return false;
    core::adaptor()->beginUndo(isCopy ? "Clone tool" : "Move tool");
    return true;
}

/// A copy has been shown where it was made; now it is where it was dropped.
void ToolTreeNode::dropEnds()
{
    core::adaptor()->endUndo();
    core::CoreImplementation::instance().windows().refreshTree();
}

int ToolTreeNode::iconIndex(gui::componentinterface::Tree& tree) const
{
    const std::string path = item_->iconPath();
    const bool isOurs = path.starts_with("/core/"); // below the folder of the program's data
    return tree.iconIndex(isOurs ? core::getPath("data") + path : path);
}

core::InstanceReference* referenceOf(gui::componentinterface::Tree::Node* node)
{
    return node ? static_cast<core::InstanceReference*>(&toolNode(node)->item()) : nullptr;
}

} // namespace tvw::rgs::app
