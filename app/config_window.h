/// The configuration of a tool: its items, its profiles, and a tree of all tools.
#pragma once

#include "app/config_views.h"
#include "app/tool_tree.h"
#include "app/window_base.h"
#include "core/instance_reference.h"

#include <functional>
#include <memory>
#include <vector>

class QObject;

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::app {

/// The tree's root, which stands for what holds for all tools.
class ConfigTreeNode final : public ToolTreeNode
{
public:
    using ToolTreeNode::ToolTreeNode;

    std::string getText() const override { return "Main Preferences"; }
    std::string getToolTip() const override { return {}; }
    bool canRename() const override { return false; }
    util::xml::Element buildMenu() const override { return {}; }
};

/// Shows one tool at a time. Items are in step with the tool as long as the window is shown.
class ConfigWindow final : public WindowBase
{
public:
    ConfigWindow();
    ~ConfigWindow() override;

    void open(core::Instance* instance); ///< null: the tool that it showed last
    void refreshTree();                  ///< tools came, went, or have other names
    void closeOf(core::Instance& instance);

    /// What the button of "Main Preferences" does; without it the button is greyed.
    void setPreferencesDoor(std::function<void()> open) { openPreferences_ = std::move(open); }

private:
    void handle(gui::Component& component, Message& message) override;
    void handleButton(int from);
    void handleProfileButton(int from);
    bool prepare();

    [[nodiscard]] core::Instance* shownTool() const; ///< null: none, or "Main Preferences"
    void showTool(core::Instance* tool);             ///< null: "Main Preferences"
    void showSelected();
    void selectShown();
    void showTitle();
    void showProfiles();
    void markChanged(bool isChanged);
    void placeItems(core::Instance& tool);
    void placePreferences();
    void placePanel(gui::ComponentPtr panel);
    void dropPanel();
    void tidyLater();

    std::function<void()> openPreferences_;
    std::unique_ptr<ConfigTreeNode> tree_;
    ConfigViews views_;
    core::InstanceReference::Watch shown_;   ///< null: none
    gui::Component* panel_ = nullptr;        ///< below the scroll
    std::vector<gui::ComponentPtr> retired_; ///< panels that may be in an event of their own
    std::unique_ptr<QObject> context_;       ///< of what is put off until the present event is over
};

} // namespace tvw::rgs::app
