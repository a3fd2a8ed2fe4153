#include "plugins/release/observercamfree/observercamfree_CObserverCamFreeObject.h"

namespace tvw::rgs::addon {

using namespace observercamfree;

namespace {
constexpr bool kLevel = true;
}

CObserverCamFreeObject::CObserverCamFreeObject(const CreateParam& param)
    : FlyingCamera(param, kSpec, kItems, "ObserverCamFree", kInputTable)
{
}

FlightInputs CObserverCamFreeObject::flight()
{
    return {inputs_, kSettings, settings.relativeScale, kLevel};
}

void CObserverCamFreeObject::takesOff(double h)
{
    flight().launchLinear(body_, h);
    flight().launchAngular(body_, h);
}

void CObserverCamFreeObject::fly(const SubSteps& steps)
{
    const Drives drives(inputs_, kSettings, steps.length);
    for (int i = 0; i < steps.count; ++i) {
        drives.step();
        const FlightSpeeds speeds = flight().speeds();
        const QTransformd& pose = body_.pose();
        const Vector3d velocity = flightVelocity(pose.rotation, speeds, kLevel);
        body_.moveTo(pose.translation + velocity * steps.length,
                     turned(pose.rotation, speeds, kLevel, steps.length));
    }
}

} // namespace tvw::rgs::addon
