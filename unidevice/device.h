/// Something that can drive a tool: a keyboard, a pad, a tablet, or another tool.
#pragma once

#include "unidevice/control.h"
#include "util/dynamicobject.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::unidevice {

class DeviceHub;
class Driver;

using ExcludeList = std::vector<Control*>;

/// THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN. window: a native handle, null without a window.
class Device : public DynamicObject
{
public:
    /// listed: enters the hub's list at its end at once.
    Device(std::string name, bool listed);

    /// Makes the element a `control` of this device. Answers it.
    virtual util::xml::Element& writeXml(util::xml::Element& element) const;
    virtual int controlCount() const = 0;
    virtual Control* controlAt(int index) const = 0; ///< null out of range

    /// Reads the hardware: every control's `previous` takes `current`, then `current` the reading.
    virtual bool update(void* window) = 0;

    /// The first control that the stored element means, else null.
    virtual Control* findControl(const util::xml::Element& element);

    /// Makes ready for detection; whether the device can be used.
    virtual bool prepare(void* window) = 0;

    /// Updates once and answers the control that moved the most, null when none moved. exclude: may be
    /// null.
    virtual Control* detectControl(const ExcludeList* exclude) = 0;
    virtual void resetControls() = 0; ///< previous and current of all to 0
    virtual bool acquire(void* window);
    virtual bool release(void* window);

    /// Leaves the hub and the driver.
    ~Device() override;

    const std::string& name() const { return name_; }
    std::int32_t devIndex() const { return devIndex_; } ///< tells apart devices of one name, from 0
    DeviceHub* hub() const { return hub_; }             ///< null while not listed
    Driver* driver() const { return driver_; }

    /// Takes the smallest index from 0 that no listed device of this name has.
    void takeFreeIndex();

protected:
    void setDeviceName(std::string name) { name_ = std::move(name); }

    /// The rule of `detectControl` over all controls of a device, after an update.
    Control* strongestMoved(const ExcludeList* exclude) const;

private:
    friend class DeviceHub;
    friend class Driver;

    std::string name_;
    std::int32_t devIndex_ = 0;
    DeviceHub* hub_ = nullptr;
    Driver* driver_ = nullptr;
};

/// Whether a stored `control` element can mean this device: an empty name means any.
bool deviceMatches(const util::xml::Element& element, const Device& device);

/// Of two moved controls the one with the larger change, the first one on a tie; either may be null.
Control* strongerMoved(Control* first, Control* second);

} // namespace tvw::unidevice
