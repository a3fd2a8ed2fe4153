#include "app/property_manager.h"

#include "core/core_implementation.h"
#include "gui/componentinterface/combobox.h"
#include "gui/componentinterface/label.h"
#include "gui/message_ids.h"
#include "unidevice/device.h"
#include "unidevice/property.h"

#include <QProgressBar>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using unidevice::Control;

namespace {

enum Id {
    kDescription = 201,
    kClearSecond = 205,
    kDetect = 208,
    kClearFirst = 210,
    kAdvanced = 211,
    kSecondGroup = 225,
    kNegativeBar = 226,
    kPositiveBar = 227,
    kValue = 228
};

constexpr const char* kNone = "[none]";

/// "[none]", the texts, and the wanted one if it is not among them; that one is selected.
void fill(ci::ComboBox* box, std::vector<std::string> texts, const std::string& wanted)
{
    if (!box)
        return;
    texts.insert(texts.begin(), kNone);
    auto place = wanted.empty() ? texts.begin() : std::find(texts.begin(), texts.end(), wanted);
    if (place == texts.end())
        place = texts.insert(texts.end(), wanted);
    const int selected = static_cast<int>(place - texts.begin());
    bool isSame = box->count() == static_cast<int>(texts.size());
    for (int i = 0; isSame && i < box->count(); ++i)
        isSame = box->itemAt(i) == texts[static_cast<std::size_t>(i)];
    if (!isSame) {
        box->clear();
        for (const std::string& text : texts)
            box->addItem(text);
    }
    box->selectIndex(selected);
}

std::vector<std::string> deviceTexts()
{
    std::vector<std::string> texts;
    for (const unidevice::Device* const device : choosableDevices())
        texts.push_back(labelOf(*device));
    return texts;
}

std::vector<std::string> controlTexts(const unidevice::Device* device)
{
    std::vector<std::string> texts;
    for (int i = 0; device && i < device->controlCount(); ++i)
        texts.push_back(labelOf(*device->controlAt(i)));
    return texts;
}

QProgressBar* barOf(gui::Component* component)
{
    return dynamic_cast<QProgressBar*>(component ? component->widget() : nullptr);
}

void showBar(gui::Component* component, double share)
{
    if (QProgressBar* const bar = barOf(component))
        bar->setValue(static_cast<int>(std::lround(100.0 * std::clamp(share, 0.0, 1.0))));
}

/// Short enough for its place, and without a sign before nothing.
std::string valueText(double value)
{
    if (!std::isfinite(value))
        return "-";
    constexpr double kLargest = 1000.0;
    char text[32];
    const double rounded = std::round(value * 100.0) / 100.0 + 0.0;
    std::snprintf(text, sizeof text, std::abs(value) < kLargest ? "%.2f" : "%.2g", rounded);
    return text;
}

void listenToAll(MessageNode& listener, gui::Component& component)
{
    listener.listenTo(&component);
    for (gui::Component* const child : component.children())
        listenToAll(listener, *child);
}

} // namespace

InputConfigDlg::PropertyManager::PropertyManager(unidevice::Property& property,
                                                 gui::Component& panel)
    : MessageNode("PropertyManager"), property_(property), panel_(panel)
{
    panel_.setLabel(property_.name());
    for (const int id : {kNegativeBar, kPositiveBar}) {
        gui::Component* const component = panel_.findById(id);
        QProgressBar* const bar = barOf(component);
        if (!bar)
            continue;
        bar->setTextVisible(false);
        bar->setInvertedAppearance(id == kNegativeBar); // both grow from the middle
        component->setVisible(id == kPositiveBar || property_.kindMask() != unidevice::kind::binary,
                              false);
    }
    listenToAll(*this, panel_);
}

void InputConfigDlg::PropertyManager::refresh()
{
    const Binding binding = bindingOf(property_);
    show(kFirst, binding.first);
    show(kSecond, binding.second);
    showSecond(binding.isPair || isHalfAnAxis(property_, binding.first.present));
    showDescription();
    if (advanced_)
        advanced_->showNumbers();
    showLive();
}

void InputConfigDlg::PropertyManager::show(const Row& row, const ControlChoice& choice)
{
    fill(as<ci::ComboBox>(row.device), deviceTexts(), choice.device);
    auto* const controls = as<ci::ComboBox>(row.control);
    const unidevice::Device* const device = choice.present ? choice.present->device : nullptr;
    fill(controls, controlTexts(choice.isNone() ? nullptr : deviceLabelled(choice.device)),
         choice.control);
    for (int i = 0; controls && device && i < device->controlCount(); ++i) {
        if (device->controlAt(i) == choice.present)
            controls->selectIndex(i + 1); // several can have one text
    }
    if (auto* const icon = as<ci::Label>(row.icon))
        icon->setImagePath(choice.isNone() ? std::string() : iconOf(choice.device));
}

