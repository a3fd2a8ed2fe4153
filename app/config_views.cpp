#include "app/config_views.h"

#include "gui/componentinterface/checkbox.h"
#include "gui/componentinterface/combobox.h"
#include "gui/componentinterface/spinner.h"
#include "gui/componentinterface/textbox.h"
#include "gui/message_ids.h"

#include <QLineEdit>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::configadaptor::Node;
using core::configadaptor::NodeKind;

namespace {

int showing = 0; ///< depth of showings: what views tell meanwhile is no doing of the user

std::uint32_t itemIdOf(const gui::Component& view)
{
    return static_cast<std::uint32_t>(view.id() - kFirstPanelId);
}

double valueFor(const gui::Component& view, Node& node)
{
    return node.kind() == NodeKind::Template ? node.valueOf(itemIdOf(view)) : node.value();
}

/// Whether the spinner shows that value already, to its last digit. Half-way between two digits
/// counts as another value: the user may mean either.
bool shows(const ci::Spinner& spinner, double value)
{
    const double held = std::min(std::max(value, spinner.min()), spinner.max());
    const double half = 0.5 * std::pow(10.0, -spinner.decimals());
    return std::abs(spinner.value() - held) < half * 0.9999;
}

void showNumber(ci::Spinner& spinner, double value)
{
    if (!shows(spinner, value)) // else a number that is being typed would go
        spinner.setValue(value);
}

/// What the user is typing stays until he is done.
void showText(gui::Component& view, ci::TextBox& box, const std::string& text)
{
    const auto* const line = dynamic_cast<QLineEdit*>(view.widget());
    const bool isTyping = line && line->isModified() && line->hasFocus();
    if (!isTyping && box.text() != text)
        box.setText(text);
}

void showChoice(ci::ComboBox& box, Node& node)
{
    const std::vector<std::string> choices = node.choices();
    bool isSame = static_cast<std::size_t>(box.count()) == choices.size();
    for (std::size_t i = 0; isSame && i < choices.size(); ++i)
        isSame = box.itemAt(static_cast<int>(i)) == choices[i];
    if (!isSame) {
        box.clear();
        for (const std::string& choice : choices)
            box.addItem(choice);
    }
    const int index = static_cast<int>(node.value());
    if (box.currentIndex() != index)
        box.selectIndex(index);
}

void showInView(gui::Component& view, Node& node)
{
    ++showing;
    if (auto* const spinner = gui::toSpinner(&view))
        showNumber(*spinner, valueFor(view, node));
    else if (auto* const check = gui::toCheckBox(&view))
        check->setValue(valueFor(view, node) != 0.0);
    else if (auto* const text = gui::toTextBox(&view))
        showText(view, *text, node.text());
    else if (auto* const combo = gui::toComboBox(&view))
        showChoice(*combo, node);
    --showing;
}

/// The number that the user means: all digits of the default if that is what he went back to.
double meantValue(const ci::Spinner& spinner)
{
    return shows(spinner, spinner.defaultValue()) ? spinner.defaultValue() : spinner.value();
}

void setValue(const gui::Component& view, Node& node, double value)
{
    if (node.kind() == NodeKind::Template)
        node.setValueOf(itemIdOf(view), value);
    else
        node.change(value);
}

/// Digits behind the point that show a step of the spinner, within what a spinner is made with and
/// what a double holds.
int decimalsFor(Node& node)
{
    constexpr int kFewest = 4, kMost = 9;
    int digits = kFewest;
    for (double step = std::abs(node.step()) * 1e4;
         digits < kMost && std::abs(step - std::round(step)) > 1e-6; step *= 10.0)
        ++digits;
    return digits;
}

} // namespace

ConfigViews::ConfigViews(std::function<void()> changed, std::function<void()> ended)
    : MessageNode("ConfigViews"), changed_(std::move(changed)), ended_(std::move(ended))
{
    core::configadaptor::setShowInView(&showInView);
}

ConfigViews::~ConfigViews()
{
    unlink();
}

