#include "core/timer.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace tvw::rgs::core {

VirtualClock::Timer* VirtualClock::find(TimerTarget& target, std::int32_t id)
{
    for (Timer& timer : timers_) {
        if (timer.target == &target && timer.id == id)
            return &timer;
    }
    return nullptr;
}

void VirtualClock::startTimer(TimerTarget& target, std::int32_t id, double seconds)
{
    Timer* slot = find(target, id);
    for (Timer& timer : timers_) {
        if (!slot && !timer.target)
            slot = &timer;
    }
    assert(slot && "more timers than the core has");
    const auto interval = std::max<std::int64_t>(1, static_cast<std::int64_t>(std::trunc(seconds * 1000)));
    *slot = {&target, id, microseconds_ + interval * 1000, interval * 1000};
}

void VirtualClock::killTimer(TimerTarget& target, std::int32_t id)
{
    if (Timer* const timer = find(target, id))
        *timer = {};
}

bool VirtualClock::fireNext()
{
    Timer* next = nullptr;
    for (Timer& timer : timers_) {
        if (timer.target && (!next || timer.due < next->due))
            next = &timer;
    }
    if (!next)
        return false;
    microseconds_ = std::max(microseconds_, next->due);
    next->due += next->interval;
    next->target->onTimer(next->id, elapsedMs());
    return true;
}

} // namespace tvw::rgs::core
