#include "studio/live_input.h"

#include "core/core_implementation.h"
#include "studio/virtual_keys.h"
#include "unidevice/device_hub.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QTabletEvent>
#include <QWindow>

#include <cmath>

namespace tvw::rgs::studio {

namespace {

constexpr int kLookInterval = 250; // [ms]

unsigned modifiersOf(Qt::KeyboardModifiers held)
{
    return (held & Qt::ControlModifier ? core::modifier::ctrl : 0U) |
           (held & Qt::AltModifier ? core::modifier::alt : 0U) |
           (held & Qt::ShiftModifier ? core::modifier::shift : 0U);
}

core::KeyHook& keyHook()
{
    return core::CoreImplementation::instance().records().keyHook();
}

} // namespace

LiveInput::LiveInput()
    : keyboard_(dynamic_cast<unidevice::KeyboardDevice*>(
          unidevice::DeviceHub::instance().findDevice("Keyboard", 0))),
      sticks_(std::make_unique<unidevice::SdlJoysticks>())
{
    qApp->installEventFilter(this);
    core::CoreImplementation::instance().records().addObserver(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state != Qt::ApplicationActive)
                    releaseKeys(); // their releases go to another program
            });
    connect(&look_, &QTimer::timeout, this, [this] { sticks_->pump(); });
    look_.start(kLookInterval);
}

LiveInput::~LiveInput()
{
    if (core::CoreImplementation::exists()) // its start may have failed
        core::CoreImplementation::instance().records().removeObserver(this);
}

bool LiveInput::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        // Each key reaches the window first, then its widgets again: the first is the one that
        // counts.
        if (qobject_cast<QWindow*>(object))
            return key(event);
        if (event->type() == QEvent::ShortcutOverride && keyHook().isActive())
            event->accept(); // no shortcut may take a key of the hands
        return false;
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        pen(event);
        return false;
    default:
        return false;
    }
}

bool LiveInput::key(QEvent* event)
{
    auto& stroke = static_cast<QKeyEvent&>(*event);
    const int code = virtualKeyOf(stroke);
    if (code == 0 || event->type() == QEvent::ShortcutOverride)
        return false;
    const bool isDown = event->type() == QEvent::KeyPress;
    if (stroke.isAutoRepeat())
        return swallowed_.contains(code);
    // A release means what its press did, whichever of the two keys goes first.
    const unsigned held = modifiersOf(stroke.modifiers());
    const unsigned modifiers = isDown ? held : down_.value(code, held);
    if (isDown)
        down_.insert(code, held);
    else
        down_.remove(code);
    if (keyboard_)
        keyboard_->keyEvent(code, isDown);
    const bool taken = keyHook().isActive() && keyHook().event(code, isDown, modifiers);
    if (isDown && taken)
        swallowed_.insert(code);
    else if (!isDown && swallowed_.remove(code))
        return true;
    return taken;
}

void LiveInput::releaseKeys()
{
    down_.clear();
    swallowed_.clear();
    if (keyboard_)
        keyboard_->releaseAll();
}

/// A device that a run takes begins with all keys up; what the hand holds already counts.
void LiveInput::runStarted(double, const std::vector<core::Instance*>&)
{
    for (auto held = down_.cbegin(); keyboard_ && held != down_.cend(); ++held)
        keyboard_->keyEvent(held.key(), true);
}

void LiveInput::pen(QEvent* event)
{
    if (!tablet_)
        tablet_ = new unidevice::TabletDevice("WACOM Tablet");
    const auto& at = static_cast<QTabletEvent&>(*event);
    const QSize screen = QGuiApplication::primaryScreen()->virtualSize();
    const double x = std::tan(at.xTilt() * 0.017453292519943295);
    const double y = std::tan(at.yTilt() * 0.017453292519943295);
    tablet_->packet({.x = at.globalPosF().x(),
                     .y = screen.height() - at.globalPosF().y(),
                     .xExtent = static_cast<double>(screen.width()),
                     .yExtent = static_cast<double>(screen.height()),
                     .azimuth = std::atan2(x, -y),
                     .altitude = std::atan2(1.0, std::hypot(x, y)),
                     .pressure = at.pressure() * 1000.0,
                     .buttons = static_cast<unsigned>(at.buttons())});
}

} // namespace tvw::rgs::studio
