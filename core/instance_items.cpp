// The part of a tool's runtime that declares configuration items and inputs.
#include "core/configadaptor/elements.h"
#include "core/core_implementation.h"
#include "core/instance.h"

#include <utility>

namespace tvw::rgs::core {

namespace element = configadaptor::element;

void Instance::beginConfiguration()
{
    adoptConfiguration(std::unique_ptr<configadaptor::Node, Destroyer>(new element::Root));
}

void Instance::endConfiguration() {}

void Instance::beginGroup(std::string label, std::string tooltip)
{
    auto* const group = new element::Group(std::move(label), std::move(tooltip));
    add(group);
    currentGroup_ = group;
}

configadaptor::Node* Instance::endGroup()
{
    currentGroup_ = currentGroup_ ? currentGroup_->parent() : nullptr;
    return currentGroup_;
}

/// Below the current group; behind the end of the outermost one below the root again.
void Instance::add(configadaptor::Node* item)
{
    if (!configuration_)
        beginConfiguration();
    (currentGroup_ ? currentGroup_ : configuration_.get())->addChild(item);
}

void Instance::addIntSpinner(std::string label, std::string tooltip, std::int32_t* value,
                             std::int32_t minimum, std::int32_t maximum, std::int32_t step,
                             std::int32_t triggerLength, bool withInput, Callback* callback)
{
    const element::SpinnerBounds bounds{static_cast<double>(minimum), static_cast<double>(maximum),
                                        static_cast<double>(step), triggerLength};
    if (withInput)
        addLiveInput(label, nextItemId_);
    add(new element::Spinner_Int(nextItemId_++, std::move(label), std::move(tooltip), value, bounds,
                                 callback));
}

void Instance::addSpinner(std::string label, std::string tooltip, double* value, double minimum,
                          double maximum, double step, std::int32_t triggerLength, bool withInput,
                          std::int32_t, Callback* callback)
{
    if (withInput)
        addLiveInput(label, nextItemId_);
    add(new element::Spinner(nextItemId_++, std::move(label), std::move(tooltip), value,
                             {minimum, maximum, step, triggerLength}, callback));
}

void Instance::addLiveInput(const std::string& label, std::uint32_t itemId)
{
    constexpr std::uint32_t kLiveSpinnerKinds =
        unidevice::kind::trinary | unidevice::kind::analogue | unidevice::kind::unbounded;
    liveSpinners_.add(itemId, addProperty("Spinner: " + label, kLiveSpinnerKinds));
}

void Instance::addCheckBox(std::string label, std::string tooltip, bool* value, Callback* callback)
{
    add(new element::CheckBox(nextItemId_++, std::move(label), std::move(tooltip), value, callback));
}

void Instance::addTextBox(std::string label, std::string tooltip, std::string* value,
                          Callback* callback)
{
    add(new element::TextBox(nextItemId_++, std::move(label), std::move(tooltip), value, callback));
}

CInterface::ComboUpdater* Instance::addComboBox(std::string label, std::string tooltip,
                                                std::vector<std::string> items, std::int32_t* index,
                                                Callback* callback)
{
    auto* const box = new element::ComboBox(nextItemId_++, std::move(label), std::move(tooltip),
                                            std::move(items), index, callback);
    add(box);
    return box;
}

void Instance::addButton(std::string label, std::string tooltip, Callback* callback)
{
    add(new element::Button(nextItemId_++, std::move(label), std::move(tooltip), callback));
}

void Instance::addLabelItem(const std::string& text, std::int32_t style)
{
    add(new element::Label(configadaptor::kNoId, text, style));
}

void Instance::updateConfiguration()
{
    if (configuration_)
        configuration_->refresh();
}

void Instance::showInputDialog() { CoreImplementation::instance().windows().openInputs(this); }

Property* Instance::addProperty(std::string inputName, std::uint32_t kindMask,
                                Property::Factory* factory)
{
    return properties_.addProperty(inputName, kindMask, *factory);
}

Property* Instance::addProperty(std::string inputName, std::uint32_t kindMask)
{
    struct Standard final : Property::Factory
    {
    } standard;
    return properties_.addProperty(inputName, kindMask, standard);
}

Property* Instance::findProperty(std::string inputName) { return properties_.findProperty(inputName); }

} // namespace tvw::rgs::core
