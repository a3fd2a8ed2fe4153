#include "unidevice/device.h"

#include "unidevice/device_hub.h"
#include "util/xml/element.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::unidevice {

using util::xml::Element;

Device::Device(std::string name, bool listed) : name_(std::move(name))
{
    if (listed)
        DeviceHub::instance().list(this, -1);
}

Device::~Device()
{
    if (hub_)
        hub_->unlist(this);
    if (driver_)
        driver_->removeDevice(this);
}

void Device::destroy()
{
    withdraw();
    delete this;
}

void Device::withdraw()
{
    if (hub_)
        hub_->removeDevice(this);
    if (driver_)
        driver_->removeDevice(this);
}

Element& Device::writeXml(Element& element) const
{
    element = util::xml::Tag("control");
    element.setAttribute("device", name_);
    if (devIndex_ != 0)
        element.setAttribute("devindex", std::to_string(devIndex_));
    return element;
}

Control* Device::findControl(const Element& element)
{
    for (int i = 0; i < controlCount(); ++i) {
        Control* const control = controlAt(i);
        if (control->matches(element))
            return control;
    }
    return nullptr;
}

bool Device::acquire(void*)
{
    return true;
}

bool Device::release(void*)
{
    return true;
}

void Device::takeFreeIndex()
{
    const DeviceHub& hub = DeviceHub::instance();
    std::int32_t free = 0;
    for (const Device* other = hub.findDevice(name_, free); other && other != this;
         other = hub.findDevice(name_, free))
        ++free;
    devIndex_ = free;
}

Control* Device::strongestMoved(const ExcludeList* exclude) const
{
    const auto isExcluded = [exclude](const Control* control) {
        return exclude && std::find(exclude->begin(), exclude->end(), control) != exclude->end();
    };
    Control* strongest = nullptr;
    for (int i = 0; i < controlCount(); ++i) {
        Control* const control = controlAt(i);
        if (control->hasChanged() && !isExcluded(control))
            strongest = strongerMoved(strongest, control);
    }
    return strongest;
}

bool deviceMatches(const Element& element, const Device& device)
{
    const std::string name = element.attributeValue("device");
    if (!name.empty() && name != device.name())
        return false;
    const std::string number = element.attributeValue("devindex");
    return number.empty() || util::xml::integer(number) == device.devIndex();
}

Control* strongerMoved(Control* first, Control* second)
{
    if (!first || !second)
        return first ? first : second;
    const auto change = [](const Control& c) { return std::abs(c.current - c.previous); };
    return change(*second) > change(*first) ? second : first;
}

} // namespace tvw::unidevice
