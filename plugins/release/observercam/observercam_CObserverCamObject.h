/// A camera that is flown by hand in any direction, with a shaker, a walking gait, and regulators
/// that bring it back to a remembered pose or level it.
#pragma once

#include "plugins/release/observercam/observercam_items.h"
#include "util/random.h"

namespace tvw::rgs::addon {

class CObserverCamObject final : public FlyingCamera<observercam::Settings, observercam::kInputs>
{
public:
    explicit CObserverCamObject(const CreateParam& param);

private:
    /// A regulator follows its goal through a memory, which softens its start.
    struct Regulators
    {
        QTransformd saved;  ///< the goal, set by "Save MemReg State"
        QTransformd memory; ///< of the two memory regulators
        Quatd antiRollMemory;
        bool translActive = false; ///< in the last frame
        bool orientActive = false;
        bool antiRollActive = false;
    };

    struct Frame; ///< what its sub-steps have in common

    void takesOff(double h) override;
    void fly(const SubSteps& steps) override;
    Frame frameOf(double h);
    void subStep(const Frame& frame);

    bool isHeld(observercam::Input input) const { return inputs_[input].raw != 0.0; }
    FlightInputs flight();
    void switchRegulators(double h);
    void followBody();
    double faded(observercam::Input input, double& amplitude, const Response& fadeOut);
    void addWalkCycle(FlightSpeeds& speeds, const Frame& frame);
    void addShake(FlightSpeeds& speeds, const Frame& frame);
    Quatd nextOrientation(const FlightSpeeds& speeds, const Frame& frame);
    Vector3d nextPosition(const FlightSpeeds& speeds, const Frame& frame);

    Regulators regulators_;
    double walkAmplitude_ = 0.0; ///< [rad/s]
    double walkPhase_ = 0.0;     ///< [rad]
    double shakeAmplitude_ = 0.0;
    Vector3d shake_; ///< how far the shaker has turned the camera about its axes [rad]
    RandomState random_ = Random(1).state();
};

} // namespace tvw::rgs::addon
