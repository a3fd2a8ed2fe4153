/// A camera that flies on a sphere round a target and looks at its centre.
#pragma once

#include "plugins/release/spherecam/spherecam_items.h"
#include "util/transform.h"

namespace tvw::rgs::addon {

class CSphereCamObject final : public ObserverTool<spherecam::Settings, spherecam::kInputs>
{
public:
    explicit CSphereCamObject(const CreateParam& param);

private:
    bool nodesCreated() override;
    bool startsAnew(double time) override;
    void runStarts(double time) override;
    void step(double time) override;

    Quatd sphereRotation(const Quatd& target) const;
    void takeOrbit(double time);
    void followTarget(const QTransformd& target, double dt);
    void resize(double travelled, double dt);
    void turnOrbit(double dt);
    void level(double dt);
    void moveCamera(double dt);
    void writeCamera(double time);

    /// Orbit * sphere is the camera's orientation, its Z axis the way from the centre to the
    /// camera.
    QTransformd sphere_; ///< follows the target
    Quatd orbit_;
    double radius_ = 0.0;
    double minimumRadius_ = 0.0;
    QTransformd camera_;
    Vector3d scale_{1, 1, 1}; ///< of the camera's node
    const Recorded<AVar_Nearest<QTransformd>>* cameraLine_ = nullptr;
    bool anew_ = true;
};

} // namespace tvw::rgs::addon
