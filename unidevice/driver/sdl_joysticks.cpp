#include "unidevice/driver/sdl_joysticks.h"

#include <SDL.h>
#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace tvw::unidevice {

namespace {

constexpr double kFullDeflection = 32767.0; // of SDL
constexpr double kOurs = 1000.0;

int angleOf(Uint8 hat)
{
    switch (hat) {
    case SDL_HAT_UP:
        return 0;
    case SDL_HAT_RIGHTUP:
        return 4500;
    case SDL_HAT_RIGHT:
        return 9000;
    case SDL_HAT_RIGHTDOWN:
        return 13500;
    case SDL_HAT_DOWN:
        return 18000;
    case SDL_HAT_LEFTDOWN:
        return 22500;
    case SDL_HAT_LEFT:
        return 27000;
    case SDL_HAT_LEFTUP:
        return 31500;
    default:
        return JoystickState::kCentred;
    }
}

/// SDL has no square wave: a sine of the same magnitude is the nearest force that it has.
Uint16 typeOf(EffectKind kind)
{
    switch (kind) {
    case EffectKind::constant:
        return SDL_HAPTIC_CONSTANT;
    case EffectKind::ramp:
        return SDL_HAPTIC_RAMP;
    case EffectKind::triangle:
        return SDL_HAPTIC_TRIANGLE;
    case EffectKind::sawtoothUp:
        return SDL_HAPTIC_SAWTOOTHUP;
    case EffectKind::sawtoothDown:
        return SDL_HAPTIC_SAWTOOTHDOWN;
    case EffectKind::square:
    case EffectKind::sine:
        break;
    }
    return SDL_HAPTIC_SINE;
}

Sint16 levelOf(int ours)
{
    return static_cast<Sint16>(std::clamp(std::lround(ours * 3.2767), -32767L, 32767L));
}

SDL_HapticDirection directionOf(const EffectRecord& record)
{
    SDL_HapticDirection out{};
    out.type = SDL_HAPTIC_CARTESIAN;
    out.dir[std::clamp(record.axis, 0, 2)] = record.direction;
    return out;
}

SDL_HapticEffect effectOf(const EffectRecord& record)
{
    SDL_HapticEffect out{};
    out.type = typeOf(record.kind);
    if (record.kind == EffectKind::constant) {
        out.constant.direction = directionOf(record);
        out.constant.length = SDL_HAPTIC_INFINITY;
        out.constant.level = levelOf(record.magnitude);
    } else if (record.kind == EffectKind::ramp) {
        out.ramp.direction = directionOf(record);
        out.ramp.length = SDL_HAPTIC_INFINITY;
        out.ramp.start = levelOf(record.rampStart);
        out.ramp.end = levelOf(record.rampEnd);
    } else {
        out.periodic.direction = directionOf(record);
        out.periodic.length = SDL_HAPTIC_INFINITY;
        out.periodic.period = static_cast<Uint16>(std::min(record.period / 1000, Uint32{0xFFFF}));
        out.periodic.magnitude = levelOf(record.magnitude);
        out.periodic.offset = levelOf(record.offset);
        out.periodic.phase = static_cast<Uint16>(record.phase * 36000L / 40000L);
    }
    return out;
}

class SdlPort final : public JoystickPort
{
public:
    explicit SdlPort(SDL_Joystick* stick)
        : stick_(stick), haptic_(SDL_HapticOpenFromJoystick(stick))
    {
    }
    ~SdlPort() override
    {
        if (haptic_)
            SDL_HapticClose(haptic_);
        SDL_JoystickClose(stick_);
    }

    bool read(JoystickState& state) override
    {
        SDL_JoystickUpdate();
        // A stick that is pulled out reads 0 everywhere before it is gone.
        if (!SDL_JoystickGetAttached(stick_))
            return false;
        for (std::size_t i = 0; i < state.axes.size(); ++i) {
            const double raw = SDL_JoystickGetAxis(stick_, static_cast<int>(i));
            state.axes[i] = std::max(raw / kFullDeflection, -1.0) * kOurs;
        }
        for (std::size_t i = 0; i < state.hats.size(); ++i)
            state.hats[i] = angleOf(SDL_JoystickGetHat(stick_, static_cast<int>(i)));
        for (std::size_t i = 0; i < state.buttons.size(); ++i)
            state.buttons[i] = SDL_JoystickGetButton(stick_, static_cast<int>(i)) != 0;
        return true;
    }

    bool supportsEffect(EffectKind kind) override
    {
        return haptic_ && (SDL_HapticQuery(haptic_) & typeOf(kind)) != 0;
    }
    std::optional<int> upload(const EffectRecord& record) override
    {
        SDL_HapticEffect effect = effectOf(record);
        const int made = haptic_ ? SDL_HapticNewEffect(haptic_, &effect) : -1;
        return made < 0 ? std::nullopt : std::optional(made);
    }
    bool update(int effect, const EffectRecord& record) override
    {
        SDL_HapticEffect changed = effectOf(record);
        return haptic_ && SDL_HapticUpdateEffect(haptic_, effect, &changed) == 0;
    }
    bool start(int effect, int count) override
    {
        const Uint32 times = count < 0 ? SDL_HAPTIC_INFINITY : static_cast<Uint32>(count);
        return haptic_ && SDL_HapticRunEffect(haptic_, effect, times) == 0;
    }
    bool stop(int effect) override { return haptic_ && SDL_HapticStopEffect(haptic_, effect) == 0; }
    void remove(int effect) override
    {
        if (haptic_)
            SDL_HapticDestroyEffect(haptic_, effect);
    }

private:
    SDL_Joystick* stick_;
    SDL_Haptic* haptic_; ///< null: no forces
};

} // namespace

SdlJoysticks::SdlJoysticks()
{
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    started_ = SDL_InitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_HAPTIC) == 0;
    if (!started_) {
        problem_ = SDL_GetError();
        return;
    }
    SDL_JoystickEventState(SDL_IGNORE); // we ask; a queue that no one reads would only fill
    pump();
}

SdlJoysticks::~SdlJoysticks()
{
    for (const auto& [number, device] : devices_)
        device->destroy();
    if (started_)
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_HAPTIC);
}

void SdlJoysticks::pump()
{
    if (!started_)
        return;
    SDL_JoystickUpdate();
    std::set<std::int32_t> present;
    for (int place = 0; place < SDL_NumJoysticks(); ++place)
        present.insert(SDL_JoystickGetDeviceInstanceID(place));
    for (auto it = devices_.begin(); it != devices_.end();) {
        if (present.contains(it->first)) {
            ++it;
            continue;
        }
        DXJoystickDevice* const gone = it->second;
        it = devices_.erase(it);
        gone->destroy();
    }
    for (int place = 0; place < SDL_NumJoysticks(); ++place) {
        if (!devices_.contains(SDL_JoystickGetDeviceInstanceID(place)))
            open(place);
    }
}

void SdlJoysticks::open(int place)
{
    SDL_Joystick* const stick = SDL_JoystickOpen(place);
    if (!stick)
        return; // busy, or gone again: the next look tries anew
    const char* const name = SDL_JoystickName(stick);
    const JoystickShape shape{name ? name : "Joystick", std::max(SDL_JoystickNumAxes(stick), 0),
                              std::max(SDL_JoystickNumHats(stick), 0),
                              std::max(SDL_JoystickNumButtons(stick), 0)};
    devices_[SDL_JoystickInstanceID(stick)] =
        new DXJoystickDevice(shape, std::make_unique<SdlPort>(stick));
}

} // namespace tvw::unidevice
