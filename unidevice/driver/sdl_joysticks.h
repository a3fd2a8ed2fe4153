/// The joysticks of this machine, through SDL 2.
#pragma once

#include "unidevice/driver/joystick_device.h"

#include <cstdint>
#include <map>
#include <string>

namespace tvw::unidevice {

/// Makes a device for every stick that is plugged in and ends it when it is pulled out. Needs no
/// window and no display. One at a time. [main thread]
class SdlJoysticks
{
public:
    /// Without joysticks, and with the reason in `problem`, where SDL can't be started.
    SdlJoysticks();
    ~SdlJoysticks(); ///< ends its devices
    SdlJoysticks(const SdlJoysticks&) = delete;
    SdlJoysticks& operator=(const SdlJoysticks&) = delete;

    /// Looks for sticks that came or went. Cheap; to be called a few times a second, in a run too,
    /// but not from within a device's update.
    void pump();

    [[nodiscard]] const std::string& problem() const { return problem_; }

private:
    void open(int place);

    std::map<std::int32_t, DXJoystickDevice*> devices_; ///< by SDL's number of the instance
    std::string problem_;
    bool started_ = false;
};

} // namespace tvw::unidevice
