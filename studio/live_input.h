/// The hands: keys, pens and sticks of this machine, as devices of the hub.
#pragma once

#include "core/record_manager.h"
#include "unidevice/driver/sdl_joysticks.h"
#include "unidevice/driver/tablet_device.h"
#include "unidevice/keyboard_device.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>

namespace tvw::rgs::studio {

/// Hears every key and pen of the program, whichever widget has the focus. Made when the core's hub
/// stands; ends before it. The devices belong to the hub.
class LiveInput final : public QObject, private core::RunObserver
{
public:
    LiveInput();
    ~LiveInput() override;

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool key(QEvent* event);
    void pen(QEvent* event);
    void releaseKeys();
    void runStarted(double start, const std::vector<core::Instance*>&) override;

    unidevice::KeyboardDevice* keyboard_;       ///< the core's own
    unidevice::TabletDevice* tablet_ = nullptr; ///< from the first pen on
    std::unique_ptr<unidevice::SdlJoysticks> sticks_;
    QTimer look_;               ///< for sticks that come and go
    QHash<int, unsigned> down_; ///< codes of held keys, and the modifiers that they came with
    QSet<int> swallowed_;       ///< of those, the ones that a run took
};

} // namespace tvw::rgs::studio