void ConfigViews::link(Node& items, gui::Component& panel)
{
    unlink();
    items_ = &items;
    std::unordered_map<int, gui::Component*> byId;
    const auto collect = [&byId](const auto& self, gui::Component& component) -> void {
        const int id = component.id() - kFirstPanelId;
        if (id >= 0 && id < kFirstPanelId)
            byId.emplace(id, &component);
        for (gui::Component* const child : component.children())
            self(self, *child);
    };
    collect(collect, panel);
    listenTo(&items);
    linkNode(items, byId);
    items.refresh();
}

void ConfigViews::linkNode(Node& node, const std::unordered_map<int, gui::Component*>& byId)
{
    if (node.kind() == NodeKind::Template) {
        listenTo(&node);
        for (const auto& [id, view] : byId) {
            const std::string tag = gui::tagOf(view);
            if (tag == ci::Spinner::kTag || tag == ci::CheckBox::kTag)
                linkView(node, *view);
        }
    } else if (node.id() != core::configadaptor::kNoId) {
        if (const auto found = byId.find(static_cast<int>(node.id())); found != byId.end()) {
            listenTo(&node);
            linkView(node, *found->second);
        }
    }
    for (Node* const child : node.children())
        linkNode(*child, byId);
}

void ConfigViews::linkView(Node& node, gui::Component& view)
{
    ++showing; // other digits are no other value
    if (auto* const spinner = gui::toSpinner(&view); spinner && node.kind() != NodeKind::Template)
        spinner->setDecimals(node.kind() == NodeKind::IntSpinner ? 0 : decimalsFor(node));
    --showing;
    if (!nodeOf_.emplace(&view, &node).second)
        return;
    node.addView(&view);
    listenTo(&view);
}

void ConfigViews::unlink()
{
    items_ = nullptr;
    while (!nodeOf_.empty()) {
        const auto [view, node] = *nodeOf_.begin();
        nodeOf_.erase(nodeOf_.begin());
        node->removeView(view);
    }
    while (sourceCount() > 0 && stopListeningTo(sourceAt(sourceCount() - 1))) {
    }
}

void ConfigViews::receive(Message& message, bool)
{
    namespace item = core::configadaptor::message;
    if (message.id == Message::kNodeDestroyed) {
        if (message.origin)
            forget(*message.origin);
        return;
    }
    if (message.id == item::profileChanged || message.id == item::itemChanged) {
        auto* const node = dynamic_cast<Node*>(message.origin);
        if (node && node->kind() == NodeKind::Template)
            node->refresh();
        changed_();
        return;
    }
    gui::Component* const view = gui::componentOf(message);
    const auto found = nodeOf_.find(view);
    if (found == nodeOf_.end())
        return;
    if (message.id == gui::message::destroyed) {
        found->second->removeView(view);
        nodeOf_.erase(found);
    } else if (showing == 0) {
        hearView(*view, *found->second, message);
    }
}

void ConfigViews::hearView(gui::Component& view, Node& node, const Message& message)
{
    switch (message.id) {
    case gui::message::spinnerChanged:
        if (auto* const spinner = gui::toSpinner(&view);
            spinner && !shows(*spinner, valueFor(view, node)))
            setValue(view, node, meantValue(*spinner));
        break;
    case gui::message::checkChanged:
        if (auto* const check = gui::toCheckBox(&view))
            setValue(view, node, check->value() ? 1.0 : 0.0);
        break;
    case gui::message::selectionChanged:
        if (auto* const combo = gui::toComboBox(&view); combo && combo->currentIndex() >= 0)
            node.change(combo->currentIndex());
        break;
    case gui::message::textEdited:
        if (auto* const box = gui::toTextBox(&view); box && box->text() != node.text()) {
            if (auto* const line = dynamic_cast<QLineEdit*>(view.widget()))
                line->setModified(false); // done: the tool's own text may show again
            node.changeText(box->text());
        }
        break;
    case gui::message::buttonClicked:
        node.press();
        break;
    default:
        break;
    }
}

/// An item has ended, and tells of it when it is nothing but a node of messages any more. The
/// root's end comes ahead of that of the items below it.
void ConfigViews::forget(MessageNode& ended)
{
    const auto isEnded = [&](Node* node) { return static_cast<MessageNode*>(node) == &ended; };
    std::erase_if(nodeOf_, [&](const auto& pair) { return isEnded(pair.second); });
    if (!items_ || !isEnded(items_))
        return;
    unlink();
    ended_();
}

} // namespace tvw::rgs::app
