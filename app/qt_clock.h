/// The wall clock with Qt's event loop: what drives a take in the studio.
#pragma once

#include "core/timer.h"

#include <QElapsedTimer>
#include <QObject>

#include <map>

namespace tvw::rgs::app {

class QtClock final : public QObject, public core::Clock
{
public:
    QtClock() { clock_.start(); }

    std::int64_t elapsedMs() override { return clock_.elapsed(); }
    void startTimer(core::TimerTarget& target, std::int32_t id, double seconds) override;
    void killTimer(core::TimerTarget& target, std::int32_t id) override;
    void processEvents() override; ///< those that were posted already

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Entry
    {
        core::TimerTarget* target;
        std::int32_t id;
    };

    QElapsedTimer clock_;
    std::map<int, Entry> timers_; ///< by Qt's number
};

} // namespace tvw::rgs::app
