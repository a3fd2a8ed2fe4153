#include "unidevice/driver/axis_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::unidevice {

namespace {

/// A share of the whole in whole units of the hardware; what is no number is 0.
int scaled(double share, double least, double unit)
{
    return std::isfinite(share)
               ? static_cast<int>(std::lround(std::clamp(share, least, 1.0) * unit))
               : 0;
}

constexpr double kForce = 10000.0;
constexpr double kTurn = 39999.0;
constexpr double kLongestPeriod = 3600.0; // [s]

} // namespace

DXAxisFFEffect::DXAxisFFEffect(std::shared_ptr<JoystickPort> port, int axis, EffectKind kind)
    : port_(std::move(port))
{
    record_.axis = axis;
    record_.kind = kind;
}

DXAxisFFEffect::~DXAxisFFEffect()
{
    if (handle_)
        port_->remove(*handle_);
}

bool DXAxisFFEffect::start(int count)
{
    if (!handle_)
        handle_ = port_->upload(record_);
    return handle_ && port_->start(*handle_, count);
}

bool DXAxisFFEffect::stop()
{
    return handle_ && port_->stop(*handle_);
}

void DXAxisFFEffect::setDirection(double direction)
{
    record_.direction = direction < 0.0 ? -1 : 1;
    send();
}

void DXAxisFFEffect::setMagnitude(double share)
{
    record_.magnitude = scaled(share, -1.0, kForce);
    send();
}

void DXAxisFFEffect::setOffset(double share)
{
    record_.offset = scaled(share, -1.0, kForce);
    send();
}

void DXAxisFFEffect::setPhase(double turns)
{
    record_.phase = scaled(turns, 0.0, kTurn);
    send();
}

void DXAxisFFEffect::setPeriod(double seconds)
{
    const double held = std::isfinite(seconds) ? std::clamp(seconds, 0.0, kLongestPeriod) : 1.0;
    record_.period = static_cast<std::uint32_t>(std::lround(held * 1e6));
    send();
}

void DXAxisFFEffect::setRampStart(double share)
{
    record_.rampStart = scaled(share, -1.0, kForce);
    send();
}

void DXAxisFFEffect::setRampEnd(double share)
{
    record_.rampEnd = scaled(share, -1.0, kForce);
    send();
}

void DXAxisFFEffect::send()
{
    if (handle_)
        port_->update(*handle_, record_);
}

} // namespace tvw::unidevice
