#include "util/messagenode.h"

#include <algorithm>
#include <utility>

namespace tvw {

struct MessageNode::Activity
{
    explicit Activity(MessageNode& owner) : node(&owner), outer(owner.activities_)
    {
        owner.activities_ = this;
    }
    ~Activity()
    {
        if (node != nullptr) {
            node->activities_ = outer;
        }
    }
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

    MessageNode* node; ///< null as soon as the node has ended
    Activity* outer;
    std::size_t remaining = 0;            ///< of a broadcast: listeners not yet called
    const MessageNode* leaving = nullptr; ///< of a cut: the source that is being told
};

namespace {

/// Puts back what a send changes in the message.
class Restore
{
public:
    explicit Restore(Message& message)
        : message_(message), origin_(message.origin), sender_(message.sender),
          receiver_(message.receiver)
    {
    }
    ~Restore()
    {
        message_.origin = origin_;
        message_.sender = sender_;
        message_.receiver = receiver_;
    }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

private:
    Message& message_;
    MessageNode* origin_;
    MessageNode* sender_;
    MessageNode* receiver_;
};

bool contains(const std::vector<MessageNode*>& nodes, const MessageNode* node)
{
    return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

MessageNode* at(const std::vector<MessageNode*>& nodes, std::size_t i)
{
    return i < nodes.size() ? nodes[i] : nullptr;
}

} // namespace

MessageNode::MessageNode(std::string name) : name_(std::move(name)) {}

MessageNode::~MessageNode()
{
    isEnding_ = true;
    Message destroyed(Message::kNodeDestroyed);
    MessageNode::originate(destroyed);
    while (!sources_.empty()) {
        MessageNode* const source = sources_.back();
        if (source->hasListener(this)) {
            Message gone(Message::kDisconnected);
            MessageNode::originateTo(source, gone);
        }
        if (contains(sources_, source)) { // else it has ended in its handler
            unlink(source);
        }
    }
    while (!listeners_.empty()) {
        MessageNode* const listener = listeners_.back();
        listener->stopListeningTo(this);
        if (contains(listeners_, listener)) { // half a link, or a cut that is under way already
            std::erase(listener->sources_, this);
            removeListener(listener);
        }
    }
    for (Activity* a = activities_; a != nullptr; a = a->outer) {
        a->node = nullptr;
    }
}

void MessageNode::setName(const std::string& name)
{
    name_ = name;
}

void MessageNode::receive(Message& /*message*/, bool /*isBroadcast*/) {}

void MessageNode::sendTo(MessageNode* target, Message& message)
{
    if (target == nullptr) {
        return;
    }
    const Restore restore(message);
    message.sender = this;
    message.receiver = target;
    target->receive(message, false);
}

void MessageNode::broadcast(Message& message)
{
    const Restore restore(message);
    sendToListeners(message);
}

void MessageNode::originateTo(MessageNode* target, Message& message)
{
    const Restore restore(message);
    message.origin = this;
    sendTo(target, message);
}

void MessageNode::originate(Message& message)
{
    const Restore restore(message);
    message.origin = this;
    sendToListeners(message);
}

void MessageNode::sendToListeners(Message& message)
{
    Activity sending(*this);
    sending.remaining = listeners_.size();
    while (sending.node != nullptr && sending.remaining > 0) {
        --sending.remaining;
        message.sender = this;
        message.receiver = listeners_[sending.remaining];
        message.receiver->receive(message, true);
    }
}

bool MessageNode::listenTo(MessageNode* source)
{
    if (source == nullptr || source->isEnding_ || isEnding_) {
        return false;
    }
    if (contains(sources_, source)) {
        return true;
    }
    if (contains(source->listeners_, this)) {
        return false;
    }
    sources_.push_back(source);
    source->listeners_.push_back(this);
    Message connected(Message::kConnected);
    originateTo(source, connected);
    return true;
}

bool MessageNode::stopListeningTo(MessageNode* source)
{
    if (source == nullptr) {
        return false;
    }
    if (!contains(sources_, source) || isLeaving(source)) {
        return true;
    }
    if (!contains(source->listeners_, this)) {
        return false;
    }
    Activity cutting(*this);
    cutting.leaving = source;
    Message gone(Message::kDisconnected);
    originateTo(source, gone);
    if (cutting.node != nullptr && contains(sources_, source)) { // neither ended in the handler
        unlink(source);
    }
    return true;
}

const std::string& MessageNode::name() const
{
    return name_;
}

std::size_t MessageNode::sourceCount() const
{
    return sources_.size();
}

MessageNode* MessageNode::sourceAt(std::size_t i) const
{
    return at(sources_, i);
}

std::size_t MessageNode::listenerCount() const
{
    return listeners_.size();
}

MessageNode* MessageNode::listenerAt(std::size_t i) const
{
    return at(listeners_, i);
}

bool MessageNode::hasListener(const MessageNode* node) const
{
    return contains(listeners_, node);
}

bool MessageNode::hasSource(const MessageNode* node) const
{
    return contains(sources_, node);
}

void MessageNode::replaceLinks(MessageNode* other)
{
    if (other == nullptr || other == this) {
        return;
    }
    cutAllLinks();
    // The lists are read anew at each turn: a handler may change them.
    for (std::size_t i = 0; i < other->listeners_.size(); ++i) {
        other->listeners_[i]->listenTo(this);
    }
    for (std::size_t i = 0; i < other->sources_.size(); ++i) {
        listenTo(other->sources_[i]);
    }
}

void MessageNode::cutAllLinks()
{
    for (std::size_t i = sources_.size(); i-- > 0;) {
        if (i < sources_.size()) {
            stopListeningTo(sources_[i]);
        }
    }
    for (std::size_t i = listeners_.size(); i-- > 0;) {
        if (i < listeners_.size()) {
            listeners_[i]->stopListeningTo(this);
        }
    }
}

bool MessageNode::isLeaving(const MessageNode* source) const
{
    for (const Activity* a = activities_; a != nullptr; a = a->outer) {
        if (a->leaving == source) {
            return true;
        }
    }
    return false;
}

void MessageNode::unlink(MessageNode* source)
{
    std::erase(sources_, source);
    source->removeListener(this);
}

void MessageNode::removeListener(const MessageNode* listener)
{
    const auto found = std::find(listeners_.begin(), listeners_.end(), listener);
    if (found == listeners_.end()) {
        return;
    }
    const auto index = static_cast<std::size_t>(found - listeners_.begin());
    listeners_.erase(found);
    for (Activity* a = activities_; a != nullptr; a = a->outer) {
        if (index < a->remaining) {
            --a->remaining; // this one is not called any more, or the rest has moved down
        }
    }
}

} // namespace tvw
