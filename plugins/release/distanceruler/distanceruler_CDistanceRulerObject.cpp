#include "plugins/release/distanceruler/distanceruler_CDistanceRulerObject.h"

namespace tvw::rgs::addon {

using namespace distanceruler;

CDistanceRulerObject::CDistanceRulerObject(const CreateParam& param)
    : RulerTool(param, kSpec, kItems, "DistanceRulerDataChunk")
{
    state().stored("distance", settings.distance);
    state().stored("inLimits", settings.inLimits);
    keepFlagsAndLimits(std::array{&settings.limits});
}

/// Node1's scale along Z sets the unit: twice as long an axis counts each metre twice.
/// Without one of the nodes the last reading stays.
void CDistanceRulerObject::measure(double time)
{
    Matrix4 from;
    Matrix4 to;
    if (!node(kNode1).readGlobal(time, from) || !node(kNode2).readGlobal(time, to))
        return;
    settings.distance = length(translationOf(from) - translationOf(to)) * length(from.axis(2));
    settings.inLimits = settings.limits.fraction(settings.distance);
}

double CDistanceRulerObject::outputValue(std::size_t index)
{
    switch (index) {
    case kValue:
        return settings.distance;
    case kAbove:
        return settings.limits.above(settings.distance);
    case kBelow:
        return settings.limits.below(settings.distance);
    default:
        return settings.inLimits;
    }
}

} // namespace tvw::rgs::addon
