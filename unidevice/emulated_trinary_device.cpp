#include "unidevice/emulated_trinary_device.h"

#include "unidevice/device_hub.h"
#include "util/xml/element.h"

#include <utility>

namespace tvw::unidevice {

using util::xml::Element;

namespace {

constexpr double kMovementThreshold = 0.1;

void addPart(Element& element, const Control* part, const char* direction)
{
    if (!part)
        return;
    Element child;
    part->writeXml(child);
    child.setAttribute("te_direction", direction);
    element.addChild(child);
}

/// "Pad(1):Button 2"
std::string describe(const Control& part)
{
    if (!part.device)
        return part.description;
    std::string text = part.device->name();
    if (part.device->devIndex() != 0)
        text.append("(").append(std::to_string(part.device->devIndex())).append(")");
    return text.append(":").append(part.description);
}

} // namespace

EmulatedTControl::EmulatedTControl(Device* owner, Control* positive, Control* negative)
    : Control(owner, kind::trinary, kMovementThreshold), positive_(positive), negative_(negative)
{
    type = "control";
    positive_->addTarget(this);
    negative_->addTarget(this);
}

EmulatedTControl::~EmulatedTControl()
{
    if (positive_)
        positive_->removeTarget(this);
    if (negative_)
        negative_->removeTarget(this);
}

Element& EmulatedTControl::writeXml(Element& element) const
{
    Control::writeXml(element);
    addPart(element, positive_, "positive");
    addPart(element, negative_, "negative");
    return element;
}

bool EmulatedTControl::matches(const Element& element) const
{
    if (!positive_ || !negative_ || !Control::matches(element) ||
        element.childCount("control") != 2)
        return false;
    bool positiveFound = false;
    bool negativeFound = false;
    for (const Element& child : element.children()) {
        if (child.name() != "control")
            continue;
        const std::string direction = child.attributeValue("te_direction");
        if (direction == "positive" && positive_->matches(child))
            positiveFound = true;
        if (direction == "negative" && negative_->matches(child))
            negativeFound = true;
    }
    return positiveFound && negativeFound;
}

double EmulatedTControl::value()
{
    return positive_ && negative_ ? positive_->value() - negative_->value() : 0.0;
}

bool EmulatedTControl::dependsOn(const Device& other) const
{
    return Control::dependsOn(other) || (positive_ && positive_->dependsOn(other)) ||
           (negative_ && negative_->dependsOn(other));
}

void EmulatedTControl::controlDeleted(Control* control)
{
    if (control == positive_)
        positive_ = nullptr;
    if (control == negative_)
        negative_ = nullptr;
}

EmulatedTrinaryDevice::EmulatedTrinaryDevice() : Device("TrinaryEmulator", false)
{
    DeviceHub& hub = DeviceHub::instance();
    if (Driver* const driver = hub.findDriver("dummydriver"))
        driver->addDevice(this);
    hub.addDevice(this);
}

EmulatedTrinaryDevice::~EmulatedTrinaryDevice()
{
    withdraw();
}

Control* EmulatedTrinaryDevice::createEmulated(Control* positive, Control* negative)
{
    if (!positive || !negative)
        return nullptr;
    auto made = std::make_unique<EmulatedTControl>(this, positive, negative);
    Element element;
    if (Control* const equal = Device::findControl(made->writeXml(element)))
        return equal;
    made->description =
        "emulated control (" + describe(*positive) + ", " + describe(*negative) + ")";
    controls_.push_back(std::move(made));
    return controls_.back().get();
}

Control* EmulatedTrinaryDevice::controlAt(int index) const
{
    const bool inRange = index >= 0 && index < controlCount();
    return inRange ? controls_[static_cast<std::size_t>(index)].get() : nullptr;
}

Control* EmulatedTrinaryDevice::findControl(const Element& element)
{
    if (Control* const present = Device::findControl(element))
        return present;
    const Element& first = element.child("control", 0);
    const Element& second = element.child("control", 1);
    if (first.isEmpty() || second.isEmpty())
        return nullptr;
    Control* positive = DeviceHub::instance().findControl(first);
    Control* negative = DeviceHub::instance().findControl(second);
    if (first.attributeValue("te_direction") == "negative")
        std::swap(positive, negative);
    return createEmulated(positive, negative);
}

bool EmulatedTrinaryDevice::prepare(void*)
{
    for (const auto& control : controls_)
        control->previous = control->current;
    return false;
}

void EmulatedTrinaryDevice::resetControls()
{
    for (const auto& control : controls_)
        control->previous = control->current = 0.0;
}

} // namespace tvw::unidevice
