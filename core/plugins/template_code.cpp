#include "core/plugins/template_code.h"

#include "core/configadaptor/template_config.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/library_manager.h"
#include "core/tool.h"
#include "util/datachunk.h"
#include "util/xml/number.h"

#include <algorithm>

namespace tvw::rgs::core::plugins {

using util::xml::Element;

namespace {

/// The kinds that an element names by children that are not empty.
std::uint32_t kindMaskOf(const Element& element)
{
    struct Row
    {
        const char* name;
        std::uint32_t bit;
    };
    constexpr Row kRows[] = {{"binary", 1}, {"trinary", 2}, {"finite", 4}, {"infinite", 8}};
    std::uint32_t mask = 0;
    for (const Row& row : kRows) {
        if (!element.child(row.name).isEmpty())
            mask |= row.bit;
    }
    return mask;
}

/// Written as an attribute; a child element of that name is read too.
std::string fieldOf(const Element& element, const char* name)
{
    if (element.hasAttribute(name))
        return element.attributeValue(name);
    return std::string(element.child(name).text());
}

std::int32_t numberOf(const std::string& text)
{
    return static_cast<std::int32_t>(util::xml::integer(text).value_or(0));
}

/// A `script` holds one expression.
ScriptPtr scriptOf(const Element& element)
{
    const Element& script = element.child("script");
    return ScriptPtr(script.childCount() > 0 ? createMathScript(script.childAt(0)) : nullptr);
}

/// An input by its name, else by its place.
Property* inputOf(Instance& own, const std::string& text)
{
    if (Property* const named = own.properties().findProperty(text))
        return named;
    const auto place = util::xml::integer(text);
    return place ? own.properties().propertyAt(static_cast<int>(*place)) : nullptr;
}

bool stillLives(const Instance* instance)
{
    const LibraryManager& libraries = LibraryManager::instance();
    for (int i = 0; i < libraries.toolCount(); ++i) {
        const auto& all = libraries.toolAt(i)->instances();
        if (std::find(all.begin(), all.end(), instance) != all.end())
            return instance->isAlive();
    }
    return false;
}

void setParameter(MathScript& script, std::size_t place, double value)
{
    auto& parameters = script.parameters();
    if (parameters.size() <= place)
        parameters.resize(place + 1);
    parameters[place] = value;
}

} // namespace

// Parameters and targets.

Parameter Parameter::read(const Element& element, Instance& own)
{
    Parameter parameter;
    parameter.itemId_ = static_cast<std::uint32_t>(numberOf(fieldOf(element, "id")));
    const std::string external = fieldOf(element, "external");
    parameter.external_ = !external.empty();
    if (!parameter.external_) {
        parameter.instance_ = &own;
    } else if (InstanceReference* const other =
                   CoreImplementation::instance().instances().findSaved(external)) {
        parameter.instance_ = &other->instance();
    }
    return parameter;
}

double Parameter::value() const
{
    const bool lives = instance_ && stillLives(instance_) && instance_->configuration();
    return lives ? instance_->configuration()->valueOf(itemId_) : 0.0;
}

void Parameter::setValue(double value) const
{
    if (instance_ && stillLives(instance_) && instance_->configuration())
        instance_->configuration()->setValueOf(itemId_, value);
}

Target Target::read(const Element& element, Instance& own)
{
    Target target;
    target.item_ = Parameter::read(element, own);
    target.script_ = scriptOf(element);
    const Element& parameters = element.child("parameters");
    for (std::size_t i = 0; i < parameters.childCount("source"); ++i) {
        const Element& source = parameters.child("source", i);
        Source read;
        if (fieldOf(source, "type") == "property")
            read.input = inputOf(own, fieldOf(source, "id"));
        else
            read.item = Parameter::read(source, own);
        target.sources_.push_back(std::move(read));
    }
    return target;
}

void Target::run() const
{
    if (!script_)
        return;
    for (std::size_t i = 0; i < sources_.size(); ++i)
        setParameter(*script_, i,
                     sources_[i].input ? sources_[i].input->value() : sources_[i].item.value());
    item_.setValue(script_->evaluate());
}

// The tool.

Instance& TemplateCode::instance()
{
    return *static_cast<Instance*>(interface());
}

std::vector<std::int32_t> TemplateCode::supportedCodes()
{
    return {
        code::updateOutput, code::writeCustomData, code::readCustomData, code::treeComplete, 49, 50,
        code::noToolTip};
}

std::intptr_t TemplateCode::call(std::int32_t operation, void* argument)
{
    switch (operation) {
    case code::updateOutput:
        updateOutput(static_cast<Control*>(argument));
        return 1;
    case code::writeCustomData:
        static_cast<Element*>(argument)->assign(custom_);
        return 1;
    case code::readCustomData:
        custom_.assign(*static_cast<const Element*>(argument));
        return 1;
    case code::treeComplete:
        readLogic();
        return 1;
    default:
        return 0;
    }
}

int TemplateCode::declareConfiguration()
{
    instance().setIconPath("/core/images/treeicons/template.png");
    interface()->beginConfiguration();
    if (!custom_.child("config").isEmpty())
        instance().configuration()->addChild(configadaptor::makeTemplateConfig(
            custom_.child("config"), instance().type()->getDataPath()));
    interface()->endConfiguration();
    declareInputs();
    declareOutputs();
    return 0;
}

void TemplateCode::declareInputs()
{
    const Element& inputs = custom_.child("input");
    for (std::size_t i = 0; i < inputs.childCount("property"); ++i) {
        const Element& input = inputs.child("property", i);
        interface()->addProperty(fieldOf(input, "name"), kindMaskOf(input));
    }
}

void TemplateCode::declareOutputs()
{
    const Element& device = custom_.child("virtualdevice");
    for (std::size_t i = 0; i < device.childCount("control"); ++i) {
        const Element& control = device.child("control", i);
        OutputRequest request{fieldOf(control, "name"), numberOf(fieldOf(control, "index")),
                              static_cast<std::int32_t>(kindMaskOf(control))};
        Output output{reinterpret_cast<Control*>(interface()->call(code::makeOutput, &request)),
                      scriptOf(control),
                      {},
                      {}};
        for (const Element& source : control.children()) {
            const bool isItem = source.name() == "spinner";
            if (!isItem && source.name() != "property")
                continue;
            output.inputs.push_back(isItem ? nullptr
                                           : inputOf(instance(), std::string(source.text())));
            output.items.push_back(isItem
                                       ? static_cast<std::uint32_t>(numberOf(fieldOf(source, "id")))
                                       : configadaptor::kNoId);
        }
        outputs_.push_back(std::move(output));
    }
}

void TemplateCode::readLogic()
{
    inputTriggers_.clear();
    itemTriggers_.clear();
    const Element& logic = custom_.child("logic");
    for (std::size_t i = 0; i < logic.childCount("trigger"); ++i) {
        const Element& trigger = logic.child("trigger", i);
        std::vector<Target> targets;
        for (std::size_t j = 0; j < trigger.childCount("target"); ++j)
            targets.push_back(Target::read(trigger.child("target", j), instance()));
        if (fieldOf(trigger, "type") == "property")
            inputTriggers_.push_back(
                {inputOf(instance(), fieldOf(trigger, "id")), 0.0, std::move(targets)});
        else
            itemTriggers_.push_back({Parameter::read(trigger, instance()), std::move(targets)});
    }
    for (configadaptor::Node* const item : instance().configuration()->children())
        listenTo(item);
}

void TemplateCode::updateOutput(Control* control)
{
    for (const Output& output : outputs_) {
        if (output.control != control || !output.script)
            continue;
        for (std::size_t i = 0; i < output.items.size(); ++i) {
            const bool isItem = output.items[i] != configadaptor::kNoId;
            const double value = isItem ? instance().configuration()->valueOf(output.items[i])
                                 : output.inputs[i] ? output.inputs[i]->value()
                                                    : 0.0;
            setParameter(*output.script, i, value);
        }
        control->read(output.script->evaluate());
    }
}

void TemplateCode::startRun(double)
{
    fireInputs(true);
    fireExternalItems();
}

void TemplateCode::tick(double)
{
    fireInputs(false);
    fireExternalItems();
}

void TemplateCode::fireInputs(bool force)
{
    for (PropertyTrigger& trigger : inputTriggers_) {
        if (!force && (!trigger.input || !trigger.input->control()))
            continue;
        const double value = trigger.input ? trigger.input->value() : 0.0;
        if (!force && value == trigger.last)
            continue;
        trigger.last = value;
        for (const Target& target : trigger.targets)
            target.run();
    }
}

void TemplateCode::fireExternalItems()
{
    for (const ItemTrigger& trigger : itemTriggers_) {
        if (!trigger.item.isExternal())
            continue;
        for (const Target& target : trigger.targets)
            target.run();
    }
}

void TemplateCode::receive(Message& message, bool)
{
    if (message.id != configadaptor::message::itemChanged)
        return;
    for (ItemTrigger& trigger : itemTriggers_) {
        if (trigger.item.isExternal() || trigger.item.itemId() != message.param || trigger.running)
            continue;
        trigger.running = true;
        for (const Target& target : trigger.targets)
            target.run();
        trigger.running = false;
    }
}

/// A template has no state beside its items; the record says by some that its nodes stand in the
/// scene.
int TemplateCode::save()
{
    if (instance().nodes().empty())
        return 1;
    std::size_t size = 0;
    DataChunk state("Template", nullptr, 0);
    const void* const bytes = state.serialize(&size);
    interface()->setSaveData(bytes, static_cast<std::int32_t>(size));
    return 0;
}

} // namespace tvw::rgs::core::plugins
