/// The list of all drivers and devices of the process.
#pragma once

#include "unidevice/driver.h"
#include "util/singleton.h"

namespace tvw::unidevice {

/// Made on first use, ended by `end`: devices are destroyed last to first, then drivers. [main
/// thread]
class DeviceHub : public Singleton<DeviceHub>
{
public:
    bool updateAll();
    double lastUpdateMs() const { return updateMs_; } ///< what the last `updateAll` took
    bool prepareAll();                                ///< whether any device can be used
    bool acquireAll();                                ///< whether all could; true for none
    bool releaseAll();
    void resetAll();
    void setWindow(void* window); ///< native handle: of devices that are bound to a window
    Control* detectControl(const ExcludeList* exclude);

    Control* findControl(const util::xml::Element& element);
    Device* findDevice(const std::string& name, std::int32_t devIndex) const;
    Driver* findDriver(const std::string& name) const;
    int deviceIndex(const Device* device) const; ///< -1 when absent
    int deviceCount() const { return static_cast<int>(devices_.size()); }
    Device* deviceAt(int index) const; ///< null out of range

    /// Lists the device; -1 or past the end means the end. It is owned by the hub only in that
    /// `end` destroys what is still listed.
    void addDevice(Device* device, int index = -1);

    /// Takes it out, does not end it. First the listeners hear of it, then every control of the
    /// device tells its targets that it is gone.
    void removeDevice(Device* device);

    void addDriver(Driver* driver);
    void removeDriver(Driver* driver);

    /// Hears of devices that come and go, so that waiting bindings find them again.
    class Listener
    {
    public:
        virtual void deviceAdded(Device* device) = 0;
        /// The device is off the list and may be about to end: it is only good for comparing.
        virtual void deviceRemoved(Device* device) = 0;

    protected:
        ~Listener() = default;
    };
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

private:
    friend Singleton<DeviceHub>;
    friend class Device;
    DeviceHub() = default;
    ~DeviceHub();

    void list(Device* device, int index);
    bool unlist(Device* device); ///< and tells the listeners; whether it was listed

    std::vector<Driver*> drivers_;
    std::vector<Device*> devices_;
    std::vector<Listener*> listeners_;
    double updateMs_ = 0.0;
};

} // namespace tvw::unidevice
