#include "app/input_binding.h"

#include "app/window_base.h"
#include "core/instance.h"
#include "core/paths.h"
#include "unidevice/device_hub.h"
#include "unidevice/emulated_trinary_device.h"
#include "unidevice/property.h"
#include "util/xml/element.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tvw::rgs::app {

using unidevice::Control;
using unidevice::Device;
using unidevice::DeviceHub;
using unidevice::Property;
using util::xml::Element;
namespace kind = unidevice::kind;

namespace {

constexpr const char* kEmulator = "TrinaryEmulator";

struct Icon
{
    const char* part; ///< of the device's name
    const char* file;
};
constexpr Icon kIcons[] = {
    {"Wacom", "icon_inputs_wacom.png"},         {"wacom", "icon_inputs_wacom.png"},
    {"WACOM", "icon_inputs_wacom.png"},         {"3dconnexion", "icon_inputs_connexion.png"},
    {"Connexion", "icon_inputs_connexion.png"}, {"connexion", "icon_inputs_connexion.png"},
    {"directinput", "icon_inputs_gamepad.png"}, {"Keyboard", "icon_inputs_keyboard.png"},
};

std::string numbered(const std::string& name, int index)
{
    return index == 0 ? name : name + " (" + std::to_string(index) + ")";
}

/// Of a stored control, whose device may be missing.
ControlChoice stored(const Element& control)
{
    ControlChoice choice;
    choice.present = DeviceHub::instance().findControl(control);
    if (choice.present && choice.present->device) {
        choice.device = labelOf(*choice.present->device);
        choice.control = labelOf(*choice.present);
        return choice;
    }
    const std::string name = control.attributeValue("device");
    const int index = std::atoi(control.attributeValue("devindex").c_str());
    choice.device = (name.empty() ? "Any device" : numbered(name, index)) + " (unplugged)";
    choice.control = control.child("description").text();
    if (choice.control.empty())
        choice.control = control.attributeValue("type") + " " + control.attributeValue("index");
    return choice;
}

Binding ofParts(const Element& emulated)
{
    Binding binding{.first = {}, .second = {}, .isPair = true};
    for (const Element& part : emulated.children()) {
        if (part.name() != "control")
            continue;
        const bool isNegative = part.attributeValue("te_direction") == "negative";
        (isNegative ? binding.second : binding.first) = stored(part);
    }
    return binding;
}

} // namespace

std::string labelOf(const Device& device)
{
    return numbered(device.name(), device.devIndex());
}

std::string labelOf(const Control& control)
{
    return control.description.empty() ? control.type : control.description;
}

Binding bindingOf(const Property& property)
{
    const Control* const control = property.control();
    Element element = property.pendingControl();
    if (control)
        control->writeXml(element);
    if (element.isEmpty())
        return {};
    if (element.childCount("control") > 0)
        return ofParts(element);
    if (!control)
        return {.first = stored(element), .second = {}};
    return {.first = {.device = control->device ? labelOf(*control->device) : labelOf(*control),
                      .control = labelOf(*control),
                      .present = property.control()},
            .second = {}};
}

std::vector<Device*> choosableDevices()
{
    std::vector<Device*> devices;
    const DeviceHub& hub = DeviceHub::instance();
    for (int i = 0; i < hub.deviceCount(); ++i) {
        Device* const device = hub.deviceAt(i);
        if (device->controlCount() > 0 && device->name() != kEmulator)
            devices.push_back(device);
    }
    return devices;
}

Device* deviceLabelled(const std::string& label)
{
    for (Device* const device : choosableDevices()) {
        if (labelOf(*device) == label)
            return device;
    }
    return nullptr;
}

std::string iconOf(const std::string& deviceLabel)
{
    for (const Icon& icon : kIcons) {
        if (deviceLabel.find(icon.part) != std::string::npos)
            return coreImages() + "/" + icon.file;
    }
    // Sticks and pads bear the names of their makers, tools those that their users give.
    const auto* const tool = dynamic_cast<const core::Instance*>(deviceLabelled(deviceLabel));
    return tool ? core::getPath("data") + tool->iconPath()
                : coreImages() + "/icon_inputs_gamepad.png";
}

bool isHalfAnAxis(const Property& property, const Control* control)
{
    return control && (control->kindMask & property.kindMask()) == 0 &&
           (control->kindMask & kind::binary) != 0;
}

std::string kindsText(const Property& property)
{
    const bool takesKeys = property.kindMask() & kind::binary;
    const bool takesAxes = property.kindMask() & (kind::analogue | kind::trinary | kind::unbounded);
    if (takesKeys && takesAxes)
        return "A stick or lever, or one key or button.";
    return takesKeys ? "A key or button."
                     : "A stick or lever, or two keys: one for each direction.";
}

void bindByHand(Property& property, Control* control)
{
    property.bind(control);
    property.pendingControl().clear();
}

Control* joined(Control* positive, Control* negative)
{
    if (positive && negative && positive != negative) {
        auto* const emulator = dynamic_cast<unidevice::EmulatedTrinaryDevice*>(
            DeviceHub::instance().findDevice(kEmulator, 0));
        if (emulator)
            return emulator->createEmulated(positive, negative);
    }
    return positive ? positive : negative;
}

void HeldControls::add(Control* control)
{
    if (!control)
        return;
    control->addTarget(this);
    controls_.push_back(control);
}

void HeldControls::add(const HeldControls& others)
{
    for (Control* const control : others.controls_)
        add(control);
}

void HeldControls::clear()
{
    for (Control* const control : controls_)
        control->removeTarget(this);
    controls_.clear();
}

Control* HeldControls::first() const
{
    return controls_.empty() ? nullptr : controls_.front();
}

void HeldControls::controlDeleted(Control* control)
{
    std::erase(controls_, control);
}

} // namespace tvw::rgs::app
