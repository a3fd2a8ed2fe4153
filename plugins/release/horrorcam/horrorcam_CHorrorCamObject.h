/// A camera that keeps its target at one size in the picture: its angle follows the distance, and
/// the user drives it to and fro.
#pragma once

#include "plugins/release/horrorcam/horrorcam_items.h"
#include "util/transform.h"

namespace tvw::rgs::addon {

class CHorrorCamObject final : public ObserverTool<horrorcam::Settings, horrorcam::kInputs>
{
public:
    explicit CHorrorCamObject(const CreateParam& param);

private:
    bool startsAnew(double time) override;
    void runStarts(double time) override;
    void step(double time) override;

    double measure(double time) const;
    void drive(double time, double dt);
    void zoom(double time);

    double objectHalfSize_ = 0.0; ///< half of what the camera sees at the target [scene units]
    double initialDistance_ = 0.0;
    double distance_ = 0.0; ///< to the target in the last frame
    double fov_ = 0.0;      ///< [degrees]
    QTransformd pose_;      ///< local
    const Recorded<AVar_Nearest<QTransformd>>* poseLine_ = nullptr;
    const Recorded<AVar_Nearest<double>>* distanceLine_ = nullptr;
    const Recorded<AVar_Nearest<double>>* fovLine_ = nullptr;
    bool anew_ = true;
};

} // namespace tvw::rgs::addon
