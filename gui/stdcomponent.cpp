#include "gui/stdcomponent.h"

#include "gui/message_ids.h"
#include "util/factory.h"

#include <algorithm>

namespace tvw::gui {

using util::xml::Element;

namespace {

constexpr Size kAnySize{0x3FFFFFFF,
                        0x3FFFFFFF}; ///< what is available to a component without parent

/// The numbers among the common attributes, each a plain pair of key and field.
struct NumberRow
{
    const char* key;
    int& (*field)(CommonFields& fields);
};

#define TVW_NUMBER(key, path)                                                                      \
    NumberRow                                                                                      \
    {                                                                                              \
        key, [](CommonFields& f) -> int& { return f.path; }                                        \
    }
constexpr NumberRow kNumbers[] = {
    TVW_NUMBER("id", id),
    TVW_NUMBER("left", position.x),
    TVW_NUMBER("top", position.y),
    TVW_NUMBER("width", size.width),
    TVW_NUMBER("height", size.height),
    TVW_NUMBER("minwidth", minSize.width),
    TVW_NUMBER("minheight", minSize.height),
    TVW_NUMBER("maxwidth", maxSize.width),
    TVW_NUMBER("maxheight", maxSize.height),
    TVW_NUMBER("tabstop", tabStop),
    TVW_NUMBER("tooltipid", tooltipId),
};
constexpr NumberRow kDesired[] = {
    TVW_NUMBER("desiredwidth", desiredSize.width),
    TVW_NUMBER("desiredheight", desiredSize.height),
};
#undef TVW_NUMBER

void readNumbers(const Element& element, std::span<const NumberRow> rows, CommonFields& fields)
{
    for (const NumberRow& row : rows)
        readValue(element.attributeValue(row.key), row.field(fields));
}

void writeNumbers(Element& element, std::span<const NumberRow> rows, CommonFields fields,
                  CommonFields defaults)
{
    for (const NumberRow& row : rows) {
        if (row.field(fields) != row.field(defaults))
            element.setAttribute(row.key, textOf(row.field(fields)));
    }
}

bool isStructural(std::string_view name)
{
    return name == "tooltip" || name == "menu" || name == "popup" || name == "background";
}

} // namespace

StdComponent::StdComponent(const KindInfo& kind, const Element& element) : kind_(kind)
{
    setName(kind.tag);
    readCommon(element);
    readChildren(element);
}

StdComponent::~StdComponent()
{
    end();
}

void StdComponent::end()
{
    if (ended_)
        return;
    ended_ = true;
    notify(message::destroyed);
    detach();
    while (childCount() > 0) {
        Component* const child = childAt(0);
        child->destroy();
    }
}

void StdComponent::notify(std::uint32_t id)
{
    notify(id, static_cast<std::uint32_t>(common_.id));
}

void StdComponent::notify(std::uint32_t id, std::uint32_t param)
{
    Message sent(id, param);
    originate(sent);
}

// From and to the file.

bool StdComponent::fixes(const char* direction) const
{
    return common_.fixed == "yes" || common_.fixed == direction;
}

void StdComponent::readCommon(const Element& element)
{
    readNumbers(element, kNumbers, common_);
    common_.desiredSize = common_.size;
    readNumbers(element, kDesired, common_);
    common_.label = element.attributeValue("label");
    readValue(element.attributeValue("visible"), common_.visible);
    readValue(element.attributeValue("enabled"), common_.enabled);
    common_.fixed = element.attributeValue("fixed");
    if (fixes("horizontal"))
        common_.minSize.width = common_.maxSize.width = common_.desiredSize.width;
    if (fixes("vertical"))
        common_.minSize.height = common_.maxSize.height = common_.desiredSize.height;
    common_.size = clampSize(common_.size);
    tooltip_ = element.child("tooltip").text();
    styleSheet_ = element.child("style").text();
    sourcePopup_ = element.child("popup");
    popup_ = sourcePopup_;
    if (element.childCount("background") > 0)
        background_.reset(
            AbstractFactory<Background>::instance().create(element.child("background")));
}

void StdComponent::readChildren(const Element& element)
{
    for (const Element& child : element.children()) {
        if (child.kind() == util::xml::Kind::Tag && !isStructural(child.name()))
            addChild(AbstractFactory<Component>::instance().create(child));
    }
}

void StdComponent::writeCommon(Element& element) const
{
    CommonFields defaults;
    if (fixes("horizontal")) { // what `fixed` says need not be said twice
        defaults.minSize.width = common_.minSize.width;
        defaults.maxSize.width = common_.maxSize.width;
    }
    if (fixes("vertical")) {
        defaults.minSize.height = common_.minSize.height;
        defaults.maxSize.height = common_.maxSize.height;
    }
    writeNumbers(element, kNumbers, common_, defaults);
    defaults.desiredSize = common_.size;
    writeNumbers(element, kDesired, common_, defaults);
    const std::pair<const char*, const std::string&> texts[] = {{"label", common_.label},
                                                                {"fixed", common_.fixed}};
    for (const auto& [key, text] : texts) {
        if (!text.empty())
            element.setAttribute(key, text);
    }
    if (!common_.visible)
        element.setAttribute("visible", "no");
    if (!common_.enabled)
        element.setAttribute("enabled", "no");
}

void StdComponent::writeXml(Element& element) const
{
    element.assign(util::xml::Tag(kind_.tag));
    writeCommon(element);
    if (!tooltip_.empty())
        element.addChild(util::xml::TagWithData("tooltip", tooltip_));
    if (!styleSheet_.empty())
        element.addChild(util::xml::TagWithData("style", styleSheet_));
    if (background_) {
        Element background;
        background_->writeXml(background);
        element.addChild(background);
    }
    element.addChild(sourcePopup_);
    for (const Component* const child : children()) {
        Element below;
        child->writeXml(below);
        element.addChild(below);
    }
}

// Identity and texts.

void StdComponent::setLabel(const std::string& text)
{
    common_.label = text;
    applyLabel();
}

void StdComponent::setTooltipId(int id)
{
    common_.tooltipId = id;
    for (Component* const child : children()) {
        if (child->tooltipId() == kNoId)
            child->setTooltipId(id);
    }
}

Component* StdComponent::findById(int id)
{
    for (Component* const child : children()) {
        if (child->id() == id)
            return child;
    }
    for (Component* const child : children()) {
        if (Component* const found = child->findById(id))
            return found;
    }
    return nullptr;
}

std::string StdComponent::expandVariables(const std::string& text) const
{
    std::string expanded = text;
    for (const auto& [name, value] : variables_) {
        for (std::size_t at = expanded.find(name); at != std::string::npos;
             at = expanded.find(name, at + value.size()))
            expanded.replace(at, name.size(), value);
    }
    return parent() != nullptr ? parent()->expandVariables(expanded) : expanded;
}

void StdComponent::setVariable(const std::string& name, const std::string& value)
{
    const auto found = std::find_if(variables_.begin(), variables_.end(),
                                    [&](const auto& pair) { return pair.first == name; });
    if (name.empty())
        return;
    if (found == variables_.end()) {
        if (!value.empty())
            variables_.emplace_back(name, value);
    } else if (value.empty()) {
        variables_.erase(found);
    } else {
        found->second = value;
    }
}

Element StdComponent::effectivePopup() const
{
    if (popup_.childCount() > 0 || parent() == nullptr)
        return popup_;
    return parent()->effectivePopup();
}

// Geometry.

Size StdComponent::clampSize(Size size) const
{
    const auto clamp = [](int value, int low, int high) {
        return std::min(std::max(value, low), high);
    };
    return {clamp(size.width, common_.minSize.width, common_.maxSize.width),
            clamp(size.height, common_.minSize.height, common_.maxSize.height)};
}

void StdComponent::setSize(Size size)
{
    common_.size = size;
    notify(message::resized);
    applySize();
}

void StdComponent::setPosition(Point point)
{
    common_.position = point;
    notify(message::moved);
    applyPosition();
}

void StdComponent::setMinSize(Size size)
{
    common_.minSize = size;
    applyLimits();
}

void StdComponent::setMaxSize(Size size)
{
    common_.maxSize = size;
    applyLimits();
}

void StdComponent::setDesiredSize(Size size)
{
    common_.desiredSize = size;
    applyLimits();
}

Point StdComponent::absolutePosition() const
{
    if (isWindow())
        return {};
    const Point own = position();
    const Point above = parent() != nullptr ? parent()->absolutePosition() : Point{};
    return {above.x + own.x, above.y + own.y};
}

Size StdComponent::available() const
{
    return parent() != nullptr ? parent()->clientSize() : kAnySize;
}

// Showing.

void StdComponent::show()
{
    if (shown_)
        hide();
    if (parent() != nullptr)
        parent()->childWidgetAdded(this);
    notify(message::showBegins);
    build();
    for (std::size_t i = 0; i < childCount(); ++i) {
        if (showsChild(i))
            childAt(i)->show();
    }
    applyVisible(common_.visible);
    shown_ = true;
    notify(message::showEnded);
}

void StdComponent::hide()
{
    notify(message::hideBegins);
    for (std::size_t i = 0; i < childCount(); ++i) {
        if (childAt(i)->isShown())
            childAt(i)->hide();
    }
    unbuild();
    applyVisible(false);
    shown_ = false;
    notify(message::hideEnded);
}

void StdComponent::setVisible(bool value, bool propagate)
{
    common_.visible = value;
    if (shown_)
        applyVisible(value);
    if (propagate) {
        for (Component* const child : children())
            child->setVisible(value, true);
    }
}

bool StdComponent::isVisible() const
{
    return common_.visible && (parent() == nullptr || parent()->isVisible());
}

void StdComponent::setEnabled(bool value, bool propagate)
{
    common_.enabled = value;
    applyEnabled(value);
    if (!propagate)
        return;
    for (Component* const child : children())
        child->setEnabled(value, true);
    for (Component* above = parent(); value && above != nullptr; above = above->parent())
        above->setEnabled(true, false);
}

bool StdComponent::isEnabled() const
{
    return common_.enabled && (parent() == nullptr || parent()->isEnabled());
}

void StdComponent::setHighlight(bool value)
{
    highlight_ = value;
    repaint();
}

void StdComponent::setBackground(Background* background)
{
    background_.reset(background);
    repaint();
}

void StdComponent::childAdded(Component* child, std::size_t)
{
    if (shown_)
        childWidgetAdded(child);
}

void StdComponent::childRemoved(Component* child, std::size_t)
{
    if (shown_)
        childWidgetRemoved(child);
}

} // namespace tvw::gui
