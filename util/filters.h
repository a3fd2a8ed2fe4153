/// The filters with which the tools move a value towards a wanted one, and the two spring steps.
///
/// The time base of the first three is 0.04 s, a frame at 25 frames a second: a factor is the share
/// of the remaining distance that is covered in this time. A step of 0.04 s and longer is split
/// into n = 1 + truncate(dt / 0.04) sub-steps so that it does not overshoot.
///
/// dt: the run's fixed step [s], 0 and up. factor: 0 to 1 in most uses; 0 means "unfiltered", never
/// "frozen". A limit of 0 means "no limit". States are changed in place.
///
/// The quaternion forms bring the state and their own copy of the target into one hemisphere
/// before anything else.
#pragma once

#include "util/quat.h"
#include "util/vector3.h"

#include <algorithm>
#include <cmath>

namespace tvw {

namespace detail {

inline constexpr double kFilterTimeBase = 0.04; // [s]

struct FilterSteps
{
    int count;    ///< at least 1
    double share; ///< what one of them is of the time base
};

[[nodiscard]] inline FilterSteps filterSteps(double dt) noexcept
{
    constexpr double kMost = 1e6; // keeps the conversion defined for a senseless step
    const double frames = dt / kFilterTimeBase;
    const int count = 1 + static_cast<int>(std::clamp(frames, 0.0, kMost));
    return {count, frames / count};
}

/// `count` times the share k of what is left.
template <class T>
void approach(T& state, const T& target, double k, int count) noexcept
{
    for (int i = 0; i < count; ++i) {
        state += (target - state) * k;
    }
}

inline void approach(Quatd& state, const Quatd& target, double k, int count) noexcept
{
    approach(state.x, target.x, k, count);
    approach(state.y, target.y, k, count);
    approach(state.z, target.z, k, count);
    approach(state.w, target.w, k, count);
}

/// Puts both into the hemisphere w >= 0, and the state on the target's side of it.
inline void alignHemispheres(Quatd& state, Quatd& target) noexcept
{
    target = upperHemisphere(target);
    state = upperHemisphere(state);
    constexpr double kClear = 0.25; // far above what rounding can turn, up to lengths of a million
    if (dot(state, target) < kClear &&
        distanceSquared(state, target) > distanceSquared(state, -target)) {
        state = -state;
    }
}

template <class T>
void smoothingLoop(T& state, const T& target, double factor, double dt) noexcept
{
    const FilterSteps steps = filterSteps(dt);
    const double k = steps.share * factor;
    if (k >= 1.0 || factor == 0.0) {
        state = target;
        return;
    }
    approach(state, target, k, steps.count);
}

/// v shortened to the length `limit` if it is longer; a limit of 0 is none.
[[nodiscard]] inline Vector3d limitedLength(const Vector3d& v, double limit) noexcept
{
    const double len = length(v);
    return limit != 0.0 && len > limit ? v * (limit / len) : v;
}

} // namespace detail

/// The response of one factor in steps of one length: what many values or sub-steps have in common
/// is worked out once.
class Response
{
public:
    Response() = default; ///< at once
    Response(double factor, double dt) noexcept
    {
        if (factor == 0.0 || factor == 1.0) {
            return;
        }
        const detail::FilterSteps steps = detail::filterSteps(dt);
        share_ = steps.share * factor;
        count_ = steps.count;
    }

    [[nodiscard]] bool isAtOnce() const noexcept { return count_ == 0; }

    void step(double& state, double target) const noexcept { move(state, target); }
    void step(Vector3d& state, const Vector3d& target) const noexcept { move(state, target); }
    void step(Quatd& state, Quatd target) const noexcept
    {
        detail::alignHemispheres(state, target);
        move(state, target);
        state = normalise(state);
    }

private:
    template <class T>
    void move(T& state, const T& target) const noexcept
    {
        if (count_ == 1) [[likely]] { // of steps below the time base
            detail::approach(state, target, share_, 1);
        } else if (isAtOnce()) {
            state = target;
        } else {
            detail::approach(state, target, share_, count_);
        }
    }

