/// Timers and the clock of the run loop.
#pragma once

#include <cstdint>

namespace tvw::rgs::core {

/// Hears its timers. THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN.
class TimerTarget
{
public:
    /// id: as given to `startTimer`. elapsedMs: the clock [ms].
    virtual void onTimer(std::int32_t id, std::int64_t elapsedMs) = 0;

protected:
    ~TimerTarget() = default;
};

/// A source of time: the wall clock with an event loop in the studio, a virtual clock at machine speed
/// in scripts and tests. Runs on the main thread.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Milliseconds since some fixed moment; never falls.
    virtual std::int64_t elapsedMs() = 0;

    /// Calls `target` every truncate(seconds * 1000) ms, at least 1 ms; replaces its timer of that id.
    virtual void startTimer(TimerTarget& target, std::int32_t id, double seconds) = 0;
    virtual void killTimer(TimerTarget& target, std::int32_t id) = 0; ///< unknown: nothing

    /// Lets what waits on the thread go through: window events, keys, host messages.
    virtual void processEvents() = 0;
};

/// A clock that stands until it is told to go on: the next timer that is due is fired at once, and the
/// clock then shows its time. The same loop so runs at machine speed, and the same each time.
class VirtualClock final : public Clock
{
public:
    std::int64_t elapsedMs() override { return microseconds_ / 1000; }
    void startTimer(TimerTarget& target, std::int32_t id, double seconds) override;
    void killTimer(TimerTarget& target, std::int32_t id) override;
    void processEvents() override {}

    /// Fires the next timer that is due; false when none waits.
    bool fireNext();

    /// Lets time pass without an event, as a stall does.
    void stall(std::int64_t milliseconds) { microseconds_ += milliseconds * 1000; }

private:
    static constexpr int kMost = 8;
    struct Timer
    {
        TimerTarget* target = nullptr;
        std::int32_t id = 0;
        std::int64_t due = 0;      ///< [us]
        std::int64_t interval = 0; ///< [us]
    };
    Timer* find(TimerTarget& target, std::int32_t id);

    std::int64_t microseconds_ = 0;
    Timer timers_[kMost];
};

} // namespace tvw::rgs::core
