#include "core/key_hook.h"

#include "core/core_interface.h"

namespace tvw::rgs::core {

KeyHook::KeyHook() = default;

void KeyHook::setKeys(const std::vector<HookKey>& keys)
{
    for (const HookKey& key : keys) {
        if (key.key >= 0 && key.key < static_cast<std::int32_t>(table_.size()))
            table_[static_cast<std::size_t>(key.key)] = {key.key, key.modifiers};
    }
}

bool KeyHook::event(std::int32_t virtualKey, bool isDown, unsigned modifiers)
{
    if (!active_ || virtualKey < 0 || virtualKey >= static_cast<std::int32_t>(table_.size()))
        return false;
    const Entry& entry = table_[static_cast<std::size_t>(virtualKey)];
    if (entry.key == virtualKey && (entry.modifiers & ~modifiers) == 0)
        return false;
    if (callback_)
        callback_(virtualKey, isDown, modifiers);
    return true;
}

} // namespace tvw::rgs::core
