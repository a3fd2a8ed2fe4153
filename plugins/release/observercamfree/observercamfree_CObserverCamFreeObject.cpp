#include "plugins/release/observercamfree/observercamfree_CObserverCamFreeObject.h"

namespace tvw::rgs::addon {

using namespace observercamfree;

CObserverCamFreeObject::CObserverCamFreeObject(const CreateParam& param)
    : FlyingCamera(param, kSpec, kItems, "ObserverCamFree", kInputTable)
{
}

FlightInputs CObserverCamFreeObject::flight()
{
    constexpr bool kLevel = true;
    return {inputs_, kSettings, settings.relativeScale, kLevel};
}

void CObserverCamFreeObject::takesOff(double h)
{
    flight().launchLinear(body_, h);
    flight().launchAngular(body_, h);
}

void CObserverCamFreeObject::fly(double h)
{
    follow(kSettings, h);
    const FlightSpeeds speeds = flight().speeds();
    const QTransformd& pose = body_.pose();
    const Vector3d velocity = velocityOf(speeds, flightAxes(pose.rotation, true));
    body_.moveTo({pose.translation + velocity * h, turned(pose.rotation, speeds, true, h)});
}

} // namespace tvw::rgs::addon
