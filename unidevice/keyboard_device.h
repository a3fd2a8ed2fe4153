/// The keys of the keyboard, whoever hears them.
#pragma once

#include "unidevice/device.h"

#include <array>
#include <memory>
#include <vector>

namespace tvw::unidevice {

/// "Keyboard": a control for each key that has a name, 0 up and 1 down. It reads no hardware:
/// whoever has the window's key events passes them on. Keys count while the device is acquired.
class KeyboardDevice final : public Device, DynamicCreator<KeyboardDevice>
{
public:
    KeyboardDevice();
    ~KeyboardDevice() override;

    /// virtualKey: the code that Windows has for the key; one that has no control is ignored.
    void keyEvent(int virtualKey, bool isDown);

    /// Lets go of every key that is down, as when the window loses the keys.
    void releaseAll();

    /// Null for a key without a control.
    Control* controlOfKey(int virtualKey) const;

    int controlCount() const override { return static_cast<int>(controls_.size()); }
    Control* controlAt(int index) const override; ///< in the order of the codes
    bool update(void*) override { return true; }  ///< the values change with the events
    bool prepare(void* window) override;
    Control* detectControl(const ExcludeList* exclude) override;
    void resetControls() override;
    bool acquire(void* window) override; ///< all keys count as up, until they are pressed anew
    bool release(void* window) override;

private:
    static constexpr int kKeyCodes = 256;

    void addKey(int virtualKey, const char* name);

    std::vector<std::unique_ptr<Control>> controls_;
    std::array<Control*, kKeyCodes> byKey_{};
    bool isAcquired_ = false;
};

} // namespace tvw::unidevice
