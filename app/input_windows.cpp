#include "app/input_windows.h"

#include "app/input_config_dialog.h"
#include "core/core_implementation.h"
#include "unidevice/device_hub.h"

#include <algorithm>

namespace tvw::rgs::app {

using core::CoreImplementation;
using unidevice::DeviceHub;

namespace {

constexpr std::int32_t kTimer = 1;
constexpr double kInterval = 0.04; // [s]

} // namespace

InputWindows::InputWindows() = default;

InputWindows::~InputWindows()
{
    if (CoreImplementation::exists())
        stopTimer();
}

void InputWindows::open(core::Instance& instance)
{
    endThoseThatLeft(); // a tool that went may have lain where this one lies
    std::unique_ptr<InputConfigDlg>& window = windows_[&instance];
    if (!window)
        window = std::make_unique<InputConfigDlg>(instance);
    window->open();
    startTimer();
}

void InputWindows::closeOf(core::Instance& instance)
{
    if (const auto found = windows_.find(&instance); found != windows_.end())
        found->second->leave();
}

void InputWindows::startTimer()
{
    CoreImplementation::instance().records().clock().startTimer(*this, kTimer, kInterval);
}

void InputWindows::stopTimer()
{
    CoreImplementation::instance().records().clock().killTimer(*this, kTimer);
    if (isAcquired_ && !CoreImplementation::instance().isRunning())
        DeviceHub::instance().releaseAll();
    isAcquired_ = false;
}

void InputWindows::onTimer(std::int32_t, std::int64_t)
{
    endThoseThatLeft();
    const bool isAnyShown = std::any_of(windows_.begin(), windows_.end(),
                                        [](const auto& entry) { return entry.second->isShown(); });
    if (!isAnyShown && left_.empty()) {
        stopTimer();
        return;
    }
    readDevices();
    for (const auto& [instance, window] : windows_)
        window->showLive();
}

/// A detection reads the devices too; it would miss what is read here.
void InputWindows::readDevices()
{
    const bool isDetecting = std::any_of(windows_.begin(), windows_.end(), [](const auto& entry) {
        return entry.second->isDetecting();
    });
    if (isDetecting || CoreImplementation::instance().isRunning()) {
        isAcquired_ = false;
        return;
    }
    if (!isAcquired_)
        DeviceHub::instance().acquireAll();
    isAcquired_ = true;
    DeviceHub::instance().updateAll();
}

/// Not where they leave: that can be within an event of theirs, or while they ask the user
/// something.
void InputWindows::endThoseThatLeft()
{
    for (auto entry = windows_.begin(); entry != windows_.end();) {
        if (entry->second->hasLeft())
            left_.push_back(std::move(entry->second));
        entry = entry->second ? std::next(entry) : windows_.erase(entry);
    }
    std::erase_if(left_, [](const auto& window) { return !window->isBusy(); });
}

} // namespace tvw::rgs::app
