/// The inputs of one tool, in the order of their declaration.
#pragma once

#include "unidevice/device_hub.h"
#include "unidevice/property.h"
#include "util/dynamicobject.h"

#include <memory>
#include <vector>

namespace tvw::unidevice {

/// Owns its properties. It hears of devices that come and go: bindings wait while their device is
/// away and are met when it is back.
class PropertyHandler : public DynamicObject, private DeviceHub::Listener
{
public:
    PropertyHandler();
    ~PropertyHandler() override;
    PropertyHandler(const PropertyHandler&) = delete;
    PropertyHandler& operator=(const PropertyHandler&) = delete;

    Property* propertyAt(int index) const; ///< null out of range
    Property* findProperty(const std::string& name) const;

    /// The property of that name, made by the factory if new; the mask of a second call is ignored.
    Property* addProperty(const std::string& name, std::uint32_t kindMask,
                          Property::Factory& factory);

    int count() const { return static_cast<int>(properties_.size()); }

    /// A `profile` element with every property and its binding, a waiting one included.
    void writeProfile(util::xml::Element& profile, const std::string& name) const;

    /// Binds what the profile says: every binding is cut first, numbers that it lacks stay. Answers
    /// how many controls are missing (their bindings wait), or `kNoProfile` and nothing changed
    /// when the element is neither a `profile` nor an `inputprofile`. profileName: set when the
    /// profile has one.
    int readProfile(const util::xml::Element& element, std::string& profileName);
    static constexpr int kNoProfile = 9999999;

    /// Tries the waiting bindings again, as when a device came back. Answers how many it met.
    int retryPending();

    /// While the device's controls still stand: their bindings are cut and wait for its return.
    void keepBindingsOf(const Device& device);

    /// While a take is on, an input whose device goes keeps its last value; at its end such a value
    /// no longer counts.
    void holdLost(bool on);

private:
    void deviceAdded(Device* device) override;
    void deviceRemoved(Device* device) override;
    int readProperty(const util::xml::Element& element); ///< how many controls are missing

    std::vector<Property*> properties_;
    bool holdsLost_ = false;
};

} // namespace tvw::unidevice
