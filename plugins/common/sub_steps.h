/// The sub-steps of a frame: a model that is stepped finely moves alike at every frame rate.
#pragma once

#include <algorithm>

namespace tvw::rgs {

inline constexpr double kSubStep = 0.003; ///< [s]; the parameters were tuned at about this length

struct SubSteps
{
    int count;
    double length; ///< of each [s]
};

/// dt: the frame's length [s].
inline SubSteps subSteps(double dt)
{
    const int count = std::max(1, static_cast<int>(std::min(dt / kSubStep, 1e6)));
    return {count, dt / count};
}

} // namespace tvw::rgs
