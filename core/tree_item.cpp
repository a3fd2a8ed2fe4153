#include "core/tree_item.h"

#include <algorithm>

namespace tvw::rgs::core {

TreeItem::~TreeItem()
{
    detach();
    while (!children_.empty())
        children_.back()->destroy(); // each leaves this list in its own destructor
}

int TreeItem::indexInParent() const
{
    if (!parent_)
        return -1;
    const auto& siblings = parent_->children_;
    return static_cast<int>(std::find(siblings.begin(), siblings.end(), this) - siblings.begin());
}

bool TreeItem::isWithin(const TreeItem* other) const
{
    for (const TreeItem* item = this; item; item = item->parent_) {
        if (item == other)
            return true;
    }
    return false;
}

void TreeItem::attach(TreeItem* child, int index)
{
    if (isWithin(child))
        return;
    if (child->parent_ == this && index > child->indexInParent())
        --index;
    child->detach();
    const int count = static_cast<int>(children_.size());
    const int place = index < 0 || index > count ? count : index;
    children_.insert(children_.begin() + place, child);
    child->parent_ = this;
}

void TreeItem::detach()
{
    if (!parent_)
        return;
    auto& siblings = parent_->children_;
    siblings.erase(std::find(siblings.begin(), siblings.end(), this));
    parent_ = nullptr;
}

} // namespace tvw::rgs::core
