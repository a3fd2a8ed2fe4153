/// Which keys a run takes for itself.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace tvw::rgs::core {

struct HookKey;

namespace key {
inline constexpr std::int32_t shift = 16, control = 17, escape = 27, space = 32, z = 90;
} // namespace key

namespace modifier {
inline constexpr unsigned ctrl = 1, alt = 2, shift = 4;
} // namespace modifier

/// While active, a key of the table with matching modifiers passes on to the host; any other goes to
/// the callback and is swallowed.
class KeyHook
{
public:
    using Callback = std::function<void(std::int32_t key, bool isDown, unsigned modifiers)>;

    KeyHook();
    void setCallback(Callback callback) { callback_ = std::move(callback); }
    void setKeys(const std::vector<HookKey>& keys); ///< beside those that were set before
    void setActive(bool active) { active_ = active; }
    bool isActive() const { return active_; }

    /// virtualKey: 0 to 255, others pass. Whether the key is swallowed.
    bool event(std::int32_t virtualKey, bool isDown, unsigned modifiers);

private:
    struct Entry
    {
        std::int32_t key = -1;
        unsigned modifiers = 0; ///< that must be held
    };
    std::array<Entry, 256> table_;
    Callback callback_;
    bool active_ = false;
};

} // namespace tvw::rgs::core