void InputConfigDlg::PropertyManager::showSecond(bool isOpen)
{
    if (gui::Component* const group = panel_.findById(kSecondGroup))
        group->setVisible(isOpen, false);
}

void InputConfigDlg::PropertyManager::showDescription()
{
    const Control* const control = property_.control();
    std::string text = kindsText(property_);
    if (!control && property_.pendingControl().isEmpty())
        text += " Press Detect to bind one.";
    else if (!control)
        text = "Waits until its device is connected.";
    else if ((property_.kindMask() & control->kindMask) == 0 && !isHalfAnAxis(property_, control))
        text = "The chosen control is of another kind. This input takes: " + text;
    if (gui::Component* const label = panel_.findById(kDescription))
        label->setLabel(text);
}

void InputConfigDlg::PropertyManager::showLive()
{
    if (advanced_ && advanced_->isShown())
        advanced_->showLive();
    const double value = property_.value();
    const std::string text = valueText(value);
    gui::Component* const label = panel_.findById(kValue);
    if (!label || label->label() == text)
        return;
    label->setLabel(text);
    showBar(panel_.findById(kPositiveBar), std::isfinite(value) ? value : 0.0);
    showBar(panel_.findById(kNegativeBar), std::isfinite(value) ? -value : 0.0);
}

void InputConfigDlg::PropertyManager::clear()
{
    bindByHand(property_, nullptr);
    refresh();
}

void InputConfigDlg::PropertyManager::closeDialogs()
{
    if (detection_)
        detection_->cancel();
    if (advanced_)
        advanced_->close();
}

void InputConfigDlg::PropertyManager::receive(Message& message, bool)
{
    if (const gui::Component* const component = gui::componentOf(message))
        handle(component->id(), message.id);
}

void InputConfigDlg::PropertyManager::handle(int id, std::uint32_t message)
{
    if (message != gui::message::selectionChanged && message != gui::message::buttonClicked)
        return;
    if (core::CoreImplementation::instance().isRunning()) {
        refresh(); // a take or its replay owns the bindings
        return;
    }
    if (message == gui::message::buttonClicked) {
        press(id);
        return;
    }
    for (const Row* const row : {&kFirst, &kSecond}) {
        if (id == row->device)
            deviceChosen(*row);
        if (id == row->device || id == row->control)
            bindChosen();
    }
}

void InputConfigDlg::PropertyManager::press(int id)
{
    switch (id) {
    case kClearFirst: // what drove the other direction is the one control then
        show(kFirst, {});
        bindChosen();
        refresh();
        break;
    case kClearSecond:
        show(kSecond, {});
        bindChosen();
        break;
    case kDetect:
        detect();
        break;
    case kAdvanced:
        openAdvanced();
        break;
    default:
        break;
    }
}

void InputConfigDlg::PropertyManager::deviceChosen(const Row& row)
{
    const auto* const box = as<ci::ComboBox>(row.device);
    const std::string device = box->currentIndex() > 0 ? box->currentText() : std::string();
    show(row, {.device = device, .control = {}, .present = nullptr});
}

Control* InputConfigDlg::PropertyManager::chosen(const Row& row)
{
    const auto* const devices = as<ci::ComboBox>(row.device);
    const auto* const controls = as<ci::ComboBox>(row.control);
    if (!devices || !controls || devices->currentIndex() <= 0 || controls->currentIndex() <= 0)
        return nullptr;
    const unidevice::Device* const device = deviceLabelled(devices->currentText());
    Control* const control = device ? device->controlAt(controls->currentIndex() - 1) : nullptr;
    return control && labelOf(*control) == controls->currentText() ? control : nullptr;
}

void InputConfigDlg::PropertyManager::bindChosen()
{
    Control* const first = chosen(kFirst);
    Control* const second = chosen(kSecond);
    const bool takesSecond = !first || isHalfAnAxis(property_, first);
    bindByHand(property_, takesSecond ? joined(first, second) : first);
    showSecond(takesSecond && (first || second));
    if (!takesSecond)
        show(kSecond, {});
    showDescription();
    showLive();
}

void InputConfigDlg::PropertyManager::bindDetected(Control& control, bool positive)
{
    bindByHand(property_, &control);
    if (positive != (property_.multiplier >= 0.0))
        property_.multiplier = -property_.multiplier;
    refresh();
}

void InputConfigDlg::PropertyManager::detect()
{
    detection_ = std::make_unique<InputDetection>(
        property_, [this](Control& control, bool positive) { bindDetected(control, positive); });
    detection_->open(panel_);
}

void InputConfigDlg::PropertyManager::openAdvanced()
{
    if (!advanced_)
        advanced_ = std::make_unique<AdvancedInput>(property_);
    advanced_->open(panel_);
}

} // namespace tvw::rgs::app
