/// A node of a window's tree, as application code sees it.
#pragma once

#include "gui/types.h"
#include "util/composite.h"
#include "util/dynamicobject.h"
#include "util/messagenode.h"
#include "util/returnvalue.h"

#include <memory>
#include <string>

class QWidget;

namespace tvw::util::xml {
class Element;
}

namespace tvw::gui {

class Background;
namespace componentinterface {
class Interface;
}

/// Built from an element of a layout file by AbstractFactory<Component>; owned by its parent, a
/// root by whoever created it, and ended by destroy(). All its events are originated on its
/// MessageNode (gui/message_ids.h). Whatever has the id -1 counts as having none.
///
/// A handler must not destroy the component whose event it is in, nor an ancestor of it: it posts
/// that for later.
///
/// The order of the virtual functions, behind destroy() and the destructor, is frozen.
/// [main thread]
class Component : public DynamicObject,
                  public Composite_Dynamic<Component>,
                  public MessageNode,
                  protected DynamicCreator<Component>
{
public:
    Component() : MessageNode("component") {}
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    /// The tag, for example "spinner".
    virtual void typeName(ReturnValue<std::string>& out) const = 0;
    /// The numbers of the messages that only this kind of component sends.
    virtual void messageRange(ReturnValue<MessageRange>& out) const = 0;

    [[nodiscard]] virtual std::string label() const = 0;
    virtual void setLabel(const std::string& text) = 0;
    [[nodiscard]] virtual std::string tooltip() const = 0;
    virtual void setTooltip(const std::string& text) = 0;
    /// Id of the label that shows the tooltip; -1: the parent's; any other negative: none.
    [[nodiscard]] virtual int tooltipId() const = 0;
    /// Sets it here and, all the way down, on the children that have none.
    virtual void setTooltipId(int id) = 0;
    [[nodiscard]] virtual int id() const = 0;
    virtual void setId(int id) = 0;
    /// The first below this one, its own children before theirs; null if there is none.
    [[nodiscard]] virtual Component* findById(int id) = 0;

    virtual void repaint() = 0;
    [[nodiscard]] virtual QWidget* widget() = 0; ///< null without a widget layer

    [[nodiscard]] virtual Size size() const = 0;
    virtual void setSize(Size size) = 0;
    /// Within the minimum and the maximum; where these contradict the maximum holds.
    [[nodiscard]] virtual Size clampSize(Size size) const = 0;
    [[nodiscard]] virtual Point position() const = 0;
    virtual void setPosition(Point point) = 0;
    [[nodiscard]] virtual Size minSize() const = 0;
    [[nodiscard]] virtual Size maxSize() const = 0;
    virtual void setMinSize(Size size) = 0;
    virtual void setMaxSize(Size size) = 0; ///< the widget gets at most kWidgetLimit
    [[nodiscard]] virtual Size desiredSize() const = 0;
    virtual void setDesiredSize(Size size) = 0;
    [[nodiscard]] virtual bool isWindow() const = 0;
    [[nodiscard]] virtual Size clientSize() const = 0;
    [[nodiscard]] virtual Point absolutePosition() const = 0; ///< within the window
    [[nodiscard]] virtual Size available() const = 0;         ///< what the parent offers

    /// Builds what is needed and shows it; a shown component is hidden first. A component that is
    /// added to a shown parent appears by its own show().
    virtual void show() = 0;
    virtual void hide() = 0;
    [[nodiscard]] virtual bool isShown() const = 0;
    /// Of this one, with propagate of all below it.
    virtual void setVisible(bool value, bool propagate) = 0;
    [[nodiscard]] virtual bool isVisible() const = 0; ///< its own flag and those of all ancestors
    /// Of this one; with propagate of all below it and, when enabling, of all ancestors.
    virtual void setEnabled(bool value, bool propagate) = 0;
    [[nodiscard]] virtual bool isEnabled() const = 0; ///< its own flag and those of all ancestors
    [[nodiscard]] virtual int tabStop() const = 0; ///< place in the order of the Tab key; -1: none
    virtual void reserved() = 0;

    /// Becomes this component's element, children included. What equals its default is left out.
    virtual void writeXml(util::xml::Element& element) const = 0;
    virtual void setHighlight(bool value) = 0;
    /// Takes it over; null removes the present one.
    virtual void setBackground(Background* background) = 0;
    [[nodiscard]] virtual bool hasBackground() const = 0;
    virtual void grabKeyboard() = 0;
    virtual void releaseKeyboard() = 0;

    /// Each variable's name in the text is replaced by its value, this component's first, then
    /// those of the ancestors. A value that holds its own name is not expanded again.
    [[nodiscard]] virtual std::string expandVariables(const std::string& text) const = 0;
    /// An empty value removes the variable.
    virtual void setVariable(const std::string& name, const std::string& value) = 0;

    /// The `popup` element as it was read; it is what writeXml writes.
    virtual void setSourcePopup(const util::xml::Element& element) = 0;
    [[nodiscard]] virtual util::xml::Element popup() const = 0;
    /// The element that the right-click menu is built from.
    virtual void setPopup(const util::xml::Element& element) = 0;
    /// This one's, or the nearest ancestor's where it has no item; empty if none has.
    [[nodiscard]] virtual util::xml::Element effectivePopup() const = 0;

    /// The container puts the child's widget into its layout, at the child's place.
    virtual void childWidgetAdded(Component* child) = 0;
    virtual void childWidgetRemoved(Component* child) = 0;

    /// Null for kinds without one. Use the toSpinner, toDialog ... beside each interface.
    [[nodiscard]] virtual componentinterface::Interface* interface() = 0;

    [[nodiscard]] Component* self() final { return this; }
};

using ComponentPtr = DynamicPtr<Component>;

/// The component that started the message; null if it was none.
[[nodiscard]] Component* componentOf(const Message& message);
/// The tag of a component, "" of null.
[[nodiscard]] std::string tagOf(const Component* component);
/// The topmost ancestor, itself included.
[[nodiscard]] Component& rootOf(Component& component);
/// The id of the label that shows the component's tooltip; negative if none does.
[[nodiscard]] int effectiveTooltipId(const Component& component);
/// That label, found from the root; null if there is none.
[[nodiscard]] Component* tooltipLabel(Component& component);

} // namespace tvw::gui
