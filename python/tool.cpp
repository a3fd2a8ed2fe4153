#include "python/bindings.h"

#include "adaptor/stage/tool_items.h"
#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance_manager.h"
#include "core/tool.h"
#include "core/tool_record.h"
#include "unidevice/device_hub.h"
#include "unidevice/emulated_trinary_device.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tvw::rgs::python {

using core::Instance;
using core::InstanceReference;
using core::configadaptor::NodeKind;
using stage::ToolItem;
using unidevice::Property;

InstanceReference& PyTool::reference() const
{
    sessionOf(scene_);
    InstanceReference* const reference = *watch_;
    if (!reference || !reference->isAlive())
        throw std::runtime_error("the tool was deleted");
    return *reference;
}

namespace {

/// One named input of a tool; lives as long as the tool.
class PyInput
{
public:
    PyInput(PyTool tool, Property& property) : tool_(std::move(tool)), property_(&property) {}

    Property& get() const
    {
        tool_.reference();
        return *property_;
    }
    const PyTool& tool() const { return tool_; }

private:
    PyTool tool_;
    Property* property_;
};

/// A snapshot of a configuration item.
struct PyItem
{
    std::int64_t id;
    std::string group, label, kind, tooltip;
    py::object value;
    double minimum, maximum, step;
};

py::object valueOf(const ToolItem& item)
{
    switch (item.node->kind()) {
    case NodeKind::Spinner:
        return py::float_(item.node->value());
    case NodeKind::IntSpinner:
        return py::int_(static_cast<std::int64_t>(item.node->value()));
    case NodeKind::CheckBox:
        return py::bool_(item.node->value() != 0.0);
    case NodeKind::TextBox:
    case NodeKind::ComboBox:
        return py::str(item.node->text());
    default:
        return py::none();
    }
}

std::vector<PyItem> items(const PyTool& tool)
{
    std::vector<PyItem> all;
    for (const ToolItem& item : stage::toolItems(tool.get())) {
        core::configadaptor::Node& node = *item.node;
        const bool hasId = node.id() != core::configadaptor::kNoId;
        all.push_back({hasId ? static_cast<std::int64_t>(node.id()) : -1, item.group, node.label(),
                       stage::kindName(node.kind()), node.tooltip(), valueOf(item), node.minimum(),
                       node.maximum(), node.step()});
    }
    return all;
}

ToolItem itemNamed(const PyTool& tool, const std::string& label)
{
    Result<ToolItem> item = stage::findToolItem(tool.get(), label);
    if (!item)
        raiseKeyError(item.reason());
    return *item;
}

void setItem(const PyTool& tool, const std::string& label, const py::object& value)
{
    const ToolItem item = itemNamed(tool, label);
    const bool isText = py::isinstance<py::str>(value);
    if (!isText && !py::isinstance<py::float_>(value) && !py::isinstance<py::int_>(value))
        raiseValueError("\"" + label + "\" takes a number, a bool or a text");
    const bool takesText = item.node->kind() == NodeKind::TextBox || item.node->kind() == NodeKind::ComboBox;
    if (isText && !takesText)
        raiseValueError("\"" + label + "\" takes a number");
    const Status done = isText ? stage::setToolItem(item, value.cast<std::string>())
                               : stage::setToolItem(item, value.cast<double>());
    if (!done)
        raiseValueError(done.reason());
}

void press(const PyTool& tool, const std::string& label)
{
    const ToolItem item = itemNamed(tool, label);
    if (item.node->kind() != NodeKind::Button)
        raiseValueError("\"" + label + "\" is no button");
    item.node->press();
}

// Inputs and outputs.

std::vector<PyInput> inputs(const PyTool& tool)
{
    std::vector<PyInput> all;
    auto& properties = tool.get().properties();
    for (int i = 0; i < properties.count(); ++i)
        all.emplace_back(tool, *properties.propertyAt(i));
    return all;
}

PyInput inputNamed(const PyTool& tool, const std::string& name)
{
    Property* const property = tool.get().properties().findProperty(name);
    if (!property)
        raiseKeyError("\"" + tool.get().name() + "\" has no input \"" + name + "\"");
    return {tool, *property};
}

std::map<std::string, double> outputs(const PyTool& tool)
{
    std::map<std::string, double> values;
    Instance& instance = tool.get();
    instance.update(nullptr);
    for (int i = 0; i < instance.controlCount(); ++i)
        values[instance.controlAt(i)->description] = instance.controlAt(i)->value();
    return values;
}

using ControlId = std::tuple<PyDevice, std::string, int>;

void bindPair(const PyInput& input, const ControlId& positive, const ControlId& negative)
{
    auto* const emulator = dynamic_cast<unidevice::EmulatedTrinaryDevice*>(
        unidevice::DeviceHub::instance().findDevice("TrinaryEmulator", 0));
    const auto& [plusDevice, plusType, plusIndex] = positive;
    const auto& [minusDevice, minusType, minusIndex] = negative;
    unidevice::Control& plus = plusDevice.control(plusType, plusIndex);
    unidevice::Control& minus = minusDevice.control(minusType, minusIndex);
    input.get().pendingControl().clear();
    input.get().bind(emulator->createEmulated(&plus, &minus));
}

std::optional<std::string> controlOf(const PyInput& input)
{
    const unidevice::Control* const control = input.get().control();
    return control ? std::optional(control->description) : std::nullopt;
}

std::vector<std::pair<double, double>> recorded(const PyInput& input)
{
    Instance& instance = input.tool().get();
    std::vector<std::pair<double, double>> values;
    for (int i = 0; i < instance.properties().count(); ++i) {
        const auto& lines = instance.recordedInputs().lines();
        if (instance.properties().propertyAt(i) != &input.get() || static_cast<std::size_t>(i) >= lines.size())
            continue;
        for (const auto& record : lines[static_cast<std::size_t>(i)].records())
            values.emplace_back(record.time, record.value);
    }
    return values;
}

/// A number of the pipeline; a dead zone of 1 would divide by 0.
template <double Property::*Member>
void setNumber(const PyInput& input, double value)
{
    if (!std::isfinite(value))
        raiseValueError("an input takes finite numbers");
    input.get().*Member = value;
}

template <double Property::*Member>
double number(const PyInput& input)
{
    return input.get().*Member;
}

// Profiles.

template <class Store>
const util::xml::Element& profileNamed(Store& store, const std::string& name)
{
    const std::vector<std::string> names = store.names();
    if (std::find(names.begin(), names.end(), name) == names.end())
        raiseKeyError("there is no profile \"" + name + "\"");
    return store.profile(name);
}

template <class Store>
void storeProfile(Store& store, const util::xml::Element& profile, const std::string& name)
{
    if (!Store::isValidName(name))
        raiseValueError("\"" + name + "\" can't be the name of a profile");
    switch (store.store(profile, true, false)) {
    case Store::done:
        return;
    case Store::refused:
        raiseValueError("The specified profile is considered read-only and cannot be overwritten.");
    default:
        PyErr_SetString(PyExc_OSError, "The profile could not be saved");
        throw py::error_already_set();
    }
}

void saveConfigProfile(const PyTool& tool, const std::string& name)
{
    util::xml::Element profile;
    tool.get().writeConfigProfile(profile, name);
    storeProfile(tool.get().type()->configProfiles(), profile, name);
    tool.get().setConfigProfileName(name);
}

void saveInputProfile(const PyTool& tool, const std::string& name)
{
    util::xml::Element profile;
    tool.get().writeInputProfile(profile, name);
    storeProfile(tool.get().type()->inputProfiles(), profile, name);
    tool.get().setInputProfileName(name);
}

void deleteConfigProfile(const PyTool& tool, const std::string& name)
{
    auto& store = tool.get().type()->configProfiles();
    profileNamed(store, name);
    if (store.isReadOnly(name) || store.remove(name) != 0)
        raiseValueError("The specified profile is considered read-only and cannot be overwritten.");
}

// The tree.

std::vector<PyTool> childrenOf(const PyTool& tool)
{
    std::vector<PyTool> all;
    for (InstanceReference* const child : tool.reference().childReferences())
        all.emplace_back(tool.scene(), *child);
    return all;
}

std::optional<PyTool> parentOf(const PyTool& tool)
{
    InstanceReference* const parent = tool.reference().parentReference();
    return parent ? std::optional(PyTool(tool.scene(), *parent)) : std::nullopt;
}

PyTool clone(const PyTool& tool)
{
    InstanceReference* copy = nullptr;
    {
        const core::UndoScope undo("Clone tool");
        copy = tool.reference().clone();
    }
    if (!copy)
        raiseValueError("this tool can't be cloned");
    return {tool.scene(), *copy};
}

void deleteTool(const PyTool& tool, bool deleteNodes)
{
    const core::UndoScope undo("Delete tool");
    if (core::InstanceManager::deleteReference(&tool.reference(), deleteNodes) != 0)
        throw std::runtime_error(tool.get().name() + " can't be deleted while a run is on");
}

std::vector<PyNode> nodes(const PyTool& tool)
{
    std::vector<PyNode> all;
    for (core::CoreNode* const node : tool.get().nodes()) {
        if (!node->isDeleted())
            all.emplace_back(tool.scene(), static_cast<stage::NodeHandle*>(node)->node());
    }
    return all;
}

PyNode nodeNamed(const PyTool& tool, const std::string& shortName)
{
    core::CoreNode* const node = tool.get().findNode(shortName);
    if (!node || node->isDeleted())
        raiseKeyError("\"" + tool.get().name() + "\" has no node \"" + shortName + "\"");
    return {tool.scene(), static_cast<stage::NodeHandle*>(node)->node()};
}

std::string toXml(const PyTool& tool, bool state, bool children, bool packed)
{
    using namespace core::recordflag;
    util::xml::Element record;
    core::writeRecord(tool.reference(),
                      (state ? core::recordflag::state : plain) | (children ? plain : noChildren) |
                          (packed ? core::recordflag::packed : plain),
                      record);
    return record.toString();
}

void bindItem(py::module_& module)
{
    py::class_<PyItem>(module, "Item", "A configuration item as it is now.")
        .def_readonly("id", &PyItem::id, "Its number in profiles; -1 for a label.")
        .def_readonly("group", &PyItem::group, "Labels of the groups around it, joined by \"/\".")
        .def_readonly("label", &PyItem::label)
        .def_readonly("kind", &PyItem::kind)
        .def_readonly("value", &PyItem::value)
        .def_readonly("minimum", &PyItem::minimum)
        .def_readonly("maximum", &PyItem::maximum)
        .def_readonly("step", &PyItem::step)
        .def_readonly("tooltip", &PyItem::tooltip)
        .def("__repr__", [](const PyItem& i) { return "<Item \"" + i.group + "/" + i.label + "\">"; });
}

void bindInput(py::module_& module)
{
    py::class_<PyInput>(module, "Input", "A named input of a tool.")
        .def_property_readonly("name", [](const PyInput& i) { return i.get().name(); })
        .def_property_readonly("kind_mask", [](const PyInput& i) { return i.get().kindMask(); })
        .def_property("multiplier", &number<&Property::multiplier>, &setNumber<&Property::multiplier>)
        .def_property("exponent", &number<&Property::exponent>, &setNumber<&Property::exponent>)
        .def_property("deadzone", &number<&Property::deadzone>, &setNumber<&Property::deadzone>)
        .def_property("offset", &number<&Property::offset>, &setNumber<&Property::offset>)
        .def_property_readonly("control", &controlOf, "Description of the bound control, or None.")
        .def_property_readonly("pending",
                               [](const PyInput& i) {
                                   return !i.get().control() && !i.get().pendingControl().isEmpty();
                               },
                               "Whether a binding waits for its device.")
        .def(
            "bind",
            [](const PyInput& i, const PyDevice& device, const std::string& type, int index) {
                unidevice::Control& control = device.control(type, index);
                i.get().pendingControl().clear();
                i.get().bind(&control);
            },
            py::arg("device"), py::arg("type"), py::arg("index"),
            "Binds a control; KeyError when the device has none such.")
        .def("bind_pair", &bindPair, py::arg("positive"), py::arg("negative"),
             "Binds the difference of two controls, each a (device, type, index).")
        .def("unbind",
             [](const PyInput& i) {
                 i.get().bind(nullptr);
                 i.get().pendingControl().clear();
             })
        .def_property_readonly("raw", [](const PyInput& i) { return i.get().raw(); },
                               "The control's value before the pipeline; 0 when unbound.")
        .def_property_readonly("value", [](const PyInput& i) { return i.get().value(); },
                               "The value behind dead zone, exponent, multiplier and offset.")
        .def_property_readonly("recorded", &recorded, "List of (time, raw) of the kept take.")
        .def("__repr__", [](const PyInput& i) { return "<Input \"" + i.get().name() + "\">"; });
}

} // namespace

