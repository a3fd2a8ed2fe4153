/// A stick of SDL's own, with no hardware.
#pragma once

#include <gtest/gtest.h>

#include <SDL.h>

namespace tvw::rgs::tests {

class VirtualStick
{
public:
    VirtualStick(const char* name, int axes, int hats, int buttons)
    {
        SDL_VirtualJoystickDesc shape{};
        shape.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        shape.type = SDL_JOYSTICK_TYPE_FLIGHT_STICK;
        shape.naxes = static_cast<Uint16>(axes);
        shape.nhats = static_cast<Uint16>(hats);
        shape.nbuttons = static_cast<Uint16>(buttons);
        shape.name = name;
        place_ = SDL_JoystickAttachVirtualEx(&shape);
        EXPECT_GE(place_, 0) << SDL_GetError();
        stick_ = SDL_JoystickOpen(place_);
    }
    ~VirtualStick() { unplug(); }
    VirtualStick(const VirtualStick&) = delete;
    VirtualStick& operator=(const VirtualStick&) = delete;

    void axis(int i, int value)
    {
        SDL_JoystickSetVirtualAxis(stick_, i, static_cast<Sint16>(value));
    }
    void hat(int i, int value) { SDL_JoystickSetVirtualHat(stick_, i, static_cast<Uint8>(value)); }
    void button(int i, bool down) { SDL_JoystickSetVirtualButton(stick_, i, down ? 1 : 0); }

    void unplug()
    {
        if (!stick_)
            return;
        const SDL_JoystickID number = SDL_JoystickInstanceID(stick_);
        for (int place = 0; place < SDL_NumJoysticks(); ++place) {
            if (SDL_JoystickGetDeviceInstanceID(place) == number)
                SDL_JoystickDetachVirtual(place);
        }
        SDL_JoystickClose(stick_);
        stick_ = nullptr;
    }

private:
    int place_ = -1;
    SDL_Joystick* stick_ = nullptr;
};

} // namespace tvw::rgs::tests
