/// Three-component vectors: positions, directions, velocities, scales.
///
/// Plain values without unit of their own; what a component means (metres, radians a second) is
/// told where the vector is used.
#pragma once

#include <cmath>

namespace tvw {

template <class T>
struct Vector3
{
    T x{};
    T y{};
    T z{};

    /// Component 0 (x), 1 (y) or 2 (z); any other index answers z.
    [[nodiscard]] constexpr T& operator[](int i) noexcept { return i == 0 ? x : i == 1 ? y : z; }
    [[nodiscard]] constexpr const T& operator[](int i) const noexcept
    {
        return i == 0 ? x : i == 1 ? y : z;
    }

    constexpr Vector3& operator+=(const Vector3& b) noexcept
    {
        x += b.x;
        y += b.y;
        z += b.z;
        return *this;
    }
    constexpr Vector3& operator-=(const Vector3& b) noexcept
    {
        x -= b.x;
        y -= b.y;
        z -= b.z;
        return *this;
    }
    constexpr Vector3& operator*=(T s) noexcept
    {
        x *= s;
        y *= s;
        z *= s;
        return *this;
    }
    constexpr Vector3& operator/=(T s) noexcept
    {
        x /= s;
        y /= s;
        z /= s;
        return *this;
    }

    [[nodiscard]] friend constexpr Vector3 operator+(Vector3 a, const Vector3& b) noexcept
    {
        return a += b;
    }
    [[nodiscard]] friend constexpr Vector3 operator-(Vector3 a, const Vector3& b) noexcept
    {
        return a -= b;
    }
    [[nodiscard]] friend constexpr Vector3 operator-(const Vector3& a) noexcept
    {
        return {-a.x, -a.y, -a.z};
    }
    [[nodiscard]] friend constexpr Vector3 operator*(Vector3 a, T s) noexcept { return a *= s; }
    [[nodiscard]] friend constexpr Vector3 operator*(T s, Vector3 a) noexcept { return a *= s; }
    [[nodiscard]] friend constexpr Vector3 operator/(Vector3 a, T s) noexcept { return a /= s; }
    [[nodiscard]] friend constexpr bool operator==(const Vector3& a, const Vector3& b) noexcept
    {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
};

using Vector3d = Vector3<double>;
static_assert(sizeof(Vector3d) == 24);

template <class T>
[[nodiscard]] constexpr T dot(const Vector3<T>& a, const Vector3<T>& b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Right-handed cross product: x cross y is z.
template <class T>
[[nodiscard]] constexpr Vector3<T> cross(const Vector3<T>& a, const Vector3<T>& b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <class T>
[[nodiscard]] constexpr T lengthSquared(const Vector3<T>& v) noexcept
{
    return dot(v, v);
}

template <class T>
[[nodiscard]] T length(const Vector3<T>& v) noexcept
{
    return std::sqrt(lengthSquared(v));
}

/// v at length 1. A v of length 0 gives (0, 1, 0): callers always get a usable direction.
template <class T>
[[nodiscard]] Vector3<T> normalise(const Vector3<T>& v) noexcept
{
    const T len = length(v);
    if (len == T(0)) {
        return {T(0), T(1), T(0)};
    }
    return v * (T(1) / len);
}

} // namespace tvw
