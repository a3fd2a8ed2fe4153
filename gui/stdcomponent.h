/// All of a component that touches no widget.
#pragma once

#include "gui/attributes.h"
#include "gui/background.h"
#include "gui/component.h"
#include "util/xml/element.h"

#include <string>
#include <utility>
#include <vector>

namespace tvw::gui {

/// What a tag is: one constant for each class of components.
struct KindInfo
{
    const char* tag;
    MessageRange messages{};
};

/// What the attributes common to all tags fill.
struct CommonFields
{
    int id = kNoId;
    std::string label;
    int tooltipId = kNoId;
    Point position;
    Size size, minSize, maxSize = kUnlimited, desiredSize;
    bool visible = true, enabled = true;
    int tabStop = -1;
    std::string fixed; ///< "yes", "horizontal" or "vertical"
};

/// A complete component by itself, without a widget; the widget layer derives from it and fills in
/// the protected hooks.
class StdComponent : public Component
{
public:
    ~StdComponent() override;

    void typeName(ReturnValue<std::string>& out) const override { out.assign(kind_.tag); }
    void messageRange(ReturnValue<MessageRange>& out) const override { out.assign(kind_.messages); }
    std::string label() const override { return common_.label; }
    void setLabel(const std::string& text) override;
    std::string tooltip() const override { return tooltip_; }
    void setTooltip(const std::string& text) override { tooltip_ = text; }
    int tooltipId() const override { return common_.tooltipId; }
    void setTooltipId(int id) override;
    int id() const override { return common_.id; }
    void setId(int id) override { common_.id = id; }
    Component* findById(int id) override;
    void repaint() override {}
    QWidget* widget() override { return widget_; }
    Size size() const override { return common_.size; }
    void setSize(Size size) override;
    Size clampSize(Size size) const override;
    Point position() const override { return common_.position; }
    void setPosition(Point point) override;
    Size minSize() const override { return common_.minSize; }
    Size maxSize() const override { return common_.maxSize; }
    void setMinSize(Size size) override;
    void setMaxSize(Size size) override;
    Size desiredSize() const override { return common_.desiredSize; }
    void setDesiredSize(Size size) override;
    bool isWindow() const override { return false; }
    Size clientSize() const override { return size(); }
    Point absolutePosition() const override;
    Size available() const override;
    void show() override;
    void hide() override;
    bool isShown() const override { return shown_; }
    void setVisible(bool value, bool propagate) override;
    bool isVisible() const override;
    void setEnabled(bool value, bool propagate) override;
    bool isEnabled() const override;
    int tabStop() const override { return common_.tabStop; }
    void reserved() override {}
    void writeXml(util::xml::Element& element) const override;
    void setHighlight(bool value) override;
    void setBackground(Background* background) override;
    bool hasBackground() const override { return background_ != nullptr; }
    void grabKeyboard() override {}
    void releaseKeyboard() override {}
    std::string expandVariables(const std::string& text) const override;
    void setVariable(const std::string& name, const std::string& value) override;
    void setSourcePopup(const util::xml::Element& element) override { sourcePopup_ = element; }
    util::xml::Element popup() const override { return sourcePopup_; }
    void setPopup(const util::xml::Element& element) override { popup_ = element; }
    util::xml::Element effectivePopup() const override;
    void childWidgetAdded(Component*) override {}
    void childWidgetRemoved(Component*) override {}
    componentinterface::Interface* interface() override { return nullptr; }

    [[nodiscard]] bool isHighlighted() const { return highlight_; }
    [[nodiscard]] const Background* background() const { return background_.get(); }
    [[nodiscard]] const std::string& styleSheet() const { return styleSheet_; }

    /// Sends a message of this component, with its id as param or another.
    void notify(std::uint32_t message);
    void notify(std::uint32_t message, std::uint32_t param);

protected:
    /// Reads what is common to all tags and builds the children.
    StdComponent(const KindInfo& kind, const util::xml::Element& element);

    // Hooks of the widget layer and of the kinds.

    virtual void build() {}   ///< in show(), ahead of the children: layout, paths, images
    virtual void unbuild() {} ///< in hide(), behind the children
    [[nodiscard]] virtual bool showsChild(std::size_t /*index*/) const { return true; }
    virtual void applyVisible(bool /*value*/) {}
    virtual void applyEnabled(bool /*value*/) {}
    virtual void applyLimits() {} ///< the minimum or the maximum has changed
    virtual void applySize() {}
    virtual void applyPosition() {}
    virtual void applyLabel() {}

    /// What the destructor does, for classes whose hooks are needed at their end: tells the
    /// listeners, leaves the parent, ends the children. The second call does nothing.
    void end();
    void setWidgetOf(QWidget* widget) { widget_ = widget; }
    [[nodiscard]] bool ownEnabled() const { return common_.enabled; } ///< not minding the ancestors
    [[nodiscard]] bool ownVisible() const { return common_.visible; }

    void childAdded(Component* child, std::size_t index) override;
    void childRemoved(Component* child, std::size_t index) override;

private:
    void readCommon(const util::xml::Element& element);
    void readChildren(const util::xml::Element& element);
    void writeCommon(util::xml::Element& element) const;
    [[nodiscard]] bool fixes(const char* direction) const;

    const KindInfo& kind_;
    CommonFields common_;
    std::string tooltip_, styleSheet_;
    std::vector<std::pair<std::string, std::string>> variables_;
    DynamicPtr<Background> background_;
    util::xml::Element sourcePopup_, popup_;
    QWidget* widget_ = nullptr;
    bool shown_ = false, highlight_ = false, ended_ = false;
};

/// A kind with an interface, and fields that a table of attributes fills.
template <class Interface, class Fields>
class FieldComponent : public StdComponent, public Interface
{
public:
    componentinterface::Interface* interface() override { return static_cast<Interface*>(this); }
    void writeXml(util::xml::Element& element) const override
    {
        StdComponent::writeXml(element);
        writeAttributes(element, rows_, fields_, defaults_);
    }

protected:
    FieldComponent(const KindInfo& kind, std::span<const Row<Fields>> rows,
                   const util::xml::Element& element, const Fields& defaults = {})
        : StdComponent(kind, element), fields_(defaults), rows_(rows), defaults_(defaults)
    {
        readAttributes(element, rows, fields_);
    }

    Fields fields_;

private:
    std::span<const Row<Fields>> rows_;
    const Fields defaults_;
};

} // namespace tvw::gui
