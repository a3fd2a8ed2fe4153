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

std::optional<double> CAngleRulerObject::angleAt(double time) const
{
    Matrix4 first;
    Matrix4 second;
    Matrix4 base;
    if (!node(kNode1).readGlobal(time, first) || !node(kNode2).readGlobal(time, second) ||
        !node(kBase).readGlobal(time, base))
        return std::nullopt;
    const Vector3d a = normalise(translationOf(first) - translationOf(base));
    const Vector3d b = normalise(translationOf(second) - translationOf(base));
    return std::atan2(length(cross(a, b)), dot(a, b)); // acos of the product, exact near 0 and pi
}

/// Without one of the nodes the last reading stays.
void CAngleRulerObject::measure(double time)
{
    const double dt = stepLength();
    const std::optional<double> angle = angleAt(time);
    if (!angle)
        return;
    settings.angle = *angle;
    settings.angleVelocity = std::abs(*angle - angleAt(time - dt).value_or(*angle)) / dt;
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
