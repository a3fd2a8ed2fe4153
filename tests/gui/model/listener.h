/// Hears components and keeps what they say.
#pragma once

#include "gui/component.h"
#include "gui/message_ids.h"

#include <functional>
#include <utility>
#include <vector>

namespace tvw::gui {

class Listener : public MessageNode
{
public:
    using Heard = std::pair<std::uint32_t, int>; ///< message id, param as a signed number

    Listener() : MessageNode("listener") {}
    explicit Listener(Component& component) : Listener() { listenTo(&component); }

    void receive(Message& message, bool) override
    {
        if (message.id < message::first || message.id >= message::end)
            return;
        heard.emplace_back(message.id, static_cast<int>(message.param));
        if (onMessage)
            onMessage(message);
    }

    /// The params of the messages of one number, in order.
    std::vector<int> params(std::uint32_t id) const
    {
        std::vector<int> found;
        for (const Heard& one : heard) {
            if (one.first == id)
                found.push_back(one.second);
        }
        return found;
    }
    std::size_t count(std::uint32_t id) const { return params(id).size(); }

    std::vector<Heard> heard;
    std::function<void(Message&)> onMessage;
};

} // namespace tvw::gui
