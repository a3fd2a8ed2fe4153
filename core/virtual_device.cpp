#include "core/virtual_device.h"

#include "unidevice/device_hub.h"

#include <utility>

namespace tvw::rgs::core {

using unidevice::Control;
using unidevice::DeviceHub;

namespace {

constexpr double kMovementThreshold = 0.1;

} // namespace

VirtualControl::VirtualControl(unidevice::Device* owner, const std::string& name, std::int32_t id,
                               std::uint32_t kind)
    : Control(owner, kind, kMovementThreshold)
{
    type = name;
    description = name;
    index = id;
}

InstanceVirtualDevice::InstanceVirtualDevice() : Device(std::string(), false)
{
    if (unidevice::Driver* const polled = DeviceHub::instance().findDriver("dummydriver"))
        polled->addDevice(this);
}

InstanceVirtualDevice::~InstanceVirtualDevice() = default;

Control* InstanceVirtualDevice::controlAt(int index) const
{
    const bool inRange = index >= 0 && index < controlCount();
    return inRange ? outputs_[static_cast<std::size_t>(index)].get() : nullptr;
}

bool InstanceVirtualDevice::prepare(void* window)
{
    update(window);
    update(window);
    return !outputs_.empty();
}

Control* InstanceVirtualDevice::detectControl(const unidevice::ExcludeList* exclude)
{
    update(nullptr);
    return strongestMoved(exclude);
}

void InstanceVirtualDevice::resetControls()
{
    for (const auto& output : outputs_)
        output->previous = output->current = 0.0;
}

Control* InstanceVirtualDevice::addOutput(const std::string& name, std::int32_t id, std::uint32_t kind)
{
    outputs_.push_back(std::make_unique<VirtualControl>(this, name, id, kind));
    if (!registered_) {
        registered_ = true;
        if (!left_)
            enterHub();
    }
    return outputs_.back().get();
}

void InstanceVirtualDevice::leaveHub()
{
    if (unidevice::Driver* const polling = driver()) {
        polledPlace_ = polling->deviceIndex(this);
        polling->removeDevice(this);
        left_ = polling;
    }
    if (!hub())
        return;
    place_ = DeviceHub::instance().deviceIndex(this);
    DeviceHub::instance().removeDevice(this);
}

void InstanceVirtualDevice::enterHub()
{
    if (unidevice::Driver* const polling = std::exchange(left_, nullptr))
        polling->addDeviceAt(this, polledPlace_);
    if (registered_ && !hub())
        DeviceHub::instance().addDevice(this, place_);
}

} // namespace tvw::rgs::core
