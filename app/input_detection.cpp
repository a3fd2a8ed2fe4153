#include "app/input_detection.h"

#include "core/core_implementation.h"
#include "gui/componentinterface/dialog.h"
#include "gui/message_ids.h"
#include "unidevice/device_hub.h"
#include "unidevice/property.h"

#include <QLayout>
#include <QWidget>

#include <utility>

namespace tvw::rgs::app {

using core::CoreImplementation;
using unidevice::Control;
using unidevice::DeviceHub;

namespace {

enum Id {
    kWindow = 100,
    kRetry = 212,
    kOk = 213,
    kCancel = 214,
    kPrompt = 215,
    kControl = 216,
    kInput = 226
};

constexpr std::int32_t kFirstTimer = 1;
constexpr std::int32_t kSecondTimer = 2;
constexpr double kInterval = 0.03; // [s]

core::Clock& theClock()
{
    return CoreImplementation::instance().records().clock();
}

bool isKey(std::uint32_t message)
{
    return message == gui::message::keyPressed || message == gui::message::keyReleased;
}

} // namespace

InputDetection::InputDetection(const unidevice::Property& property, Accepted accepted)
    : WindowBase("InputDetection"), property_(property), accepted_(std::move(accepted))
{
}

InputDetection::~InputDetection()
{
    if (CoreImplementation::exists())
        stopTimers();
}

/// The texts may be longer than the window has room for.
void InputDetection::showTexts(const std::string& prompt, const std::string& control)
{
    setText(kInput, property_.name());
    setText(kPrompt, prompt);
    setText(kControl, control);
    if (gui::Component* const label = find(kControl))
        label->setVisible(!control.empty(), false); // the prompt needs the room
    fitHeight();
}

void InputDetection::fitHeight()
{
    QWidget* widget = find(kPrompt) ? find(kPrompt)->widget()->parentWidget() : nullptr;
    for (; widget && widget->layout(); widget = widget->parentWidget()) { // from within outwards
        widget->layout()->invalidate();
        widget->layout()->activate();
    }
    const QWidget& window = *root()->widget();
    const int needed = window.layout() ? window.layout()->totalHeightForWidth(window.width()) : 0;
    if (needed > window.height())
        root()->setSize({window.width(), needed});
}

void InputDetection::open(gui::Component& over)
{
    if (!build("rgs_inputs_detect"))
        return;
    listen({kWindow, kRetry, kOk, kCancel});
    DeviceHub::instance().releaseAll();
    auto* const dialog = gui::toDialog(root());
    if (!dialog)
        return;
    dialog->showModal();
    placeOver(over);
    raise();
}

void InputDetection::cancel()
{
    first_.clear();
    close();
}

void InputDetection::handle(gui::Component& component, Message& message)
{
    // The keys are what is being detected: none may press a button here or close the window.
    if (isKey(message.id) && swallows(message))
        message.attachments.emplace_back(new DynamicObject);
    const bool isClick = message.id == gui::message::buttonClicked;
    switch (component.id()) {
    case kWindow:
        if (message.id == gui::message::modalShown)
            listenForFirst();
        else if (message.id == gui::message::hideBegins)
            finish();
        else if (message.id == gui::message::windowActive ||
                 message.id == gui::message::windowInactive)
            handleWindowKeys(message);
        break;
    case kRetry:
        if (isClick)
            retry();
        break;
    case kOk:
        if (isClick)
            accept();
        break;
    case kCancel:
        if (isClick)
            cancel();
        break;
    default:
        break;
    }
}

/// The key that was found repeats while it is held.
bool InputDetection::swallows(const Message& key) const
{
    const bool waits = state_ == State::First || state_ == State::Second;
    const auto* const stroke =
        reinterpret_cast<const gui::KeyStroke*>(static_cast<std::uintptr_t>(key.value));
    return waits || (stroke && stroke->autoRepeat);
}

void InputDetection::listenForFirst()
{
    DeviceHub& hub = DeviceHub::instance();
    hub.setWindow(reinterpret_cast<void*>(root()->widget()->winId()));
    first_.clear();
    second_.clear();
    if (!hub.prepareAll()) {
        state_ = State::Idle;
        showTexts("No device detected", {});
        return;
    }
    state_ = State::First;
    showTexts("Please press or move the control you want to bind", {});
    theClock().startTimer(*this, kFirstTimer, kInterval);
}

void InputDetection::onTimer(std::int32_t id, std::int64_t)
{
    if (CoreImplementation::instance().isRunning()) {
        cancel();
        return;
    }
    HeldControls known;
    known.add(excluded_);
    if (id == kSecondTimer)
        known.add(first_);
    Control* const found = DeviceHub::instance().detectControl(&known.all());
    if (!found)
        return;
    if (id == kFirstTimer) {
        first_.add(found);
        positive_ = found->current - found->previous >= 0.0;
        firstFound();
    } else {
        second_.add(found);
        secondFound();
    }
}

void InputDetection::firstFound()
{
    stopTimers();
    state_ = State::ConfirmFirst;
    DeviceHub::instance().resetAll();
    DeviceHub::instance().releaseAll();
    const Control* const first = first_.first();
    showTexts("Use this control?", first ? labelOf(*first) : "[NONE]");
    if (isHalfAnAxis(property_, first))
        listenForSecond();
}

void InputDetection::listenForSecond()
{
    if (!DeviceHub::instance().prepareAll())
        return;
    state_ = State::Second;
    showTexts("Please press or move another control", labelOf(*first_.first()));
    theClock().startTimer(*this, kSecondTimer, kInterval);
}

void InputDetection::secondFound()
{
    stopTimers();
    state_ = State::ConfirmBoth;
    DeviceHub::instance().releaseAll();
    DeviceHub::instance().resetAll();
    if (first_.first() && second_.first()) {
        Control* const pair = joined(first_.first(), second_.first());
        first_.clear();
        first_.add(pair);
    }
    showTexts("Use this control?", first_.first() ? labelOf(*first_.first()) : "[NONE]");
}

void InputDetection::retry()
{
    stopTimers();
    excluded_.add(first_);
    DeviceHub::instance().releaseAll();
    listenForFirst();
}

void InputDetection::accept()
{
    stopTimers();
    if (Control* const control = first_.first())
        accepted_(*control, positive_);
    close();
}

/// It may be hidden by its frame or by Escape too.
void InputDetection::finish()
{
    stopTimers();
    state_ = State::Idle;
    DeviceHub::instance().releaseAll();
    DeviceHub::instance().setWindow(CoreImplementation::instance().windows().mainWindowHandle());
}

void InputDetection::stopTimers()
{
    theClock().killTimer(*this, kFirstTimer);
    theClock().killTimer(*this, kSecondTimer);
}

void InputDetection::close()
{
    if (auto* const dialog = gui::toDialog(root()); dialog && isShown())
        dialog->endModal();
}

} // namespace tvw::rgs::app
