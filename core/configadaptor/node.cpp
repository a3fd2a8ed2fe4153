#include "core/configadaptor/node.h"

#include <algorithm>
#include <utility>

namespace tvw::rgs::core::configadaptor {

using util::xml::Element;

namespace {

const UndoBracket* undoBracket = nullptr;
ShowInView showInView = nullptr;
std::size_t viewsInProcess = 0;

} // namespace

void setUndoBracket(const UndoBracket* bracket)
{
    undoBracket = bracket;
}

void setShowInView(ShowInView show)
{
    showInView = show;
}

Node::Node(NodeKind kind, std::uint32_t id, std::string label, std::string tooltip,
           CInterfaceCallback* callback)
    : MessageNode(label), kind_(kind), id_(id), label_(std::move(label)),
      tooltip_(std::move(tooltip)), callback_(callback)
{
}

Node::~Node()
{
    viewsInProcess -= views_.size();
}

void Node::addView(gui::Component* view)
{
    views_.push_back(view);
    ++viewsInProcess;
}

void Node::removeView(gui::Component* view)
{
    viewsInProcess -= std::erase(views_, view);
}

void Node::refresh()
{
    if (viewsInProcess == 0)
        return;
    showInViews();
    for (Node* const child : children())
        child->refresh();
}

void Node::showInViews()
{
    if (!showInView)
        return;
    for (gui::Component* const view : views_)
        showInView(*view, *this);
}

void Node::writeProfile(Element& out)
{
    out.clear();
}

void Node::readProfile(const Element&) {}

void Node::findUndoData(Element& out)
{
    out.clear();
}

double Node::valueOf(std::uint32_t id)
{
    if (Node* const node = findNode(id))
        return node->value();
    for (Node* const child : children()) {
        if (const double value = child->valueOf(id); value != 0.0)
            return value; // an item that holds several values knows their numbers itself
    }
    return 0.0;
}

void Node::setValueOf(std::uint32_t id, double value)
{
    if (Node* const node = findNode(id)) {
        node->setValue(value);
        return;
    }
    for (Node* const child : children())
        child->setValueOf(id, value);
}

Node* Node::findNode(std::uint32_t id)
{
    if (id == kNoId)
        return nullptr;
    if (id_ == id)
        return this;
    for (Node* const child : children()) {
        if (Node* const found = child->findNode(id))
            return found;
    }
    return nullptr;
}

void Node::change(double) {}

void Node::changeText(const std::string&) {}

void Node::press() {}

void Node::announceChange()
{
    if (callback_) {
        const UndoBracket* const bracket = undoBracket;
        if (bracket)
            bracket->begin(label_);
        callback_->itemChanged(label_);
        if (bracket)
            bracket->end();
    }
    Message changed(message::profileChanged);
    originate(changed);
    Message changedItem(message::itemChanged, id_);
    originate(changedItem);
}

const Element& Node::itemIn(const Element& group) const
{
    static const Element kNone;
    for (const Element& item : group.children()) {
        if (item.name() != "item")
            continue;
        const auto id = util::xml::integer(item.attributeValue("id"));
        const bool isOurs = id && *id == static_cast<long>(id_);
        if (isOurs && (!item.hasAttribute("label") || item.attributeValue("label") == label_))
            return item;
    }
    return kNone;
}

Element Node::makeItem(std::string_view type) const
{
    util::xml::Tag item("item");
    item.setAttribute("id", std::to_string(id_));
    if (!type.empty())
        item.setAttribute("type", type);
    item.setAttribute("label", label_);
    return item;
}

void Node::addLayoutsTo(Element& list)
{
    for (Node* const child : children())
        list.addChild(child->buildLayout());
}

} // namespace tvw::rgs::core::configadaptor
