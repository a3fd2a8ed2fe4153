#include "plugins/release/scaleruler/scaleruler_CScaleRulerObject.h"

namespace tvw::rgs::addon {

using namespace scaleruler;

CScaleRulerObject::CScaleRulerObject(const CreateParam& param)
    : RulerTool(param, kSpec, kItems, "ScaleRulerDataChunk")
{
    state().stored("scale", settings.scale);
    state().stored("inLimits", settings.inLimits);
    keepFlagsAndLimits(std::array{&settings.limits[0], &settings.limits[1], &settings.limits[2]});
}

/// An axis of a flattened reference measures nothing: 0. Without one of the nodes the last reading
/// stays.
void CScaleRulerObject::measure(double time)
{
    Matrix4 from;
    Matrix4 to;
    if (!node(kReference).readGlobal(time, from) || !node(kScaling).readGlobal(time, to))
        return;
    const Vector3d reference = scaleOf(from);
    const Vector3d scale = scaleOf(to);
    for (int axis = 0; axis < 3; ++axis) {
        settings.scale[axis] = reference[axis] > 0.0 ? scale[axis] / reference[axis] : 0.0;
        settings.inLimits[axis] = settings.limits[axis].fraction(settings.scale[axis]);
    }
}

double CScaleRulerObject::outputValue(std::size_t index)
{
    const auto axis = static_cast<int>(index % 3);
    const double scale = settings.scale[axis];
    switch (index / 3) {
    case kValue:
        return scale;
    case kAbove:
        return settings.limits[axis].above(scale);
    case kBelow:
        return settings.limits[axis].below(scale);
    default:
        return settings.inLimits[axis];
    }
}

} // namespace tvw::rgs::addon
