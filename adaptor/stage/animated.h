/// A node's value over time: its keys and what was written without laying one.
#pragma once

#include "adaptor/stage/key_track.h"

namespace tvw::rgs::stage {

/// Without keys the value is the node's constant one. With keys, a value that is written at a time
/// with no key laid is held: it shows at that time until the stage's time moves, a key is laid or
/// something is undone.
template <class T>
struct Animated
{
    KeyTrack<T> keys;
    std::uint64_t noted = 0;     ///< undo bracket for which the keys were remembered
    std::uint64_t heldEpoch = 0; ///< of the stage, when the value was held; 0: never
    Flicks heldTime = 0;
    T held{};

    [[nodiscard]] bool isHeld(Flicks time, std::uint64_t epoch) const noexcept
    {
        return heldEpoch == epoch && heldTime == time;
    }

    [[nodiscard]] T at(Flicks time, std::uint64_t epoch, const T& constant) const noexcept
    {
        if (isHeld(time, epoch))
            return held;
        return keys.empty() ? constant : keys.at(time);
    }

    void hold(Flicks time, std::uint64_t epoch, const T& value) noexcept
    {
        held = value;
        heldTime = time;
        heldEpoch = epoch;
    }
    void letGo() noexcept { heldEpoch = 0; }
};

} // namespace tvw::rgs::stage
