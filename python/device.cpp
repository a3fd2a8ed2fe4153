#include "python/bindings.h"

#include "unidevice/device_hub.h"

#include <cmath>

namespace tvw::rgs::python {

using unidevice::Control;

unidevice::Device& PyDevice::get() const
{
    sessionOf(scene_);
    if (unidevice::DeviceHub::instance().deviceIndex(device_) < 0)
        throw std::runtime_error("the device is gone");
    return *device_;
}

Control& PyDevice::control(const std::string& type, int index) const
{
    unidevice::Device& device = get();
    for (int i = 0; i < device.controlCount(); ++i) {
        Control* const control = device.controlAt(i);
        if (control->type == type && control->index == index)
            return *control;
    }
    raiseKeyError("\"" + device.name() + "\" has no control \"" + type + "\" " + std::to_string(index));
}

namespace {

using ControlRow = std::tuple<std::string, int, std::string>;

std::vector<ControlRow> controls(const PyDevice& device)
{
    std::vector<ControlRow> rows;
    for (int i = 0; i < device.get().controlCount(); ++i) {
        const Control* const control = device.get().controlAt(i);
        rows.emplace_back(control->type, control->index, control->description);
    }
    return rows;
}

void set(const PyDevice& device, const std::string& type, int index, double value)
{
    auto* const scripted = dynamic_cast<unidevice::ScriptedDevice*>(&device.get());
    if (!scripted)
        raiseValueError("\"" + device.get().name() + "\" is not moved by scripts");
    if (!std::isfinite(value))
        raiseValueError("a control takes a finite number");
    device.control(type, index);
    scripted->set(type, index, value);
}

void remove(const PyDevice& device)
{
    if (!dynamic_cast<unidevice::ScriptedDevice*>(&device.get()))
        raiseValueError("\"" + device.get().name() + "\" can't be unplugged by a script");
    sessionOf(device.scene()).removeDevice(device.get());
}

} // namespace

void bindDevice(py::module_& module)
{
    py::class_<PyDevice>(module, "Device", "Something that can drive a tool's inputs.")
        .def_property_readonly("name", [](const PyDevice& d) { return d.get().name(); })
        .def_property_readonly("index", [](const PyDevice& d) { return d.get().devIndex(); },
                               "Tells apart devices of one name, from 0.")
        .def_property_readonly("controls", &controls, "List of (type, index, description).")
        .def("set", &set, py::arg("type"), py::arg("index"), py::arg("value"),
             "The raw value that the next device update reads. ValueError for a device that is not "
             "a scripted one, KeyError for a control that it does not have.")
        .def("remove", &remove, "Unplugs a scripted device; its bindings wait for its return.")
        .def("__eq__", [](const PyDevice& a, const PyDevice& b) { return a == b; }, py::is_operator())
        .def("__hash__", [](const PyDevice& d) { return std::hash<std::string>()(d.get().name()); })
        .def("__repr__", [](const PyDevice& d) { return "<Device \"" + d.get().name() + "\">"; });
}

} // namespace tvw::rgs::python
