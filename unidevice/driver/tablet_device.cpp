#include "unidevice/driver/tablet_device.h"

#include "unidevice/device_hub.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::unidevice {

namespace {

constexpr double kAxisThreshold = 0.1;

double placeOf(double at, double extent)
{
    return extent > 0.0 ? std::clamp((at / extent - 0.5) * 2.0, -1.0, 1.0) : 0.0;
}

} // namespace

TabletDevice::TabletDevice(std::string name) : Device(std::move(name), false)
{
    int axis = 0;
    for (const char* description : {"Position X", "Position Y", "Tilt X", "Tilt Y", "Pen pressure"})
        add("Axis", axis++, kind::analogue, kAxisThreshold, description);
    for (int i = 0; i < kButtons; ++i)
        add("Button", i, kind::binary, 0.0, "Button " + std::to_string(i + 1));
    takeFreeIndex();
    DeviceHub& hub = DeviceHub::instance();
    if (Driver* const driver = hub.findDriver("dummydriver"))
        driver->addDevice(this);
    hub.addDevice(this);
}

TabletDevice::~TabletDevice()
{
    withdraw();
}

void TabletDevice::add(const char* type, int index, std::uint32_t kindMask, double threshold,
                       std::string description)
{
    auto control = std::make_unique<Control>(this, kindMask, threshold);
    control->type = type;
    control->index = index;
    control->description = std::move(description);
    controls_.push_back(std::move(control));
}

void TabletDevice::packet(const PenPacket& pen)
{
    if (isAcquired_)
        pen_ = pen;
}

Control* TabletDevice::controlAt(int index) const
{
    const bool inRange = index >= 0 && index < controlCount();
    return inRange ? controls_[static_cast<std::size_t>(index)].get() : nullptr;
}

bool TabletDevice::update(void*)
{
    // The shadow of a pen of length 1 on the tablet: none when it stands upright.
    const double lean = std::cos(pen_.altitude);
    const double axes[] = {placeOf(pen_.x, pen_.xExtent), placeOf(pen_.y, pen_.yExtent),
                           std::sin(pen_.azimuth) * lean, std::cos(pen_.azimuth) * lean,
                           std::clamp(pen_.pressure / 1000.0, -1.0, 1.0)};
    std::size_t next = 0;
    for (const double value : axes)
        controls_[next++]->read(value);
    for (int i = 0; i < kButtons; ++i)
        controls_[next++]->read((pen_.buttons >> i & 1U) != 0 ? 1.0 : 0.0);
    return true;
}

bool TabletDevice::prepare(void* window)
{
    acquire(window);
    update(window); // twice: where the pen lies already is no movement
    return update(window);
}

Control* TabletDevice::detectControl(const ExcludeList* exclude)
{
    update(nullptr);
    return strongestMoved(exclude);
}

void TabletDevice::resetControls()
{
    for (const auto& control : controls_)
        control->previous = control->current = 0.0;
}

bool TabletDevice::acquire(void*)
{
    isAcquired_ = true;
    return true;
}

bool TabletDevice::release(void*)
{
    isAcquired_ = false;
    return true;
}

} // namespace tvw::unidevice
