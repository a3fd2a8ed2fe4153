/// Turns a camera as a hand does that holds it: rare random kicks, and a damper that takes them up.
#pragma once

#include "plugins/release/humanizercam/humanizercam_items.h"
#include "util/random.h"
#include "util/transform.h"

namespace tvw::rgs::addon {

class CHumanizerCamObject final : public Tool<humanizercam::Settings>
{
public:
    explicit CHumanizerCamObject(const CreateParam& param);

private:
    bool startsAnew(double time) override;
    void runStarts(double time) override;
    void step(double time) override;
    void itemActed(std::string_view label) override;

    /// The sum of this frame's kicks about the camera's axes.
    Vector3d kicks();

    bool bFirstTime_ = true;
    Matrix4 mInit_; ///< the camera's local pose without the shake
    QTransformd shakeTransform_;
    Vector3d rotShakeAdderMem_;      ///< after the first damper [rad/s]
    Vector3d rotShakeAdder_;         ///< after both [rad/s]
    double filteredAmplitude_ = 0.0; ///< [hundredths]
    RandomState random_ = Random(1).state();
};

} // namespace tvw::rgs::addon
