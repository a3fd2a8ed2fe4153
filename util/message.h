/// What MessageNodes send each other.
#pragma once

#include "util/dynamicobject.h"

#include <cstdint>
#include <vector>

namespace tvw {

class MessageNode;

/// Built on the stack by whoever starts an event and handed on by reference.
struct Message
{
    /// Reserved ids: a listener has come, is about to go; the sending node is about to end.
    static constexpr std::uint32_t kConnected = 4294967295u;
    static constexpr std::uint32_t kDisconnected = 4294967294u;
    static constexpr std::uint32_t kNodeDestroyed = 4294967293u;

    explicit Message(std::uint32_t id_, std::uint32_t param_ = 0, std::uint64_t value_ = 0)
        : id(id_), param(param_), value(value_)
    {
    }

    MessageNode* origin = nullptr; ///< the node that started it; null until it is sent
    MessageNode* sender = nullptr; ///< the node that last passed it on
    std::uint32_t id;
    std::uint32_t param;             ///< a small argument, for example a component's id
    std::uint64_t value;             ///< a number, or a pointer through reinterpret_cast
    MessageNode* receiver = nullptr; ///< the node now being called
    std::vector<DynamicPtr<DynamicObject>> attachments; ///< end with the message
};

} // namespace tvw
