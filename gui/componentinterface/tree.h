/// A tree of nodes with names, icons and columns of flags.
#pragma once

#include "gui/componentinterface/interface.h"
#include "util/composite.h"
#include "util/dynamicobject.h"
#include "util/xml/element.h"

#include <cstdint>
#include <string>

namespace tvw::gui {

namespace componentinterface {

/// The tree shows nodes that application code owns and changes; after a change of their structure
/// that did not go through the tree, reset() must follow before the next event.
///
/// Flag columns count from 0. State of a flag: 0 off, 1 on, 2 undetermined.
class Tree : public Interface
{
public:
    static constexpr const char* kTag = "tree";

    /// The order of the virtual functions, behind DynamicObject's, is frozen.
    class Node : public DynamicObject, public Composite_Dynamic<Node>
    {
    public:
        Node* self() override { return this; }

        [[nodiscard]] virtual std::string getText() const = 0;
        [[nodiscard]] virtual std::string getToolTip() const { return {}; }
        [[nodiscard]] virtual bool canRename() const { return true; }
        virtual void childTaken(Node* /*child*/) {} ///< a drag has taken it away
        /// A drop has brought it, to that place among the children.
        virtual void childGiven(Node* /*child*/, std::size_t /*index*/) {}
        virtual void rename(const std::string& /*text*/) {}
        virtual void setState(int /*column*/, int /*state*/, bool /*recursive*/) {}
        [[nodiscard]] virtual int getState(int /*column*/) const { return 2; }
        virtual void saveState(int /*column*/) {}
        virtual void restoreState(int /*column*/) {} ///< the node was expanded
        virtual void showMixed(int /*column*/) {} ///< it was collapsed: show its children's state
        /// Bit n: the node has flag n.
        [[nodiscard]] virtual std::uint32_t flags() const { return 0; }
        [[nodiscard]] virtual bool isOn(int column) const { return getState(column) == 1; }
        /// The caller owns it; null if the node can't be copied.
        [[nodiscard]] virtual Node* clone() const = 0;
        /// What tree.iconIndex() gave for the node's icon; -1: none.
        [[nodiscard]] virtual int iconIndex(Tree& /*tree*/) const { return -1; }
        /// A `popup` element for the right-click menu; empty: none.
        [[nodiscard]] virtual util::xml::Element buildMenu() const { return {}; }
        virtual void onMenuCommand(int /*id*/) {}
        virtual void selected() {}
        virtual void deselected() {}
        /// Round all that one drop onto this node does. False: it is refused, and nothing follows.
        virtual bool dropBegins(bool /*isCopy*/) { return true; }
        virtual void dropEnds() {}
    };

    virtual void refresh() = 0; ///< repaints, and tells as if a flag had been clicked
    virtual void setFlagCount(int count) = 0;
    [[nodiscard]] virtual int flagCount() const = 0;
    [[nodiscard]] virtual int headerState(int flag) const = 0;
    virtual void setHeaderState(int flag, int state) = 0; ///< 0 or 1
    [[nodiscard]] virtual int defaultState(int flag) const = 0;
    virtual void setDefaultState(int flag, int state) = 0;
    virtual void setFlagIcons(int flag, const std::string& falseIcon, const std::string& trueIcon,
                              const std::string& undeterminedIcon) = 0;
    [[nodiscard]] virtual bool hasFlagIcons(int flag) const = 0;
    /// The path of a state's icon, as it was set.
    [[nodiscard]] virtual std::string flagIcon(int flag, int state) const = 0;
    virtual void reserved() {}
    /// The tree does not own the node; null empties it.
    virtual void setRoot(Node* node, bool showRoot) = 0;
    [[nodiscard]] virtual Node* root() const = 0;
    virtual void select(Node* node) = 0; ///< makes it the current node; null: none
    [[nodiscard]] virtual Node* selected() const = 0;
    virtual void reset() = 0; ///< reads the nodes anew; keeps what is expanded and current
    /// Loads the icon once. -1 if there is no such image.
    [[nodiscard]] virtual int iconIndex(const std::string& path) = 0;
    /// Makes the node current and lets the user type its name, if it can be renamed.
    virtual void beginRename(Node* node) = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Tree* toTree(Component* component)
{
    return toKind<componentinterface::Tree>(component);
}

} // namespace tvw::gui
