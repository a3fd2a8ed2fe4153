/// The tool tree of the core, as the tree component shows it.
#pragma once

#include "core/instance_reference.h"
#include "gui/componentinterface/tree.h"

#include <memory>

namespace tvw::rgs::app {

/// Mirrors one entry of the core's tree and owns the mirrors of those below it. A window that shows
/// its root in another way derives the root's node from it.
class ToolTreeNode : public gui::componentinterface::Tree::Node
{
public:
    /// item: outlives this node, or the tree is synchronised before the next event.
    explicit ToolTreeNode(core::TreeItem& item) : item_(&item) { synchronise(); }

    /// Takes over what came, went and moved in the core. Nodes of entries that stay are kept.
    void synchronise();

    [[nodiscard]] core::TreeItem& item() const { return *item_; }
    [[nodiscard]] ToolTreeNode* nodeOf(const core::TreeItem& item); ///< null: not below this one

    std::string getText() const override { return item_->getText(); }
    std::string getToolTip() const override { return item_->getToolTip(); }
    void rename(const std::string& text) override { item_->rename(text); }
    void childGiven(Node* child, std::size_t index) override;
    void setState(int column, int state, bool recursive) override;
    int getState(int column) const override;
    void saveState(int column) override;
    void restoreState(int column) override;
    void showMixed(int column) override;
    std::uint32_t flags() const override { return static_cast<std::uint32_t>(item_->flags()); }
    Node* clone() const override;
    /// A drop is one undo step, however many it brings. Not while a run is on.
    bool dropBegins(bool isCopy) override;
    void dropEnds() override;
    int iconIndex(gui::componentinterface::Tree& tree) const override;
    util::xml::Element buildMenu() const override { return item_->buildMenu(); }
    void onMenuCommand(int id) override { item_->onMenuCommand(id); }

private:
    core::TreeItem* item_;
};

/// The entry that the node of a tool tree stands for; null for null.
[[nodiscard]] core::InstanceReference* referenceOf(gui::componentinterface::Tree::Node* node);

} // namespace tvw::rgs::app
