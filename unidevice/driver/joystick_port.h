/// What a joystick's device class asks of the system that has the hardware.
#pragma once

#include "unidevice/force_effect.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tvw::unidevice {

/// What a stick has.
struct JoystickShape
{
    std::string name; ///< of the product
    int axes = 0;     ///< the first six are X, Y, Z and the turns about them; more are sliders
    int hats = 0;
    int buttons = 0;
};

/// What a stick says.
struct JoystickState
{
    static constexpr int kCentred = 0xFFFF; ///< of a hat

    std::vector<double> axes; ///< -1000 to 1000
    std::vector<int> hats;    ///< clockwise from ahead [1/100 degree], or kCentred
    std::vector<bool> buttons;
};

/// The parameters of an effect, in the hardware's scale.
struct EffectRecord
{
    EffectKind kind = EffectKind::constant;
    int axis = 0;
    int direction = 1;              ///< -1 or 1
    int magnitude = 0;              ///< -10000 to 10000
    int offset = 0;                 ///< -10000 to 10000
    int phase = 0;                  ///< 0 to 39999, a turn is 40000
    std::uint32_t period = 1000000; ///< [us]
    int rampStart = 0, rampEnd = 0; ///< -10000 to 10000
};

class JoystickPort
{
public:
    virtual ~JoystickPort() = default;

    /// False when the stick is gone: nothing is read then. The sizes are those of the shape.
    virtual bool read(JoystickState& state) = 0;

    virtual bool supportsEffect(EffectKind kind) = 0;

    /// A handle of 0 or more, or nothing when the hardware refuses.
    virtual std::optional<int> upload(const EffectRecord& record) = 0;
    virtual bool update(int effect, const EffectRecord& record) = 0;
    virtual bool start(int effect, int count) = 0;
    virtual bool stop(int effect) = 0;
    virtual void remove(int effect) = 0;
};

} // namespace tvw::unidevice
