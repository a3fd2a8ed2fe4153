/// Brings the core up and takes it down, as often as the process likes.
#pragma once

#include "core/adaptor_interface.h"
#include "core/core_interface.h"
#include "core/timer.h"

#include <functional>
#include <span>

namespace tvw::rgs {
class CCameraPlugin;
}

namespace tvw::unidevice {
class Driver;
}

namespace tvw::rgs::core {

/// What the core is built on; all of it must outlive the core.
struct CoreParts
{
    AdaptorInterface* adaptor = nullptr;
    Clock* clock = nullptr;
    Windows* windows = nullptr; ///< null: none, boxes go to the log
    std::span<CCameraPlugin* (*const)()> tools{};
    /// Registers the GUI's factories, makes the hardware devices; may be empty.
    std::function<void()> registerGui{};
    std::function<void()> startInput{};
};

/// The core, or null when the adaptor's interface version is another than the core's: the core stands
/// then, but has no devices, and `shutdownCore` must be called all the same.
CoreInterface* startCore(const CoreParts& parts);

/// Stops a run, ends the tools, the libraries, the devices. Nothing when no core is up.
void shutdownCore();

inline constexpr std::int32_t kInputVersion = 1203;

} // namespace tvw::rgs::core
