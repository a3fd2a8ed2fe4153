/// Keys inside a frame for what turns fast. Key frames of orientations take the short way round, so
/// that a wheel that turns by more than half a revolution between two frames would play back
/// slower, or backward.
#pragma once

#include <cmath>
#include <numbers>

namespace tvw::rgs {

inline constexpr double kLongestKeyedTurn = 0.99 * std::numbers::pi; ///< [rad]

/// angle: [rad]. Answers the same angle, 0 up to, not including, a full turn.
inline double wrapTurn(double angle) noexcept
{
    constexpr double kTurn = 2.0 * std::numbers::pi;
    if (angle >= 0.0 && angle < kTurn)
        return angle;
    const double wrapped = std::fmod(angle, kTurn);
    if (wrapped >= 0.0)
        return wrapped;
    const double lifted = wrapped + kTurn;
    return lifted < kTurn ? lifted : 0.0;
}

/// Calls key(angle, left) for each key that a turn by `increment` needs before the frame's own;
/// angle is the spin there [rad], left the share of the frame's length that is still to come,
/// falling. Both angles in rad; the number of keys is limited, since a senseless spin must end too.
template <class Key>
void forSpinKeys(double start, double increment, Key&& key)
{
    constexpr int kMostKeys = 1000;
    const double total = std::abs(increment);
    double left = total;
    double angle = start;
    for (int i = 0; i < kMostKeys && left > kLongestKeyedTurn; ++i) {
        left -= kLongestKeyedTurn;
        angle = wrapTurn(angle + std::copysign(kLongestKeyedTurn, increment));
        key(angle, left / total);
    }
}

} // namespace tvw::rgs
