#include "plugins/common/sprung_body.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs {

namespace {

constexpr double kFlightBase = 0.003; // [s], time to which the neutralizer is counted

} // namespace

bool moveVerlet(SprungAxis& axis, double oldAcceleration, double limit, double h)
{
    const double wanted = axis.value + axis.rate * h + oldAcceleration / 2 * h * h;
    axis.value = std::clamp(wanted, -limit, limit);
    return axis.value != wanted;
}

void finishVerlet(SprungAxis& axis, double oldAcceleration, double acceleration, bool atLimit,
                  double h)
{
    axis.rate += oldAcceleration / 2 * h + acceleration / 2 * h;
    if (atLimit)
        axis.rate = 0.0;
}

void settleInFlight(SprungAxis& axis, double neutralizer, double h)
{
    const double share = h / kFlightBase;
    axis.value *= std::pow(neutralizer, share);
    axis.rate *= std::pow(0.5, share);
}

SpringLoad springLoad(std::span<const SprungWheel> wheels)
{
    SpringLoad load;
    for (const SprungWheel& wheel : wheels) {
        load.force += wheel.force;
        load.pitchMoment += wheel.z * wheel.force;
        load.rollMoment -= wheel.x * wheel.force;
    }
    return load;
}

Quatd attitude(double pitch, double roll)
{
    const double sx = std::sin(pitch / 2);
    const double cx = std::cos(pitch / 2);
    const double sz = std::sin(roll / 2);
    const double cz = std::cos(roll / 2);
    return {sx * cz, -sx * sz, cx * sz, cx * cz};
}

} // namespace tvw::rgs
