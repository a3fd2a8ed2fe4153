#include "unidevice/device_hub.h"

#include <algorithm>
#include <chrono>

namespace tvw::unidevice {

namespace {

template <class T>
bool takeOut(std::vector<T*>& from, const T* what)
{
    const auto place = std::find(from.begin(), from.end(), what);
    if (place == from.end())
        return false;
    from.erase(place);
    return true;
}

} // namespace

DeviceHub::~DeviceHub()
{
    while (!devices_.empty()) {
        Device* const last = devices_.back();
        last->destroy();
        unlist(last); // one that outlives its destroy is not ours to end
    }
    while (!drivers_.empty()) {
        Driver* const last = drivers_.back();
        last->destroy();
        removeDriver(last);
    }
}

bool DeviceHub::updateAll()
{
    const auto began = std::chrono::steady_clock::now();
    for (Driver* const driver : drivers_)
        driver->update();
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - began;
    updateMs_ = taken.count();
    return true;
}

void DeviceHub::setWindow(void* window)
{
    for (Driver* const driver : drivers_) {
        if (auto* const bound = dynamic_cast<WinDriver*>(driver))
            bound->setWindow(window);
    }
}

bool DeviceHub::prepareAll()
{
    int usable = 0;
    for (Driver* const driver : drivers_)
        usable += driver->prepare();
    return usable != 0;
}

bool DeviceHub::acquireAll()
{
    bool all = true;
    for (Driver* const driver : drivers_)
        all = driver->acquire() && all;
    return all;
}

bool DeviceHub::releaseAll()
{
    bool all = true;
    for (Driver* const driver : drivers_)
        all = driver->release() && all;
    return all;
}

void DeviceHub::resetAll()
{
    for (Device* const device : devices_)
        device->resetControls();
}

Control* DeviceHub::detectControl(const ExcludeList* exclude)
{
    if (devices_.empty())
        return nullptr;
    Control* strongest = nullptr;
    for (Driver* const driver : drivers_)
        strongest = strongerMoved(strongest, driver->detectControl(exclude));
    return strongest;
}

Control* DeviceHub::findControl(const util::xml::Element& element)
{
    for (Device* const device : devices_) {
        if (!deviceMatches(element, *device))
            continue;
        if (Control* const control = device->findControl(element))
            return control;
    }
    return nullptr;
}

Device* DeviceHub::findDevice(const std::string& name, std::int32_t devIndex) const
{
    for (Device* const device : devices_) {
        if (device->name() == name && device->devIndex() == devIndex)
            return device;
    }
    return nullptr;
}

Driver* DeviceHub::findDriver(const std::string& name) const
{
    for (Driver* const driver : drivers_) {
        if (driver->name() == name)
            return driver;
    }
    return nullptr;
}

int DeviceHub::deviceIndex(const Device* device) const
{
    const auto place = std::find(devices_.begin(), devices_.end(), device);
    return place == devices_.end() ? -1 : static_cast<int>(place - devices_.begin());
}

Device* DeviceHub::deviceAt(int index) const
{
    const bool inRange = index >= 0 && index < deviceCount();
    return inRange ? devices_[static_cast<std::size_t>(index)] : nullptr;
}

void DeviceHub::list(Device* device, int index)
{
    const bool inRange = index >= 0 && index < deviceCount();
    devices_.insert(inRange ? devices_.begin() + index : devices_.end(), device);
    device->hub_ = this;
}

bool DeviceHub::unlist(Device* device)
{
    if (!takeOut(devices_, device))
        return false;
    device->hub_ = nullptr;
    for (Listener* const listener : std::vector<Listener*>(listeners_))
        listener->deviceRemoved(device);
    return true;
}

void DeviceHub::addDevice(Device* device, int index)
{
    if (device->hub_)
        return;
    list(device, index);
    for (Listener* const listener : std::vector<Listener*>(listeners_))
        listener->deviceAdded(device);
}

void DeviceHub::removeDevice(Device* device)
{
    if (!unlist(device))
        return;
    for (int i = 0; i < device->controlCount(); ++i)
        device->controlAt(i)->dropTargets();
}

void DeviceHub::addDriver(Driver* driver)
{
    drivers_.push_back(driver);
}

void DeviceHub::removeDriver(Driver* driver)
{
    takeOut(drivers_, driver);
}

void DeviceHub::addListener(Listener* listener)
{
    listeners_.push_back(listener);
}

void DeviceHub::removeListener(Listener* listener)
{
    takeOut(listeners_, listener);
}

} // namespace tvw::unidevice
