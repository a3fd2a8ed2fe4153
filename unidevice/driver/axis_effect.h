/// A force effect on one axis of a joystick.
#pragma once

#include "unidevice/driver/joystick_port.h"

namespace tvw::unidevice {

class DXAxisFFEffect final : public Effect
{
public:
    DXAxisFFEffect(std::shared_ptr<JoystickPort> port, int axis, EffectKind kind);
    ~DXAxisFFEffect() override;
    DXAxisFFEffect(const DXAxisFFEffect&) = delete;
    DXAxisFFEffect& operator=(const DXAxisFFEffect&) = delete;

    bool start(int count) override;
    bool stop() override;
    void setDirection(double direction) override;
    void setMagnitude(double share) override;
    void setOffset(double share) override;
    void setPhase(double turns) override;
    void setPeriod(double seconds) override;
    void setRampStart(double share) override;
    void setRampEnd(double share) override;

private:
    void send(); ///< the parameters, to an effect that the hardware has

    std::shared_ptr<JoystickPort> port_;
    EffectRecord record_;
    std::optional<int> handle_; ///< none before the first start
};

} // namespace tvw::unidevice
