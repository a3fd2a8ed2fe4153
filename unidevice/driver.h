/// Polls a group of devices.
#pragma once

#include "unidevice/device.h"

namespace tvw::unidevice {

/// Enters the hub at construction. THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN.
class Driver
{
public:
    explicit Driver(std::string name);

    virtual bool update();                                      ///< all devices, in order; true
    virtual int prepare();                                      ///< how many can be used
    virtual Control* detectControl(const ExcludeList* exclude); ///< of all devices' the strongest
    virtual bool addDevice(Device* device);
    virtual bool removeDevice(Device* device); ///< whether it was there
    virtual Device* deviceAt(int index) const;
    virtual int deviceCount() const;
    virtual bool acquire(); ///< every device is asked; true when all could
    virtual bool release();
    virtual ~Driver(); ///< detaches its devices, last to first
    virtual void destroy() { delete this; }

    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    const std::string& name() const { return name_; }

    int deviceIndex(const Device* device) const; ///< -1 when absent
    /// Adds it at a place in the order of polling; -1 or past the end means the end.
    void addDeviceAt(Device* device, int index);

protected:
    /// What the devices are given as their window.
    virtual void* window() const { return nullptr; }

private:
    std::string name_;
    std::vector<Device*> devices_;
};

/// Devices that need no window: the keyboard, the emulator, the tools themselves.
class DummyDriver final : public Driver
{
public:
    using Driver::Driver;
};

/// Devices that are bound to a window.
class WinDriver final : public Driver
{
public:
    using Driver::Driver;
    void setWindow(void* window) { window_ = window; }

protected:
    void* window() const override { return window_; }

private:
    void* window_ = nullptr;
};

} // namespace tvw::unidevice
