#include "unidevice/scripted_device.h"

#include "unidevice/device_hub.h"

#include <cmath>
#include <utility>

namespace tvw::unidevice {

namespace {

constexpr double kMovementThreshold = 0.1;

/// "Axis 1", "Hat 1 (Y axis)": people count from 1.
std::string descriptionOf(const std::string& type, int index)
{
    if (type == "Hat")
        return "Hat " + std::to_string(index / 2 + 1) +
               (index % 2 == 0 ? " (X axis)" : " (Y axis)");
    return type + " " + std::to_string(index + 1);
}

} // namespace

ScriptedDevice::ScriptedDevice(std::string name, const ScriptedLayout& layout)
    : Device(std::move(name), false)
{
    addControls("Axis", layout.axes, kind::analogue);
    addControls("Slider", layout.sliders, kind::analogue);
    addControls("Hat", layout.hats, kind::trinary);
    addControls("Button", layout.buttons, kind::binary);
    raw_.resize(controls_.size(), 0.0);
    takeFreeIndex();
    DeviceHub& hub = DeviceHub::instance();
    if (Driver* const driver = hub.findDriver("dummydriver"))
        driver->addDevice(this);
    hub.addDevice(this);
}

ScriptedDevice::~ScriptedDevice()
{
    withdraw();
}

void ScriptedDevice::addControls(const char* type, int count, std::uint32_t kindMask)
{
    for (int i = 0; i < count; ++i) {
        auto control = std::make_unique<Control>(this, kindMask, kMovementThreshold);
        control->type = type;
        control->index = i;
        control->description = descriptionOf(type, i);
        controls_.push_back(std::move(control));
    }
}

bool ScriptedDevice::set(std::string_view type, int index, double value)
{
    if (!std::isfinite(value))
        return false;
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        if (controls_[i]->type == type && controls_[i]->index == index) {
            raw_[i] = value;
            return true;
        }
    }
    return false;
}

Control* ScriptedDevice::controlAt(int index) const
{
    const bool inRange = index >= 0 && index < controlCount();
    return inRange ? controls_[static_cast<std::size_t>(index)].get() : nullptr;
}

bool ScriptedDevice::update(void*)
{
    for (std::size_t i = 0; i < controls_.size(); ++i)
        controls_[i]->read(raw_[i]);
    return true;
}

bool ScriptedDevice::prepare(void* window)
{
    update(window); // twice: where a lever stands already is no movement
    update(window);
    return !controls_.empty();
}

Control* ScriptedDevice::detectControl(const ExcludeList* exclude)
{
    update(nullptr);
    return strongestMoved(exclude);
}

void ScriptedDevice::resetControls()
{
    for (const auto& control : controls_)
        control->previous = control->current = 0.0;
}

} // namespace tvw::unidevice
