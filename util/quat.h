/// Orientations as quaternions, the scalar last.
///
/// The product is written in the order in which the rotations act: a * b turns by a first and by b
/// after it, so that a chain from a part to the world reads part * parent * grandparent. In
/// Hamilton's notation it is b a. (Matrix4's product is the other way round.)
#pragma once

#include "util/vector3.h"

#include <algorithm>
#include <cmath>

namespace tvw {

template <class T>
struct Quat
{
    T x{};
    T y{};
    T z{};
    T w{1};

    [[nodiscard]] friend constexpr Quat operator-(const Quat& q) noexcept
    {
        return {-q.x, -q.y, -q.z, -q.w};
    }
    [[nodiscard]] friend constexpr bool operator==(const Quat& a, const Quat& b) noexcept
    {
        return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
    }
};

using Quatd = Quat<double>;
static_assert(sizeof(Quatd) == 32);

/// Scalar product of the four components: the squared length where a is b.
template <class T>
[[nodiscard]] constexpr T dot(const Quat<T>& a, const Quat<T>& b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

/// Sum of the squared differences of the four components.
template <class T>
[[nodiscard]] constexpr T distanceSquared(const Quat<T>& a, const Quat<T>& b) noexcept
{
    const Quat<T> d{a.x - b.x, a.y - b.y, a.z - b.z, a.w - b.w};
    return dot(d, d);
}

/// q at length 1, its sign kept. A q of length 0 gives the identity.
template <class T>
[[nodiscard]] Quat<T> normalise(const Quat<T>& q) noexcept
{
    const T squared = dot(q, q);
    if (squared == T(0)) {
        return {};
    }
    const T f = T(1) / std::sqrt(squared);
    return {q.x * f, q.y * f, q.z * f, q.w * f};
}

/// The inverse of a unit quaternion.
template <class T>
[[nodiscard]] constexpr Quat<T> conjugate(const Quat<T>& q) noexcept
{
    return {-q.x, -q.y, -q.z, q.w};
}

/// The rotation that applies a first and then b.
template <class T>
[[nodiscard]] constexpr Quat<T> multiply(const Quat<T>& a, const Quat<T>& b) noexcept
{
    return {a.x * b.w + a.w * b.x + a.z * b.y - a.y * b.z,
            a.y * b.w + a.w * b.y - a.z * b.x + a.x * b.z,
            a.z * b.w + a.w * b.z + a.y * b.x - a.x * b.y,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

template <class T>
[[nodiscard]] constexpr Quat<T> operator*(const Quat<T>& a, const Quat<T>& b) noexcept
{
    return multiply(a, b);
}

/// Of the two quaternions of one rotation the one with w >= 0.
template <class T>
[[nodiscard]] constexpr Quat<T> upperHemisphere(const Quat<T>& q) noexcept
{
    return q.w < T(0) ? -q : q;
}

namespace detail {
/// Below this a length counts as this, so that a degenerate part of a rotation stays finite.
inline constexpr double kLeastQuatLength = 1e-12;
} // namespace detail

/// The part of q that turns about the second axis alone. Where q has no such part (a half turn
/// about an axis across y) the answer is all zero or far from unit length, never infinite.
template <class T>
[[nodiscard]] Quat<T> yawOnly(const Quat<T>& q) noexcept
{
    const T len = std::max(std::sqrt(q.y * q.y + q.w * q.w), T(detail::kLeastQuatLength));
    return {T(0), q.y / len, T(0), q.w / len};
}

/// q with the rotation about the third axis taken out; the same guard as yawOnly.
template <class T>
[[nodiscard]] Quat<T> removeRoll(const Quat<T>& q) noexcept
{
    const T len =
        std::max(std::sqrt(q.x * q.x + q.y * q.y + q.w * q.w), T(detail::kLeastQuatLength));
    return {q.x / len, q.y / len, T(0), q.w / len};
}

/// The orientation that q has with its roll gone and its heading kept.
template <class T>
[[nodiscard]] Quat<T> antiRollTarget(const Quat<T>& q) noexcept
{
    const Quat<T> yaw = yawOnly(q);
    return multiply(removeRoll(multiply(q, conjugate(yaw))), yaw);
}

/// The rotation by |r| [rad] about r; r = 0 gives the identity.
template <class T>
[[nodiscard]] Quat<T> fromRotationVector(const Vector3<T>& r) noexcept
{
    const T half = length(r) / T(2);
    const Vector3<T> v = normalise(r) * std::sin(half);
    return {v.x, v.y, v.z, std::cos(half)};
}

/// The axis of the unit quaternion q times its angle [rad], 0 to pi: q and -q answer alike.
template <class T>
[[nodiscard]] Vector3<T> toRotationVector(const Quat<T>& q) noexcept
{
    const Quat<T> u = upperHemisphere(q);
    const T angle = T(2) * std::acos(std::clamp(u.w, T(-1), T(1)));
    if (angle == T(0)) {
        return {};
    }
    return Vector3<T>{u.x, u.y, u.z} * (angle / std::sin(angle / T(2)));
}

/// v turned by q, the same as the rotation matrix of q applied to v: a q that isn't of unit length
/// scales by its squared length.
template <class T>
[[nodiscard]] constexpr Vector3<T> rotate(const Quat<T>& q, const Vector3<T>& v) noexcept
{
    const T xx = q.x * q.x;
    const T yy = q.y * q.y;
    const T zz = q.z * q.z;
    const T ww = q.w * q.w;
    const T xy = q.x * q.y;
    const T xz = q.x * q.z;
    const T yz = q.y * q.z;
    const T xw = q.x * q.w;
    const T yw = q.y * q.w;
    const T zw = q.z * q.w;
    return {(xx - yy - zz + ww) * v.x + T(2) * (xy - zw) * v.y + T(2) * (xz + yw) * v.z,
            T(2) * (xy + zw) * v.x + (yy - xx - zz + ww) * v.y + T(2) * (yz - xw) * v.z,
            T(2) * (xz - yw) * v.x + T(2) * (yz + xw) * v.y + (zz - xx - yy + ww) * v.z};
}

} // namespace tvw
