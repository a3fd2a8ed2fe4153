/// The input windows: one for each tool that is asked for.
#pragma once

#include "core/timer.h"

#include <map>
#include <memory>
#include <vector>

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::app {

class InputConfigDlg;

/// While a window is shown and no run is on, it reads the devices, so that the user sees what his
/// hands do; a run reads them itself.
class InputWindows final : private core::TimerTarget
{
public:
    InputWindows();
    ~InputWindows();
    InputWindows(const InputWindows&) = delete;
    InputWindows& operator=(const InputWindows&) = delete;

    void open(core::Instance& instance); ///< one that is open comes to the front
    void closeOf(core::Instance& instance);

private:
    void onTimer(std::int32_t id, std::int64_t elapsedMs) override;
    void startTimer();
    void stopTimer();
    void readDevices();
    void endThoseThatLeft();

    std::map<core::Instance*, std::unique_ptr<InputConfigDlg>> windows_;
    std::vector<std::unique_ptr<InputConfigDlg>> left_; ///< their tools have gone
    bool isAcquired_ = false;
};

} // namespace tvw::rgs::app
