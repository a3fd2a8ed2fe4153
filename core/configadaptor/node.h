/// The tree of a tool's configuration items: at once the model, the source of the generated window and
/// the serialiser of profiles. Each leaf reads and writes the tool's own variable.
#pragma once

#include "core/contract/interface_callback.h"
#include "util/composite.h"
#include "util/dynamicobject.h"
#include "util/messagenode.h"
#include "util/xml/element.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::gui {
class Component;
}

namespace tvw::rgs::core::configadaptor {

inline constexpr std::uint32_t kNoId = 0xFFFFFFFFu;

/// Messages of a node.
namespace message {
inline constexpr std::uint32_t valueChanged = 16896;   ///< from a view: the user moved it
inline constexpr std::uint32_t profileChanged = 24576; ///< to listeners: a value is new
inline constexpr std::uint32_t itemChanged = 36864;    ///< to listeners, param: the id of the item
} // namespace message

/// A value-carrying item's kind, for whoever shows or scripts it.
enum class NodeKind { Root, Group, Spinner, IntSpinner, CheckBox, TextBox, ComboBox, Button, Label, Template };

/// THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN. [main thread]
class Node : public DynamicObject, public Composite_Dynamic<Node>, public MessageNode
{
public:
    Node(NodeKind kind, std::uint32_t id, std::string label, std::string tooltip,
         CInterfaceCallback* callback);

    /// Shows the present value in every view.
    virtual void refresh();

    /// Makes this node's element of a profile; leaves `out` empty when it has none.
    virtual void writeProfile(util::xml::Element& out);

    /// Takes this node's value from a profile, when it holds one.
    virtual void readProfile(const util::xml::Element& profile);
    virtual void findUndoData(util::xml::Element& out);

    virtual double valueOf(std::uint32_t id);               ///< 0 when this subtree has no such id
    virtual void setValueOf(std::uint32_t id, double value);
    virtual double value() { return 0.0; }
    virtual void setValue(double) {}

    /// The layout of this node.
    virtual util::xml::Element buildLayout() = 0;

    Node* self() override { return this; }

    /// The node of that id in this subtree, depth first; null when there is none.
    Node* findNode(std::uint32_t id);

    NodeKind kind() const { return kind_; }
    std::uint32_t id() const { return id_; }
    const std::string& label() const { return label_; }
    const std::string& tooltip() const { return tooltip_; }
    CInterfaceCallback* callback() const { return callback_; }

    // What scripts and windows ask of any item; each does nothing where it has no meaning.

    /// The user's change: the value is bounded, written and shown, and the tool hears of it in an undo
    /// named after the label.
    virtual void change(double value);
    virtual void changeText(const std::string& text);
    virtual void press();
    virtual std::string text() { return {}; }
    virtual double minimum() { return 0.0; }
    virtual double maximum() { return 0.0; }
    virtual double step() { return 0.0; }
    virtual std::vector<std::string> choices() { return {}; }

    /// A view of this node: kept in step until it is taken away.
    void addView(gui::Component* view) { views_.push_back(view); }
    void removeView(gui::Component* view);

protected:
    /// Runs the tool's callback in its undo bracket and tells the listeners.
    void announceChange();

    /// The `item` of a profile that means this node, or an empty element.
    const util::xml::Element& itemIn(const util::xml::Element& group) const;

    const std::vector<gui::Component*>& views() const { return views_; }

private:
    NodeKind kind_;
    std::uint32_t id_;
    std::string label_;
    std::string tooltip_;
    CInterfaceCallback* callback_;
    std::vector<gui::Component*> views_;
};

/// How undo brackets reach the host: set once at start. Null: no brackets.
struct UndoBracket
{
    void (*begin)(const std::string& name);
    void (*end)();
};
void setUndoBracket(const UndoBracket* bracket);

} // namespace tvw::rgs::core::configadaptor
