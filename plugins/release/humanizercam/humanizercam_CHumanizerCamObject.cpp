#include "plugins/release/humanizercam/humanizercam_CHumanizerCamObject.h"

#include "util/filters.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace humanizercam;

CHumanizerCamObject::CHumanizerCamObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "HumanizerCamDataChunk")
{
    StateStore& saved = state();
    saved.packed("sDataChunkSaveStruct", 2)
        .field(settings.hideHelpers)
        .field(settings.hideDuringRecording);
    saved.stored("bFirstTime", bFirstTime_);
    saved.stored("cHumanizerCamNodemInit", mInit_);
    saved.nearest("ancHumanizerCamvRotShakeAdderMem", rotShakeAdderMem_);
    saved.nearest("ancHumanizerCamvRotShakeAdder", rotShakeAdder_);
    saved.nearest("ancHumanizerCamShakeTransform", shakeTransform_);
    saved.nearest("ancHumanizerCamFilteredAmplitude", filteredAmplitude_);
    saved.latest("ancHumanizerCamRandomLow", random_.low);
    saved.latest("ancHumanizerCamRandomHigh", random_.high);
}

bool CHumanizerCamObject::startsAnew(double)
{
    return bFirstTime_;
}

void CHumanizerCamObject::runStarts(double time)
{
    if (bFirstTime_)
        mInit_ = node(0).local(time);
    bFirstTime_ = false;
}

void CHumanizerCamObject::step(double time)
{
    const double dt = stepLength();
    response(filteredAmplitude_, settings.amplitudeMaximum * input(0).value(),
             settings.amplitudeResponse, dt);

    response(rotShakeAdderMem_, kicks(), settings.damping, dt);
    response(rotShakeAdder_, rotShakeAdderMem_, settings.damping, dt);
    shakeTransform_.rotation = normalise(fromRotationVector(rotShakeAdder_ * dt));
    node(0).setLocal(time, mInit_ * toMatrix(shakeTransform_));
}

/// The sign is drawn apart: an odd or fractional exponent leaves only the draws above 0, which
/// would push the camera off to one side.
Vector3d CHumanizerCamObject::kicks()
{
    constexpr double kHundredth = 0.01;
    const double amplitude = (settings.shakeMultiplier + filteredAmplitude_) * kHundredth;
    const double sizes[] = {settings.pitchShake, settings.yawShake, settings.rollShake};
    const Matrix4 axes = toMatrix(shakeTransform_);
    Random random(random_);
    Vector3d sum;
    for (int axis = 0; axis < 3; ++axis) {
        const double r = (random.below(10000) - 5000.0) / 5000.0;
        const double s = std::pow(r, settings.irregularity); // no number: no kick
        const double sign = random.below(2) == 0 ? 1.0 : -1.0;
        if (settings.threshold * kHundredth <= s)
            sum += axes.axis(axis) * (sign * amplitude * s * sizes[axis]);
    }
    random_ = random.state();
    return sum;
}

void CHumanizerCamObject::itemActed(std::string_view label)
{
    if (label != kReInitialize)
        return;
    runtime().pushUndo(new CVariableModUndo<bool>(&bFirstTime_));
    bFirstTime_ = true;
}

} // namespace tvw::rgs::addon
