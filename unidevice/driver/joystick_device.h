/// A joystick, pad or wheel.
#pragma once

#include "unidevice/device.h"
#include "unidevice/driver/joystick_port.h"

#include <memory>
#include <vector>

namespace tvw::unidevice {

/// Lists itself in the hub with the first free index of its name, polled by "dummydriver".
class DXJoystickDevice final : public Device, DynamicCreator<DXJoystickDevice>
{
public:
    DXJoystickDevice(const JoystickShape& shape, std::unique_ptr<JoystickPort> port);
    ~DXJoystickDevice() override;

    int controlCount() const override { return static_cast<int>(controls_.size()); }
    Control* controlAt(int index) const override; ///< axes, sliders, hats, buttons
    bool update(void* window) override;           ///< a stick that is gone keeps its last values
    bool prepare(void* window) override;
    Control* detectControl(const ExcludeList* exclude) override;
    void resetControls() override;

private:
    void addAxes(int count);
    void addHats(int count);
    void addButtons(int count);
    Control& add(std::unique_ptr<Control> control, const char* type, int index,
                 std::string description);

    std::shared_ptr<JoystickPort> port_; ///< effects hold it too
    JoystickState state_;
    std::vector<std::unique_ptr<Control>> controls_;
};

} // namespace tvw::unidevice
