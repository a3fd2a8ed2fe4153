/// Rigid transforms: a rotation and then a translation, no scale.
#pragma once

#include "util/matrix4.h"
#include "util/quat.h"
#include "util/vector3.h"

namespace tvw {

/// Seven numbers: the translation at positions 0 to 2, the quaternion at 3 to 6.
template <class T>
struct QTransform
{
    Vector3<T> translation{};
    Quat<T> rotation{};

    [[nodiscard]] friend constexpr bool operator==(const QTransform& a,
                                                   const QTransform& b) noexcept
    {
        return a.translation == b.translation && a.rotation == b.rotation;
    }
};

using QTransformd = QTransform<double>;
static_assert(sizeof(QTransformd) == 56);

[[nodiscard]] constexpr Matrix4 toMatrix(const QTransformd& t) noexcept
{
    Matrix4 out = toMatrix(t.rotation);
    setTranslation(out, t.translation);
    return out;
}

/// The rotation and translation of M. Its scale is dropped: a tool that keeps it reads scaleOf(M)
/// beforehand and puts it back with scaled().
[[nodiscard]] inline QTransformd toTransform(const Matrix4& M) noexcept
{
    return {translationOf(M), toQuat(M)};
}

} // namespace tvw