    double share_ = 1.0; ///< of what is left, in each of `count_` rounds
    int count_ = 0;      ///< 0: at once
};

/// A factor of exactly 0 or exactly 1 reaches the target at once, whatever dt is.
inline void response(double& state, double target, double factor, double dt) noexcept
{
    Response(factor, dt).step(state, target);
}
inline void response(Vector3d& state, const Vector3d& target, double factor, double dt) noexcept
{
    Response(factor, dt).step(state, target);
}
inline void response(Quatd& state, Quatd target, double factor, double dt) noexcept
{
    Response(factor, dt).step(state, target);
}

/// As response, but it is the share of one sub-step that reaches the target at once where it is 1
/// or more; a factor of exactly 1 has no special case.
inline void smoothing(double& state, double target, double factor, double dt) noexcept
{
    detail::smoothingLoop(state, target, factor, dt);
}
inline void smoothing(Vector3d& state, const Vector3d& target, double factor, double dt) noexcept
{
    detail::smoothingLoop(state, target, factor, dt);
}
inline void smoothing(Quatd& state, Quatd target, double factor, double dt) noexcept
{
    detail::alignHemispheres(state, target);
    detail::smoothingLoop(state, target, factor, dt);
    state = normalise(state);
}

/// Smoothing of a value whose speed is limited. maxVelocity: [units of the state / s], 0 means no
/// limit. Where smoothing would jump (factor 0, or a sub-step's share of 1 and more) the limit
/// alone holds: the state moves by at most maxVelocity x dt.
inline void limitedResponse(double& state, double target, double factor, double maxVelocity,
                            double dt) noexcept
{
    if (maxVelocity != 0.0) {
        const double reach = std::abs(maxVelocity * dt);
        if (std::abs(target - state) > reach) {
            target = state + std::copysign(reach, target - state);
        }
    }
    detail::smoothingLoop(state, target, factor, dt);
}

/// A limiter of the rate of turn with a smoothing behind it. maxAngularVelocity: [rad/s], 0 means
/// no limit. The turn that is left to the target, held to maxAngularVelocity x dt, is scaled by
/// (1 - k)^n, the part that the factor leaves over: a small factor comes close to what the limit
/// allows, a factor of 0 leaves the limit alone. A sub-step's share k of 1 and more reaches the
/// target at once, as factor and limit of 0 do.
inline void limitedResponse(Quatd& state, Quatd target, double factor, double maxAngularVelocity,
                            double dt) noexcept
{
    const detail::FilterSteps steps = detail::filterSteps(dt);
    const double k = steps.share * factor;
    if (k >= 1.0 || (factor == 0.0 && maxAngularVelocity == 0.0)) {
        state = target;
        return;
    }
    state = upperHemisphere(state);
    target = upperHemisphere(target);
    const Vector3d turn = toRotationVector(multiply(target, conjugate(state)));
    double angle = length(turn);
    if (maxAngularVelocity != 0.0) {
        angle = std::min(angle, maxAngularVelocity * dt);
    }
    detail::approach(angle, 0.0, k, steps.count);
    const Quatd step = fromRotationVector(normalise(turn) * angle);
    state = normalise(upperHemisphere(multiply(step, state)));
}

/// One semi-implicit spring step. stiffness [1/s^2], 0 means "no spring": the position jumps to
/// the target and the velocity stays; damping [1/s]; maxVelocity: limit of the speed [units/s], 0
/// means none; dt is used whole.
inline void spring(Vector3d& position, Vector3d& velocity, const Vector3d& target, double stiffness,
                   double damping, double maxVelocity, double dt) noexcept
{
    if (stiffness == 0.0) {
        position = target;
        return;
    }
    position += velocity * dt;
    velocity += ((target - position) * stiffness - velocity * damping) * dt;
    velocity = detail::limitedLength(velocity, maxVelocity);
}

/// The spring of an orientation, in ten sub-steps. angularVelocity: [rad/s] in the orientation's
/// own frame; the other parameters as above, with angles for lengths.
inline void spring(Quatd& orientation, Vector3d& angularVelocity, const Quatd& target,
                   double stiffness, double damping, double maxVelocity, double dt) noexcept
{
    constexpr int kSubSteps = 10;
    if (stiffness == 0.0) {
        orientation = target;
        return;
    }
    const double h = dt / kSubSteps;
    for (int i = 0; i < kSubSteps; ++i) {
        // q' = q (w, 0) / 2 in Hamilton's notation, where the right factor is the own frame's.
        const Vector3d& w = angularVelocity;
        const Quatd rate = multiply(Quatd{w.x, w.y, w.z, 0.0}, orientation);
        Quatd& q = orientation;
        q = {q.x + rate.x * h / 2, q.y + rate.y * h / 2, q.z + rate.z * h / 2,
             q.w + rate.w * h / 2};
        if (dot(q, q) != 0.0) {
            q = normalise(q);
        }
        const Quatd error = upperHemisphere(multiply(target, conjugate(q)));
        const double angle = 2.0 * std::acos(std::clamp(error.w, -1.0, 1.0));
        Vector3d axis{error.x, error.y, error.z};
        if (angle != 0.0) {
            axis /= std::sin(angle / 2.0);
        }
        angularVelocity += (axis * (angle * stiffness) - angularVelocity * damping) * h;
        angularVelocity = detail::limitedLength(angularVelocity, maxVelocity);
    }
}

/// One step of a first-order lag from b towards a over c x d: a c x d of 1 lands on a.
[[nodiscard]] constexpr double lagStep(double a, double b, double c, double d) noexcept
{
    return (a - b) / (c * d) + b;
}

} // namespace tvw
