#include "app/qt_clock.h"

#include <QCoreApplication>
#include <QTimerEvent>

#include <algorithm>

namespace tvw::rgs::app {

void QtClock::startTimer(core::TimerTarget& target, std::int32_t id, double seconds)
{
    killTimer(target, id);
    const int interval = std::max(1, static_cast<int>(seconds * 1000.0));
    // The run loop counts the frames that are due itself; a precise timer only keeps them evenly
    // apart.
    timers_[QObject::startTimer(interval, Qt::PreciseTimer)] = {&target, id};
}

void QtClock::killTimer(core::TimerTarget& target, std::int32_t id)
{
    for (auto it = timers_.begin(); it != timers_.end(); ++it) {
        if (it->second.target == &target && it->second.id == id) {
            QObject::killTimer(it->first);
            timers_.erase(it);
            return;
        }
    }
}

void QtClock::processEvents()
{
    QCoreApplication::sendPostedEvents();
}

void QtClock::timerEvent(QTimerEvent* event)
{
    const auto found = timers_.find(event->timerId());
    if (found == timers_.end()) {
        QObject::killTimer(event->timerId());
        return;
    }
    const Entry entry = found->second; // the handler may kill it
    entry.target->onTimer(entry.id, elapsedMs());
}

} // namespace tvw::rgs::app
