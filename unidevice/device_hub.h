/// The list of all drivers and devices of the process.
#pragma once

#include "unidevice/driver.h"

namespace tvw::unidevice {

class EmulatedTrinaryDevice;

/// Made on first use, ended by `end`: devices are destroyed last to first, then drivers.
class DeviceHub
{
public:
    static DeviceHub& instance();
    static bool exists();
    static void end();

    bool updateAll();
    bool prepareAll(); ///< whether any device can be used
    bool acquireAll(); ///< whether all could; true for none
    bool releaseAll();
    void resetAll();
    Control* detectControl(const ExcludeList* exclude);

    Control* findControl(const util::xml::Element& element);
    Device* findDevice(const std::string& name, std::int32_t devIndex) const;
    Driver* findDriver(const std::string& name) const;
    int deviceIndex(const Device* device) const; ///< -1 when absent
    int deviceCount() const { return static_cast<int>(devices_.size()); }
    Device* deviceAt(int index) const; ///< null out of range

    /// Lists the device; -1 or past the end means the end. It is owned by the hub only in that `end`
    /// destroys what is still listed.
    void addDevice(Device* device, int index = -1);
    void removeDevice(Device* device); ///< takes it out, does not end it

    void addDriver(Driver* driver);
    void removeDriver(Driver* driver);

    /// Hears of devices that come and go, so that waiting bindings find them again.
    class Listener
    {
    public:
        virtual void deviceAdded(Device* device) = 0;
        virtual void deviceRemoved(Device* device) = 0;

    protected:
        ~Listener() = default;
    };
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

private:
    DeviceHub() = default;
    ~DeviceHub();

    std::vector<Driver*> drivers_;
    std::vector<Device*> devices_;
    std::vector<Listener*> listeners_;
};

} // namespace tvw::unidevice
