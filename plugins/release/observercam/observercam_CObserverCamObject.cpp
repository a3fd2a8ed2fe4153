#include "plugins/release/observercam/observercam_CObserverCamObject.h"

#include "plugins/common/spin_keys.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace observercam;

namespace {

/// -0.5 up to, not including, 0.5, in steps of 0.001.
double coarseDraw(Random& random)
{
    return (random.below(1000) - 500.0) / 1000.0;
}

/// -1 to 1.
double fineDraw(Random& random)
{
    return 2.0 * random.centred();
}

} // namespace

CObserverCamObject::CObserverCamObject(const CreateParam& param)
    : FlyingCamera(param, kSpec, kItems, "ObserverCam", kInputTable)
{
    StateStore& saved = state();
    saved.nearest("ancObserverCamSavedMem", regulators_.saved);
    saved.nearest("ancObserverCamMem", regulators_.memory);
    saved.nearest("ancObserverCamAntiRollMem", regulators_.antiRollMemory);
    saved.latest("ancObserverCamTranslMemRegActive", regulators_.translActive);
    saved.latest("ancObserverCamOrientMemRegActive", regulators_.orientActive);
    saved.latest("ancObserverCamAntiRollActive", regulators_.antiRollActive);
    saved.nearest("ancObserverCamWalkCycleAmplitude", walkAmplitude_);
    saved.nearest("ancObserverCamWalkCyclePhase", walkPhase_);
    saved.nearest("ancObserverCamShakerAmplitude", shakeAmplitude_);
    saved.nearest("ancObserverCamShake", shake_);
    saved.latest("ancObserverCamRandomLow", random_.low);
    saved.latest("ancObserverCamRandomHigh", random_.high);
}

void CObserverCamObject::takesOff(double h)
{
    regulators_.saved = regulators_.memory = body_.pose();
    regulators_.antiRollMemory = body_.pose().rotation;
    flight().launchLinear(body_, h);
    flight().launchAngular(body_, h);
}

struct CObserverCamObject::Frame
{
    double h; ///< of a sub-step [s]
    Drives drives;
    bool level;
    double walkTurn;   ///< [rad]
    double shakeScale; ///< the variance of a sum of draws falls with their length
    Response walkFadeOut, shakeFadeOut;
    Response transl, orient, antiRoll;
};

CObserverCamObject::Frame CObserverCamObject::frameOf(double h)
{
    const Settings& s = settings;
    return {.h = h,
            .drives = Drives(inputs_, s.inputs, h),
            .level = !s.allowRoll,
            .walkTurn = s.walkCycleFrequency * 2.0 * std::numbers::pi * h,
            .shakeScale = std::sqrt(kSubStep / h),
            .walkFadeOut = Response(std::min(s.walkCycleFadeOut, 1.0), h),
            .shakeFadeOut = Response(std::min(s.shakerFadeOut, 1.0), h),
            .transl = Response(s.inputs[kTranslRegulator].share(), h),
            .orient = Response(s.inputs[kOrientRegulator].share(), h),
            .antiRoll = Response(s.inputs[kAntiRoll].share(), h)};
}

void CObserverCamObject::fly(const SubSteps& steps)
{
    switchRegulators(steps.length);
    const Frame frame = frameOf(steps.length);
    for (int i = 0; i < steps.count; ++i)
        subStep(frame);
}

void CObserverCamObject::subStep(const Frame& frame)
{
    followBody();
    frame.drives.step();
    FlightSpeeds speeds = flight().speeds();
    addWalkCycle(speeds, frame);
    addShake(speeds, frame);
    const Vector3d position = nextPosition(speeds, frame);
    const Quatd orientation = nextOrientation(speeds, frame);
    if (isHeld(kSaveState))
        regulators_.saved = body_.pose();
    body_.moveTo(position, orientation);
}

FlightInputs CObserverCamObject::flight()
{
    return {inputs_, settings.inputs, settings.relativeScale, !settings.allowRoll};
}

