/// Keeps the items of a tool and the components that show them in step.
#pragma once

#include "core/configadaptor/node.h"
#include "gui/component.h"

#include <functional>
#include <unordered_map>

namespace tvw::rgs::app {

/// What the user changes goes to the item at once; what the tool changes shows when it refreshes
/// its items, also in every tick of a run. A number that is shown with fewer digits than it has is
/// written back only if the user changes it. [main thread]
class ConfigViews final : public MessageNode
{
public:
    /// changed: a value is new, by the user or a template's script. ended: the tool has thrown its
    /// items away; nothing is linked any more.
    ConfigViews(std::function<void()> changed, std::function<void()> ended);
    ~ConfigViews() override;

    /// Links each item with its component in the panel, which was built from the items' layout, and
    /// shows all values. Ends an earlier link.
    void link(core::configadaptor::Node& items, gui::Component& panel);
    void unlink();
    [[nodiscard]] bool isLinked() const { return items_ != nullptr; }

    void receive(Message& message, bool isBroadcast) override;

private:
    using Node = core::configadaptor::Node;

    void linkNode(Node& node, const std::unordered_map<int, gui::Component*>& byId);
    void linkView(Node& node, gui::Component& view);
    void hearView(gui::Component& view, Node& node, const Message& message);
    void forget(MessageNode& ended);

    std::function<void()> changed_, ended_;
    Node* items_ = nullptr; ///< the root; null: nothing is linked
    std::unordered_map<gui::Component*, Node*> nodeOf_;
};

/// In a panel the component of an item has this much more than the item's id; what stands round the
/// items has at least twice as much. So none is the id of a component of the window.
inline constexpr int kFirstPanelId = 1 << 16;

} // namespace tvw::rgs::app
