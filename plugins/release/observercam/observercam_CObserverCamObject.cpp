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

void CObserverCamObject::fly(double h)
{
    releaseRegulators(h);
    follow(settings.inputs, h);
    FlightSpeeds speeds = flight().speeds();
    addWalkCycle(speeds, h);
    addShake(speeds, h);
    QTransformd next;
    next.translation = nextPosition(speeds, h);
    next.rotation = nextOrientation(speeds, h);
    if (isHeld(kSaveState))
        regulators_.saved = body_.pose();
    body_.moveTo(next);
}

FlightInputs CObserverCamObject::flight()
{
    return {inputs_, settings.inputs, settings.relativeScale, !settings.allowRoll};
}

/// A body that a regulator lets go of coasts with the speed that it has.
void CObserverCamObject::releaseRegulators(double h)
{
    Regulators& r = regulators_;
    const bool transl = isHeld(kTranslRegulator);
    const bool orient = isHeld(kOrientRegulator);
    const bool antiRoll = isHeld(kAntiRoll);
    if (r.translActive && !transl)
        flight().launchLinear(body_, h);
    if ((r.orientActive && !orient) || (r.antiRollActive && !antiRoll))
        flight().launchAngular(body_, h);
    if (!transl)
        r.memory.translation = body_.pose().translation;
    if (!orient)
        r.memory.rotation = body_.pose().rotation;
    if (!antiRoll)
        r.antiRollMemory = body_.pose().rotation;
    r.translActive = transl;
    r.orientActive = orient;
    r.antiRollActive = antiRoll;
}

/// The amplitude of a swing: the input's while it is held, and what is left of it afterwards.
double CObserverCamObject::faded(Input input, double& amplitude, double factor, double h)
{
    const Regulators& r = regulators_;
    const bool regulated = r.translActive || r.orientActive || r.antiRollActive;
    if (isHeld(input) || regulated)
        amplitude = inputs_[input].output;
    else
        response(amplitude, 0.0, std::min(factor, 1.0), h);
    return amplitude;
}

void CObserverCamObject::addWalkCycle(FlightSpeeds& speeds, double h)
{
    walkPhase_ = wrapTurn(walkPhase_ + settings.walkCycleFrequency * 2.0 * std::numbers::pi * h);
    const double amplitude = faded(kWalkCycle, walkAmplitude_, settings.walkCycleFadeOut, h);
    speeds.pitchUp += amplitude * std::sin(walkPhase_);
}

/// Random turns, and a slow pull back, so that the picture shakes about where the camera is held
/// instead of wandering off.
void CObserverCamObject::addShake(FlightSpeeds& speeds, double h)
{
    constexpr double kPullBack = 2.0; // [1/s]
    // The variance of a sum of draws falls with their length.
    const double amplitude =
        faded(kShaker, shakeAmplitude_, settings.shakerFadeOut, h) * std::sqrt(kSubStep / h);
    Random random(random_);
    Vector3d rate; // about right, up and back
    if (settings.allowRoll)
        rate = {coarseDraw(random), coarseDraw(random), coarseDraw(random)};
    else
        rate = {fineDraw(random), fineDraw(random), 0.0};
    random_ = random.state();
    if (regulators_.antiRollActive) { // which holds the orientation alone
        shake_ = {};
        return;
    }
    rate = rate * amplitude - shake_ * std::min(kPullBack, 1.0 / h);
    shake_ += rate * h;
    speeds.pitchUp += rate.x;
    speeds.yawRight -= rate.y;
    speeds.rollRight -= rate.z;
}

Quatd CObserverCamObject::nextOrientation(const FlightSpeeds& speeds, double h)
{
    Regulators& r = regulators_;
    Quatd orientation = body_.pose().rotation;
    if (r.orientActive) {
        const double factor = settings.inputs[kOrientRegulator].share();
        response(r.memory.rotation, r.saved.rotation, factor, h);
        response(orientation, r.memory.rotation, factor, h);
    }
    if (r.antiRollActive) {
        const double factor = settings.inputs[kAntiRoll].share();
        response(r.antiRollMemory, antiRollTarget(orientation), factor, h);
        response(orientation, r.antiRollMemory, factor, h);
        return orientation;
    }
    return turned(orientation, speeds, !settings.allowRoll, h);
}

Vector3d CObserverCamObject::nextPosition(const FlightSpeeds& speeds, double h)
{
    Regulators& r = regulators_;
    const QTransformd& pose = body_.pose();
    Vector3d position = pose.translation;
    if (r.translActive) {
        const double factor = settings.inputs[kTranslRegulator].share();
        response(r.memory.translation, r.saved.translation, factor, h);
        response(position, r.memory.translation, factor, h);
    }
    return position + velocityOf(speeds, flightAxes(pose.rotation, !settings.allowRoll)) * h;
}

} // namespace tvw::rgs::addon
