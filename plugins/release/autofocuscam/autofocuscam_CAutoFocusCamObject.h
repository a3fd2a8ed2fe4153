/// The lens of a camera by hand: a focal point that slides from one target to another, and a zoom
/// that is quick at wide angles and fine at narrow ones.
#pragma once

#include "plugins/release/autofocuscam/autofocuscam_items.h"

namespace tvw::rgs::addon {

class CAutoFocusCamObject final : public Tool<autofocuscam::Settings>
{
public:
    explicit CAutoFocusCamObject(const CreateParam& param);

private:
    bool nodesCreated() override;
    bool startsAnew(double time) override;
    void runStarts(double time) override;
    void step(double time) override;
    void timeMoved(double time) override;
    void itemActed(std::string_view label) override;

    double fieldOfView(double time) const; ///< of the lens [degrees]
    double exponent() const;
    void seedZoom();
    void slideFocus(double dt);
    void turnZoom(double dt);
    void placeFocalPoint(double time);
    double focalDistance(double time) const;
    void writeLens(double time);

    ActuatorChannel focus_;
    ActuatorChannel zoom_;
    double fov_ = 50.0; ///< [degrees]
    double prevFov_ = 50.0;

    // What the zoom's channel means at present: another exponent or mode is another scale.
    double seededExponent_ = 0.0;
    bool seededIntegral_ = false;
    const Recorded<AVar_Nearest<double>>* fovLine_ = nullptr;
    bool anew_ = true;
};

} // namespace tvw::rgs::addon
