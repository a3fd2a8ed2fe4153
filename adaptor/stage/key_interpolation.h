/// What lies between two keys. f runs from 0 at the first key to 1 at the second.
#pragma once

#include "util/matrix4.h"

namespace tvw::rgs::stage {

[[nodiscard]] constexpr double interpolate(double a, double b, double f) noexcept
{
    return a + f * (b - a);
}

namespace detail {

/// The parts of a pose that change on their own between two keys.
struct PoseParts
{
    Quatd rotation;
    Vector3d scale; ///< lengths of the axes' images; x is negative in a mirrored pose
};

[[nodiscard]] inline PoseParts partsOf(Matrix4 pose) noexcept
{
    Vector3d scale = scaleOf(pose);
    if (dot(cross(pose.axis(0), pose.axis(1)), pose.axis(2)) < 0.0) {
        pose.setAxis(0, -pose.axis(0));
        scale.x = -scale.x;
    }
    return {toQuat(pose), scale};
}

} // namespace detail

/// Position and the lengths of the three axes' images change linearly, the rotation turns evenly on
/// the shorter way: a (a^-1 b)^f. Equal keys hold still, bit for bit.
[[nodiscard]] inline Matrix4 interpolate(const Matrix4& a, const Matrix4& b, double f) noexcept
{
    if (a == b)
        return a;
    const detail::PoseParts pa = detail::partsOf(a);
    const detail::PoseParts pb = detail::partsOf(b);
    const Quatd turn = multiply(conjugate(pa.rotation), pb.rotation);
    const Quatd part = fromRotationVector(toRotationVector(turn) * f);
    const Matrix4 rotation = orthonormalise(toMatrix(multiply(pa.rotation, part)));
    Matrix4 out = scaled(rotation, pa.scale + (pb.scale - pa.scale) * f);
    setTranslation(out, translationOf(a) + (translationOf(b) - translationOf(a)) * f);
    return out;
}

} // namespace tvw::rgs::stage
