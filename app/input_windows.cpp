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
    std::unique_ptr<InputConfigDlg>& window = windows_[&instance];
    if (!window)
        window = std::make_unique<InputConfigDlg>(instance);
    window->open();
    startTimer();
}

/// The call can come from within an event of the window, or while it asks the user something.
void InputWindows::closeOf(core::Instance& instance)
{
    const auto found = windows_.find(&instance);
    if (found == windows_.end())
        return;
    found->second->leave();
    left_.push_back(std::move(found->second));
    windows_.erase(found);
    startTimer();
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

void InputWindows::endThoseThatLeft()
{
    std::erase_if(left_, [](const auto& window) { return !window->isBusy(); });
}

} // namespace tvw::rgs::app