/// A body that a regulator lets go of coasts with the speed that it has.
void CObserverCamObject::switchRegulators(double h)
{
    Regulators& r = regulators_;
    const bool transl = isHeld(kTranslRegulator);
    const bool orient = isHeld(kOrientRegulator);
    const bool antiRoll = isHeld(kAntiRoll);
    if (r.translActive && !transl)
        flight().launchLinear(body_, h);
    if ((r.orientActive && !orient) || (r.antiRollActive && !antiRoll))
        flight().launchAngular(body_, h);
    r.translActive = transl;
    r.orientActive = orient;
    r.antiRollActive = antiRoll;
}

/// The memory of a regulator at rest is where the body is.
void CObserverCamObject::followBody()
{
    Regulators& r = regulators_;
    if (!r.translActive)
        r.memory.translation = body_.pose().translation;
    if (!r.orientActive)
        r.memory.rotation = body_.pose().rotation;
    if (!r.antiRollActive)
        r.antiRollMemory = body_.pose().rotation;
}

/// The amplitude of a swing: the input's while it is held, and what is left of it afterwards.
double CObserverCamObject::faded(Input input, double& amplitude, const Response& fadeOut)
{
    const Regulators& r = regulators_;
    const bool regulated = r.translActive || r.orientActive || r.antiRollActive;
    if (isHeld(input) || regulated)
        amplitude = inputs_[input].output;
    else
        fadeOut.step(amplitude, 0.0);
    return amplitude;
}

void CObserverCamObject::addWalkCycle(FlightSpeeds& speeds, const Frame& frame)
{
    walkPhase_ = wrapTurn(walkPhase_ + frame.walkTurn);
    const double amplitude = faded(kWalkCycle, walkAmplitude_, frame.walkFadeOut);
    if (amplitude != 0.0 && !regulators_.antiRollActive) // which holds the orientation alone
        speeds.pitchUp += amplitude * std::sin(walkPhase_);
}

/// Random turns, and a slow pull back, so that the picture shakes about where the camera is held
/// instead of wandering off.
void CObserverCamObject::addShake(FlightSpeeds& speeds, const Frame& frame)
{
    constexpr double kPullBack = 2.0; // [1/s]
    const double amplitude = faded(kShaker, shakeAmplitude_, frame.shakeFadeOut) * frame.shakeScale;
    Random random(random_);
    Vector3d rate; // about right, up and back
    if (frame.level)
        rate = {fineDraw(random), fineDraw(random), 0.0};
    else
        rate = {coarseDraw(random), coarseDraw(random), coarseDraw(random)};
    random_ = random.state();
    if (regulators_.antiRollActive) {
        shake_ = {};
        return;
    }
    rate = rate * amplitude - shake_ * std::min(kPullBack, 1.0 / frame.h);
    shake_ += rate * frame.h;
    speeds.pitchUp += rate.x;
    speeds.yawRight -= rate.y;
    speeds.rollRight -= rate.z;
}

Quatd CObserverCamObject::nextOrientation(const FlightSpeeds& speeds, const Frame& frame)
{
    Regulators& r = regulators_;
    Quatd orientation = body_.pose().rotation;
    if (r.orientActive) {
        frame.orient.step(r.memory.rotation, r.saved.rotation);
        frame.orient.step(orientation, r.memory.rotation);
    }
    if (r.antiRollActive) {
        frame.antiRoll.step(r.antiRollMemory, antiRollTarget(orientation));
        frame.antiRoll.step(orientation, r.antiRollMemory);
        return orientation;
    }
    return turned(orientation, speeds, frame.level, frame.h);
}

Vector3d CObserverCamObject::nextPosition(const FlightSpeeds& speeds, const Frame& frame)
{
    Regulators& r = regulators_;
    const QTransformd& pose = body_.pose();
    Vector3d position = pose.translation;
    if (r.translActive) {
        frame.transl.step(r.memory.translation, r.saved.translation);
        frame.transl.step(position, r.memory.translation);
    }
    return position + flightVelocity(pose.rotation, speeds, frame.level) * frame.h;
}

} // namespace tvw::rgs::addon
