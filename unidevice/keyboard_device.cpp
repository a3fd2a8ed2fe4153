#include "unidevice/keyboard_device.h"

#include "unidevice/device_hub.h"

#include <string>

namespace tvw::unidevice {

namespace {

constexpr double kMovementThreshold = 0.5;

/// Codes of Windows' virtual keys. The names stand in profiles and never change.
struct Key
{
    int code;
    const char* name;
};

constexpr Key kKeys[] = {
    {8, "Backspace"},
    {9, "Tab"},
    {12, "Clear"},
    {13, "RETUR"},
    {16, "Shift"},
    {17, "CTRL"},
    {18, "ALT"},
    {19, "PAUSE"},
    {20, "Caps_lock"},
    {27, "Escape"},
    {32, "Space"},
    {33, "Page_UP"},
    {34, "Page_DOWN"},
    {35, "End"},
    {36, "Home"},
    {37, "Left_Arrow"},
    {38, "Up_Arrow"},
    {39, "Right_Arrow"},
    {40, "Down_Arrow"},
    {45, "Insert"},
    {46, "Delete"},
    {91, "Left_Windows_key"},
    {92, "Right_Windows_key"},
    {106, "Num_*"},
    {107, "Num_+"},
    {109, "Num_-"},
    {110, "Num_,"},
    {111, "Num_/"},
    {164, "Left_MENU"},
    {165, "Right_MENU"},
    {187, "+"},
    {188, ","},
    {189, "-"},
    {190, "."},
};

/// Keys whose codes follow each other: a prefix, then digits or letters that count on.
struct KeyRange
{
    int first, last;
    const char* prefix;
    char start;
};

constexpr KeyRange kCharacterKeys[] = {
    {48, 57, "", '0'},
    {65, 90, "", 'A'},
    {96, 105, "Num_", '0'},
};

constexpr int kFirstFunctionKey = 112;
constexpr int kFunctionKeys = 24;

using Names = std::array<std::string, 256>;

Names keyNames()
{
    Names names;
    for (const Key& key : kKeys)
        names[static_cast<std::size_t>(key.code)] = key.name;
    for (const KeyRange& range : kCharacterKeys) {
        for (int code = range.first; code <= range.last; ++code)
            names[static_cast<std::size_t>(code)] =
                std::string(range.prefix) + static_cast<char>(range.start + (code - range.first));
    }
    for (int i = 0; i < kFunctionKeys; ++i)
        names[static_cast<std::size_t>(kFirstFunctionKey + i)] =
            std::string("F").append(std::to_string(i + 1));
    return names;
}

} // namespace

KeyboardDevice::KeyboardDevice() : Device("Keyboard", false)
{
    const Names names = keyNames();
    for (int code = 0; code < kKeyCodes; ++code) {
        const std::string& name = names[static_cast<std::size_t>(code)];
        if (!name.empty())
            addKey(code, name.c_str());
    }
    takeFreeIndex();
    DeviceHub& hub = DeviceHub::instance();
    if (Driver* const driver = hub.findDriver("dummydriver"))
        driver->addDevice(this);
    hub.addDevice(this);
}

KeyboardDevice::~KeyboardDevice()
{
    withdraw();
}

void KeyboardDevice::addKey(int virtualKey, const char* name)
{
    auto key = std::make_unique<Control>(this, kind::binary, kMovementThreshold);
    key->type = name;
    key->description = name;
    byKey_[static_cast<std::size_t>(virtualKey)] = key.get();
    controls_.push_back(std::move(key));
}

void KeyboardDevice::keyEvent(int virtualKey, bool isDown)
{
    Control* const key = controlOfKey(virtualKey);
    if (isAcquired_ && key)
        key->read(isDown ? 1.0 : 0.0);
}

void KeyboardDevice::releaseAll()
{
    for (const auto& key : controls_) {
        if (key->current != 0.0)
            key->read(0.0);
    }
}

Control* KeyboardDevice::controlOfKey(int virtualKey) const
{
    const bool inRange = virtualKey >= 0 && virtualKey < kKeyCodes;
    return inRange ? byKey_[static_cast<std::size_t>(virtualKey)] : nullptr;
}

Control* KeyboardDevice::controlAt(int index) const
{
    const bool inRange = index >= 0 && index < controlCount();
    return inRange ? controls_[static_cast<std::size_t>(index)].get() : nullptr;
}

bool KeyboardDevice::prepare(void* window)
{
    resetControls();
    return acquire(window);
}

Control* KeyboardDevice::detectControl(const ExcludeList* exclude)
{
    update(nullptr);
    return strongestMoved(exclude);
}

void KeyboardDevice::resetControls()
{
    for (const auto& key : controls_)
        key->previous = key->current = 0.0;
}

bool KeyboardDevice::acquire(void*)
{
    resetControls();
    isAcquired_ = true;
    return true;
}

bool KeyboardDevice::release(void*)
{
    isAcquired_ = false;
    return true;
}

} // namespace tvw::unidevice
