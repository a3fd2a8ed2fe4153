/// Forces that a control can put on the hand.
#pragma once

#include <cstdint>

namespace tvw::unidevice {

enum class EffectKind : std::int32_t {
    constant,
    ramp,
    square,
    sine,
    triangle,
    sawtoothUp,
    sawtoothDown
};

/// One force on one axis. Made by `Control::createEffect`, ended by `delete`, before its device
/// goes or after: then it does nothing. A setter acts at once on an effect that runs.
class Effect
{
public:
    virtual bool start(int count) = 0; ///< times that it is played; whether the hardware took it
    virtual bool stop() = 0;
    virtual void setDirection(double direction) = 0; ///< -1 or 1, along the axis
    virtual void setMagnitude(double share) = 0;     ///< -1 to 1 of the greatest force
    virtual void setOffset(double share) = 0;        ///< -1 to 1, about which a wave swings
    virtual void setPhase(double turns) = 0;         ///< 0 to 1 of a period
    virtual void setPeriod(double seconds) = 0;
    virtual void setRampStart(double share) = 0; ///< -1 to 1
    virtual void setRampEnd(double share) = 0;
    virtual ~Effect() = default;
};

} // namespace tvw::unidevice
