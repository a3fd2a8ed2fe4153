#include "unidevice/driver/joystick_device.h"

#include "unidevice/device_hub.h"
#include "unidevice/driver/axis_effect.h"

#include <array>
#include <cmath>
#include <utility>

namespace tvw::unidevice {

namespace {

constexpr double kThreshold = 0.1;
constexpr std::array kAxisNames{"X axis",          "Y axis",          "Z axis",
                                "X axis rotation", "Y axis rotation", "Z axis rotation"};

/// An axis of a stick, which can carry forces.
class DXAxisControl final : public Control
{
public:
    DXAxisControl(Device* owner, std::shared_ptr<JoystickPort> port, int axis)
        : Control(owner, kind::analogue, kThreshold), port_(std::move(port)), axis_(axis)
    {
    }
    bool supportsEffect(EffectKind effect) override { return port_->supportsEffect(effect); }
    Effect* createEffect(EffectKind effect) override
    {
        return supportsEffect(effect) ? new DXAxisFFEffect(port_, axis_, effect) : nullptr;
    }

private:
    std::shared_ptr<JoystickPort> port_;
    int axis_;
};

/// One direction of a hat: 1, -1 or 0. x: of the sideways one, else the one ahead.
double hatValue(int angle, bool x)
{
    if ((angle & 0xFFFF) == JoystickState::kCentred)
        return 0.0;
    constexpr double kHundredth = 0.00017453292519943296; // rad
    constexpr double kLeast = 0.1;
    const double v = x ? std::sin(angle * kHundredth) : std::cos(angle * kHundredth);
    return v > kLeast ? 1.0 : v < -kLeast ? -1.0 : 0.0;
}

} // namespace

DXJoystickDevice::DXJoystickDevice(const JoystickShape& shape, std::unique_ptr<JoystickPort> port)
    : Device(shape.name, false), port_(std::move(port))
{
    state_.axes.resize(static_cast<std::size_t>(shape.axes));
    state_.hats.resize(static_cast<std::size_t>(shape.hats), JoystickState::kCentred);
    state_.buttons.resize(static_cast<std::size_t>(shape.buttons));
    addAxes(shape.axes);
    addHats(shape.hats);
    addButtons(shape.buttons);
    takeFreeIndex();
    DeviceHub& hub = DeviceHub::instance();
    if (Driver* const driver = hub.findDriver("dummydriver"))
        driver->addDevice(this);
    hub.addDevice(this);
}

DXJoystickDevice::~DXJoystickDevice()
{
    withdraw();
}

Control& DXJoystickDevice::add(std::unique_ptr<Control> control, const char* type, int index,
                               std::string description)
{
    control->type = type;
    control->index = index;
    control->description = std::move(description);
    controls_.push_back(std::move(control));
    return *controls_.back();
}

void DXJoystickDevice::addAxes(int count)
{
    constexpr int kNamed = kAxisNames.size();
    for (int i = 0; i < count; ++i) {
        auto axis = std::make_unique<DXAxisControl>(this, port_, i);
        if (i < kNamed)
            add(std::move(axis), "Axis", i, kAxisNames[static_cast<std::size_t>(i)]);
        else
            add(std::move(axis), "Slider", i - kNamed, "Slider " + std::to_string(i - kNamed + 1));
    }
}

void DXJoystickDevice::addHats(int count)
{
    for (int i = 0; i < count; ++i) {
        const std::string name = "Hat " + std::to_string(i + 1);
        add(std::make_unique<Control>(this, kind::trinary, kThreshold), "Hat", 2 * i,
            name + " (X axis)");
        add(std::make_unique<Control>(this, kind::trinary, kThreshold), "Hat", 2 * i + 1,
            name + " (Y axis)");
    }
}

void DXJoystickDevice::addButtons(int count)
{
    for (int i = 0; i < count; ++i)
        add(std::make_unique<Control>(this, kind::binary, kThreshold), "Button", i,
            "Button " + std::to_string(i + 1));
}

Control* DXJoystickDevice::controlAt(int index) const
{
    const bool inRange = index >= 0 && index < controlCount();
    return inRange ? controls_[static_cast<std::size_t>(index)].get() : nullptr;
}

bool DXJoystickDevice::update(void*)
{
    if (!port_->read(state_))
        return false;
    std::size_t next = 0;
    for (const double raw : state_.axes)
        controls_[next++]->read(raw * 0.001);
    for (const int angle : state_.hats) {
        controls_[next++]->read(hatValue(angle, true));
        controls_[next++]->read(hatValue(angle, false));
    }
    for (const bool down : state_.buttons)
        controls_[next++]->read(down ? 1.0 : 0.0);
    return true;
}

bool DXJoystickDevice::prepare(void* window)
{
    constexpr int kStale = 1000; // reports that can wait in a queue
    if (!acquire(window))
        return false;
    for (int i = 0; i < kStale; ++i) {
        if (!update(window))
            return false;
    }
    return update(window) && !controls_.empty();
}

Control* DXJoystickDevice::detectControl(const ExcludeList* exclude)
{
    update(nullptr);
    return strongestMoved(exclude);
}

void DXJoystickDevice::resetControls()
{
    for (const auto& control : controls_)
        control->previous = control->current = 0.0;
}

} // namespace tvw::unidevice
