/// The observer graph: nodes that hear each other's messages.
#pragma once

#include "util/message.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tvw {

/// A node hears its sources and is heard by its listeners; neither is owned. A message is a plain
/// call: when the sending function returns, every receiver has dealt with it.
///
/// A handler may connect, disconnect and destroy any node, the sending one included: a broadcast
/// calls each node that listened at its start and still does once, and none that came during it.
///
/// The order of the virtual functions is frozen. [main thread]
class MessageNode
{
public:
    explicit MessageNode(std::string name);
    MessageNode(const MessageNode&) = delete;
    MessageNode& operator=(const MessageNode&) = delete;

    virtual void setName(const std::string& name);
    /// The handler. isBroadcast: the call comes from a broadcast, not from a direct send.
    virtual void receive(Message& message, bool isBroadcast);
    /// Sends directly; origin stays, so that this is how a message is passed on. A null target
    /// hears nothing. Sender and receiver are as before when it returns.
    virtual void sendTo(MessageNode* target, Message& message);
    /// Calls the listeners from the last to the first; origin stays. Sender and receiver are as
    /// before when it returns.
    virtual void broadcast(Message& message);
    /// As sendTo, with this node as the origin for the time of the call.
    virtual void originateTo(MessageNode* target, Message& message);
    /// As broadcast, with this node as the origin for the time of the call.
    virtual void originate(Message& message);
    /// Hears source from now on and tells it so with kConnected. True also if it did already;
    /// false if source is null, is about to end, or holds a half of the link.
    virtual bool listenTo(MessageNode* source);
    /// Tells source with kDisconnected, while the link still stands, and cuts the link. True also
    /// if there was no link; false if source is null or its half of the link is missing.
    virtual bool stopListeningTo(MessageNode* source);
    [[nodiscard]] virtual const std::string& name() const;
    [[nodiscard]] virtual std::size_t sourceCount() const;
    /// Null if i is out of range.
    [[nodiscard]] virtual MessageNode* sourceAt(std::size_t i) const;
    [[nodiscard]] virtual std::size_t listenerCount() const;
    /// Null if i is out of range.
    [[nodiscard]] virtual MessageNode* listenerAt(std::size_t i) const;
    [[nodiscard]] virtual bool hasListener(const MessageNode* node) const;
    [[nodiscard]] virtual bool hasSource(const MessageNode* node) const;
    /// Cuts all links of this node, then links it with all of other's listeners and sources. Null
    /// or this node itself changes nothing.
    virtual void replaceLinks(MessageNode* other);
    /// Tells the listeners with kNodeDestroyed, then cuts the links to the sources and to the
    /// listeners.
    virtual ~MessageNode();

private:
    /// A broadcast or a cut that is under way on this node; it stands on the stack of that call.
    struct Activity;

    void sendToListeners(Message& message);
    void removeListener(const MessageNode* listener);
    void cutAllLinks();
    void unlink(MessageNode* source);
    [[nodiscard]] bool isLeaving(const MessageNode* source) const;

    std::string name_;
    std::vector<MessageNode*> listeners_;
    std::vector<MessageNode*> sources_;
    Activity* activities_ = nullptr; ///< the innermost first
    bool isEnding_ = false;
};

} // namespace tvw
