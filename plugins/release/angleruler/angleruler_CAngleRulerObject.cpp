#include "plugins/release/angleruler/angleruler_CAngleRulerObject.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace angleruler;

CAngleRulerObject::CAngleRulerObject(const CreateParam& param)
    : RulerTool(param, kSpec, kItems, "AngleRulerDataChunk")
{
    state().stored("angle", settings.angle);
    state().stored("angleVelocity", settings.angleVelocity);
    state().stored("inLimits", settings.inLimits);
    keepFlagsAndLimits(std::array{&settings.limits});
}

double CAngleRulerObject::angleAt(double time) const
{
    const Vector3d base = translationOf(node(kBase).global(time));
    const Vector3d a = normalise(translationOf(node(kNode1).global(time)) - base);
    const Vector3d b = normalise(translationOf(node(kNode2).global(time)) - base);
    return std::atan2(length(cross(a, b)), dot(a, b)); // acos of the product, exact near 0 and pi
}

void CAngleRulerObject::measure(double time)
{
    const double dt = stepLength();
    settings.angle = angleAt(time);
    settings.angleVelocity = std::abs(settings.angle - angleAt(time - dt)) / dt;
    settings.inLimits = settings.limits.fraction(settings.angle);
}

double CAngleRulerObject::outputValue(std::size_t index)
{
    switch (index) {
    case kValue:
        return settings.angle;
    case kVelocity:
        return settings.angleVelocity;
    case kAbove:
        return settings.limits.above(settings.angle);
    case kBelow:
        return settings.limits.below(settings.angle);
    default:
        return settings.inLimits;
    }
}

} // namespace tvw::rgs::addon
