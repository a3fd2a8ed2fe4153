#include "unidevice/driver.h"

#include "unidevice/device_hub.h"

#include <algorithm>
#include <utility>

namespace tvw::unidevice {

// The loops count, since a device that finds its hardware gone may leave in the middle of one.

Driver::Driver(std::string name) : name_(std::move(name))
{
    DeviceHub::instance().addDriver(this);
}

Driver::~Driver()
{
    while (!devices_.empty()) {
        devices_.back()->driver_ = nullptr;
        devices_.pop_back();
    }
    if (DeviceHub::exists())
        DeviceHub::instance().removeDriver(this);
}

bool Driver::update()
{
    for (std::size_t i = 0; i < devices_.size(); ++i)
        devices_[i]->update(window());
    return true;
}

int Driver::prepare()
{
    int usable = 0;
    for (std::size_t i = 0; i < devices_.size(); ++i)
        usable += devices_[i]->prepare(window()) ? 1 : 0;
    return usable;
}

Control* Driver::detectControl(const ExcludeList* exclude)
{
    Control* strongest = nullptr;
    for (std::size_t i = 0; i < devices_.size(); ++i)
        strongest = strongerMoved(strongest, devices_[i]->detectControl(exclude));
    return strongest;
}

bool Driver::addDevice(Device* device)
{
    if (device->driver_)
        device->driver_->removeDevice(device);
    device->driver_ = this;
    devices_.push_back(device);
    return true;
}

bool Driver::removeDevice(Device* device)
{
    const auto place = std::find(devices_.begin(), devices_.end(), device);
    if (place == devices_.end())
        return false;
    devices_.erase(place);
    device->driver_ = nullptr;
    return true;
}

Device* Driver::deviceAt(int index) const
{
    const bool inRange = index >= 0 && index < deviceCount();
    return inRange ? devices_[static_cast<std::size_t>(index)] : nullptr;
}

int Driver::deviceIndex(const Device* device) const
{
    const auto place = std::find(devices_.begin(), devices_.end(), device);
    return place == devices_.end() ? -1 : static_cast<int>(place - devices_.begin());
}

void Driver::addDeviceAt(Device* device, int index)
{
    addDevice(device);
    if (index >= 0 && index < deviceCount())
        std::rotate(devices_.begin() + index, devices_.end() - 1, devices_.end());
}

int Driver::deviceCount() const
{
    return static_cast<int>(devices_.size());
}

bool Driver::acquire()
{
    bool all = true;
    for (std::size_t i = 0; i < devices_.size(); ++i)
        all = devices_[i]->acquire(window()) && all;
    return all;
}

bool Driver::release()
{
    bool all = true;
    for (std::size_t i = 0; i < devices_.size(); ++i)
        all = devices_[i]->release(window()) && all;
    return all;
}

} // namespace tvw::unidevice