void bindTool(py::module_& module)
{
    bindItem(module);
    bindInput(module);
    py::class_<PyTool>(module, "Tool", "A tool in the scene. RuntimeError once it was deleted.")
        .def_property_readonly("name", [](const PyTool& t) { return t.get().name(); })
        .def_property_readonly("type", [](const PyTool& t) { return t.get().type()->name(); })
        .def_property_readonly("parent", &parentOf)
        .def_property_readonly("children", &childrenOf)
        .def("rename", [](const PyTool& t, const std::string& text) { t.reference().rename(text); },
             py::arg("text"), "Takes the name, made unique.")
        .def_property(
            "checked", [](const PyTool& t) { return t.reference().takesPart(); },
            [](const PyTool& t, bool on) {
                t.reference().setState(core::Column::Run,
                                       on ? core::ColumnState::On : core::ColumnState::Off, false);
            },
            "Whether it takes part in a run.")
        .def("clone", &clone, "A copy beside it, with what hangs on its nodes.")
        .def("delete", &deleteTool, py::arg("delete_nodes") = true)
        .def_property_readonly("nodes", &nodes)
        .def("node", &nodeNamed, py::arg("short_name"), "KeyError when the tool has none of that name.")
        .def_property_readonly("items", &items)
        .def("get", [](const PyTool& t, const std::string& label) { return valueOf(itemNamed(t, label)); },
             py::arg("label"), "The value of an item by its label, or \"Group/Label\".")
        .def("set", &setItem, py::arg("label"), py::arg("value"),
             "Sets an item as the window does; a number out of range is clamped.")
        .def("press", &press, py::arg("label"), "Presses a button.")
        .def_property_readonly("inputs", &inputs)
        .def("input", &inputNamed, py::arg("name"))
        .def_property_readonly("outputs", &outputs, "Present values of the virtual outputs by name.")
        .def_property_readonly("profiles",
                               [](const PyTool& t) { return t.get().type()->configProfiles().names(); })
        .def_property_readonly("profile", [](const PyTool& t) { return t.get().configProfileName(); })
        .def("load_profile",
             [](const PyTool& t, const std::string& name) {
                 t.get().loadConfigProfile(profileNamed(t.get().type()->configProfiles(), name));
             },
             py::arg("name"))
        .def("save_profile", &saveConfigProfile, py::arg("name"))
        .def("delete_profile", &deleteConfigProfile, py::arg("name"))
        .def_property_readonly("input_profiles",
                               [](const PyTool& t) { return t.get().type()->inputProfiles().names(); })
        .def_property_readonly("input_profile", [](const PyTool& t) { return t.get().inputProfileName(); })
        .def("load_input_profile",
             [](const PyTool& t, const std::string& name) {
                 return t.get().loadInputProfile(profileNamed(t.get().type()->inputProfiles(), name));
             },
             py::arg("name"), "Answers the number of missing controls.")
        .def("save_input_profile", &saveInputProfile, py::arg("name"))
        .def("to_xml", &toXml, py::arg("state") = false, py::arg("children") = true,
             py::arg("packed") = false, "The tool's record.")
        .def("__eq__", [](const PyTool& a, const PyTool& b) { return a == b; }, py::is_operator())
        .def("__hash__", &PyTool::hash)
        .def("__repr__", [](const PyTool& t) { return "<Tool \"" + t.get().name() + "\">"; });
}

} // namespace tvw::rgs::python
