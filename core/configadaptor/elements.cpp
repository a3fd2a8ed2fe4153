#include "core/configadaptor/elements.h"

#include "core/configadaptor/item_layout.h"
#include "core/configadaptor/profile_conversion.h"

#include <iterator>
#include <utility>

namespace tvw::rgs::core::configadaptor::element {

using util::xml::Element;
using util::xml::Tag;
using util::xml::Text;

namespace {

constexpr const char* kLabelStyles[] = {"normal", "raised", "thin", "sunken"}; ///< by number

} // namespace

Root::Root() : Node(NodeKind::Root, kNoId, "root", {}, nullptr) {}

void Root::writeProfile(Element& out)
{
    out = Tag("configprofile");
    out.setAttribute("version", kProfileVersion);
    for (Node* const child : children()) {
        Element element;
        child->writeProfile(element);
        out.addChild(element);
    }
}

void Root::readProfile(const Element& profile)
{
    if (!isPresentProfile(profile)) {
        const Element converted = convertProfile(profile);
        for (Node* const child : children())
            child->readProfile(converted);
        return;
    }
    for (Node* const child : children())
        child->readProfile(profile);
}

Element Root::buildLayout()
{
    Tag list("list");
    addLayoutsTo(list);
    Tag scroll("scroll");
    scroll.addChild(list);
    return scroll;
}

Group::Group(std::string label, std::string tooltip)
    : Node(NodeKind::Group, kNoId, std::move(label), std::move(tooltip), nullptr)
{
}

void Group::writeProfile(Element& out)
{
    out = Tag("group");
    out.setAttribute("id", "-1");
    out.setAttribute("label", label());
    for (Node* const child : children()) {
        Element element;
        child->writeProfile(element);
        out.addChild(element);
    }
}

void Group::readProfile(const Element& profile)
{
    for (const Element& group : profile.children()) {
        if (group.name() != "group")
            continue;
        const std::string id = group.attributeValue("id");
        if (!id.empty() && util::xml::integer(id) != -1)
            continue;
        for (Node* const child : children())
            child->readProfile(group);
    }
}

Element Group::buildLayout()
{
    Tag inner("list");
    inner.setAttribute("id", "1");
    addLayoutsTo(inner);
    Tag border("border");
    border.setAttribute("style", "none");
    border.addChild(inner);

    Tag remark("label"); // the title stands in the frame; below it what the tooltip says
    remark.setAttribute("valign", "top");
    remark.addChild(Text(tooltip()));
    Tag list("list");
    list.addChild(remark);
    list.addChild(border);

    Tag group("group");
    group.setAttribute("label", label());
    group.setAttribute("valign", "top");
    group.setAttribute("padding", "5 0 0 0");
    group.setAttribute("desiredwidth", "200");
    group.setAttribute("enabled", "yes");
    group.setAttribute("minheight", "20");
    group.addChild(list);
    return group;
}

TextBox::TextBox(std::uint32_t id, std::string label, std::string tooltip, std::string* variable,
                 CInterfaceCallback* callback)
    : Node(NodeKind::TextBox, id, std::move(label), std::move(tooltip), callback),
      variable_(variable)
{
}

void TextBox::refresh()
{
    showInViews();
}

void TextBox::writeProfile(Element& out)
{
    out = makeItem("text");
    out.addChild(Text(*variable_));
}

void TextBox::readProfile(const Element& profile)
{
    const Element& item = itemIn(profile);
    if (item.isEmpty())
        return;
    *variable_ = item.text();
    refresh();
}

Element TextBox::buildLayout()
{
    Element box = makeComponent("textbox", *this);
    box.setAttribute("defaulttext", *variable_);
    return makeRow(*this, box);
}

void TextBox::changeText(const std::string& text)
{
    *variable_ = text;
    refresh();
    announceChange();
}

ComboBox::ComboBox(std::uint32_t id, std::string label, std::string tooltip,
                   std::vector<std::string> items, std::int32_t* index,
                   CInterfaceCallback* callback)
    : Node(NodeKind::ComboBox, id, std::move(label), std::move(tooltip), callback),
      items_(std::move(items)), index_(index)
{
}

void ComboBox::update(const std::vector<std::string>& items)
{
    items_ = items;
    refresh();
}

void ComboBox::refresh()
{
    showInViews();
}

void ComboBox::writeProfile(Element& out)
{
    out = makeItem("text");
    out.addChild(Text(text()));
}

void ComboBox::readProfile(const Element& profile)
{
    const Element& item = itemIn(profile);
    if (!item.isEmpty() && choose(item.text()))
        refresh();
}

void ComboBox::setValue(double value)
{
    if (value >= 0.0 && value < static_cast<double>(items_.size()))
        *index_ = static_cast<std::int32_t>(value);
}

Element ComboBox::buildLayout()
{
    Element box = makeComponent("combobox", *this);
    for (const std::string& item : items_)
        box.addChild(util::xml::TagWithData("item", item));
    return makeRow(*this, box);
}

void ComboBox::change(double value)
{
    if (!(value >= 0.0 && value < static_cast<double>(items_.size())))
        return;
    setValue(value);
    refresh();
    announceChange();
}

void ComboBox::changeText(const std::string& text)
{
    if (!choose(text))
        return;
    refresh();
    announceChange();
}

bool ComboBox::choose(std::string_view text)
{
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (items_[i] == text) {
            *index_ = static_cast<std::int32_t>(i);
            return true;
        }
    }
    return false;
}

std::string ComboBox::text()
{
    const bool inRange = *index_ >= 0 && static_cast<std::size_t>(*index_) < items_.size();
    return inRange ? items_[static_cast<std::size_t>(*index_)] : std::string();
}

Button::Button(std::uint32_t id, std::string label, std::string tooltip,
               CInterfaceCallback* callback)
    : Node(NodeKind::Button, id, std::move(label), std::move(tooltip), callback)
{
}

Element Button::buildLayout()
{
    Element button = makeComponent("button", *this);
    button.setAttribute("label", label());
    return button;
}

void Button::press()
{
    announceChange();
}

Label::Label(std::uint32_t id, std::string text, std::int32_t style)
    : Node(NodeKind::Label, id, std::move(text), {}, nullptr), style_(style)
{
}

Element Label::buildLayout()
{
    Element text = makeComponent("label", *this);
    text.setAttribute("wrap", "yes");
    if (style_ > 0 && style_ < static_cast<std::int32_t>(std::size(kLabelStyles)))
        text.setAttribute("style", kLabelStyles[style_]);
    text.addChild(Text(label()));
    return text;
}

} // namespace tvw::rgs::core::configadaptor::element
