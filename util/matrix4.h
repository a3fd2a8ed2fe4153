/// 4 by 4 matrices: poses with scale, as nodes have them.
///
/// Element 4 c + r is row r of column c. Vectors are columns, so that in A * B the factor B acts
/// first (quaternions are written the other way round). Elements 12 to 14 are the translation,
/// element 15 is 1 for an affine matrix. The images of the three axes are elements 0-2, 4-6 and
/// 8-10 (`axis`); a scale is folded into their lengths. Shear is not expected.
#pragma once

#include "util/quat.h"
#include "util/vector3.h"

#include <cmath>

namespace tvw {

struct Matrix4
{
    double m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    [[nodiscard]] constexpr double& operator[](int i) noexcept { return m[i]; }
    [[nodiscard]] constexpr double operator[](int i) const noexcept { return m[i]; }
    [[nodiscard]] constexpr double& at(int row, int column) noexcept { return m[4 * column + row]; }
    [[nodiscard]] constexpr double at(int row, int column) const noexcept
    {
        return m[4 * column + row];
    }

    /// The image of axis c (0 x, 1 y, 2 z), with its scale: elements 4 c to 4 c + 2. axis(3) is
    /// the translation.
    [[nodiscard]] constexpr Vector3d axis(int c) const noexcept
    {
        return {m[4 * c], m[4 * c + 1], m[4 * c + 2]};
    }
    constexpr void setAxis(int c, const Vector3d& v) noexcept
    {
        m[4 * c] = v.x;
        m[4 * c + 1] = v.y;
        m[4 * c + 2] = v.z;
    }

    [[nodiscard]] friend constexpr bool operator==(const Matrix4& a, const Matrix4& b) noexcept
    {
        for (int i = 0; i < 16; ++i) {
            if (a.m[i] != b.m[i]) {
                return false;
            }
        }
        return true;
    }
};

/// The ordinary matrix product: B acts first.
[[nodiscard]] constexpr Matrix4 operator*(const Matrix4& A, const Matrix4& B) noexcept
{
    Matrix4 out;
    for (int c = 0; c < 4; ++c) {
        for (int r = 0; r < 4; ++r) {
            out.m[4 * c + r] = A.m[r] * B.m[4 * c] + A.m[4 + r] * B.m[4 * c + 1] +
                               A.m[8 + r] * B.m[4 * c + 2] + A.m[12 + r] * B.m[4 * c + 3];
        }
    }
    return out;
}

/// M applied to the point v, divided by the fourth coordinate; one of exactly 0 divides nothing.
[[nodiscard]] constexpr Vector3d transformPoint(const Matrix4& M, const Vector3d& v) noexcept
{
    const double* m = M.m;
    const Vector3d p{m[0] * v.x + m[4] * v.y + m[8] * v.z + m[12],
                     m[1] * v.x + m[5] * v.y + m[9] * v.z + m[13],
                     m[2] * v.x + m[6] * v.y + m[10] * v.z + m[14]};
    const double w = m[3] * v.x + m[7] * v.y + m[11] * v.z + m[15];
    return w == 0.0 || w == 1.0 ? p : p / w;
}

/// The first three columns applied to v: a direction, which no translation moves.
[[nodiscard]] constexpr Vector3d transformDirection(const Matrix4& M, const Vector3d& v) noexcept
{
    const double* m = M.m;
    return {m[0] * v.x + m[4] * v.y + m[8] * v.z, m[1] * v.x + m[5] * v.y + m[9] * v.z,
            m[2] * v.x + m[6] * v.y + m[10] * v.z};
}

/// The inverse by cofactors (2 by 2 minors of the column pairs, Laplace's expansion). A determinant
/// of exactly 0 gives the matrix of sixteen zeros.
[[nodiscard]] constexpr Matrix4 inverse(const Matrix4& M) noexcept
{
    const double* a = M.m;
    // Minors of columns 0 and 1, then of columns 2 and 3, for each pair of rows.
    const double s01 = a[0] * a[5] - a[4] * a[1];
    const double s02 = a[0] * a[6] - a[4] * a[2];
    const double s03 = a[0] * a[7] - a[4] * a[3];
    const double s12 = a[1] * a[6] - a[5] * a[2];
    const double s13 = a[1] * a[7] - a[5] * a[3];
    const double s23 = a[2] * a[7] - a[6] * a[3];
    const double c01 = a[8] * a[13] - a[12] * a[9];
    const double c02 = a[8] * a[14] - a[12] * a[10];
    const double c03 = a[8] * a[15] - a[12] * a[11];
    const double c12 = a[9] * a[14] - a[13] * a[10];
    const double c13 = a[9] * a[15] - a[13] * a[11];
    const double c23 = a[10] * a[15] - a[14] * a[11];
    const double det = s01 * c23 - s02 * c13 + s03 * c12 + s12 * c03 - s13 * c02 + s23 * c01;
    Matrix4 out;
    if (det == 0.0) {
        out.m[0] = out.m[5] = out.m[10] = out.m[15] = 0.0;
        return out;
    }
    const double cofactors[16] = {
        a[5] * c23 - a[6] * c13 + a[7] * c12,       -(a[1] * c23 - a[2] * c13 + a[3] * c12),
        a[13] * s23 - a[14] * s13 + a[15] * s12,    -(a[9] * s23 - a[10] * s13 + a[11] * s12),
        -(a[4] * c23 - a[6] * c03 + a[7] * c02),    a[0] * c23 - a[2] * c03 + a[3] * c02,
        -(a[12] * s23 - a[14] * s03 + a[15] * s02), a[8] * s23 - a[10] * s03 + a[11] * s02,
        a[4] * c13 - a[5] * c03 + a[7] * c01,       -(a[0] * c13 - a[1] * c03 + a[3] * c01),
        a[12] * s13 - a[13] * s03 + a[15] * s01,    -(a[8] * s13 - a[9] * s03 + a[11] * s01),
        -(a[4] * c12 - a[5] * c02 + a[6] * c01),    a[0] * c12 - a[1] * c02 + a[2] * c01,
        -(a[12] * s12 - a[13] * s02 + a[14] * s01), a[8] * s12 - a[9] * s02 + a[10] * s01};
    for (int i = 0; i < 16; ++i) {
        out.m[i] = cofactors[i] / det;
    }
    return out;
}

[[nodiscard]] constexpr Vector3d translationOf(const Matrix4& M) noexcept
{
    return M.axis(3);
}

constexpr void setTranslation(Matrix4& M, const Vector3d& t) noexcept
{
    M.setAxis(3, t);
}

/// The lengths of the images of the three axes.
[[nodiscard]] inline Vector3d scaleOf(const Matrix4& M) noexcept
{
    return {length(M.axis(0)), length(M.axis(1)), length(M.axis(2))};
}

/// M with the images of its axes multiplied by s: puts back the scale that toTransform drops.
[[nodiscard]] constexpr Matrix4 scaled(const Matrix4& M, const Vector3d& s) noexcept
{
    Matrix4 out = M;
    for (int c = 0; c < 3; ++c) {
        out.setAxis(c, M.axis(c) * s[c]);
    }
    return out;
}

/// M with the image of each axis divided by its length; one of length 0 stays as it is.
[[nodiscard]] inline Matrix4 orthonormalise(const Matrix4& M) noexcept
{
    Matrix4 out = M;
    for (int c = 0; c < 3; ++c) {
        const double len = length(M.axis(c));
        if (len != 0.0) {
            out.setAxis(c, M.axis(c) / len);
        }
    }
    return out;
}

/// The rotation of column vectors by q v q*. The diagonal is written so that a q that isn't of unit
/// length scales the result by its squared length.
[[nodiscard]] constexpr Matrix4 toMatrix(const Quatd& q) noexcept
{
    const double xx = q.x * q.x;
    const double yy = q.y * q.y;
    const double zz = q.z * q.z;
    const double ww = q.w * q.w;
    Matrix4 out;
    out.m[0] = xx - yy - zz + ww;
    out.m[1] = 2 * (q.x * q.y + q.z * q.w);
    out.m[2] = 2 * (q.x * q.z - q.y * q.w);
    out.m[4] = 2 * (q.x * q.y - q.z * q.w);
    out.m[5] = yy - xx - zz + ww;
    out.m[6] = 2 * (q.y * q.z + q.x * q.w);
    out.m[8] = 2 * (q.x * q.z + q.y * q.w);
    out.m[9] = 2 * (q.y * q.z - q.x * q.w);
    out.m[10] = zz - xx - yy + ww;
    return out;
}

/// The orientation of M, whatever its scale, with w >= 0 (the usual extraction from the largest
/// component; an axis of length 0 counts as (0, 1, 0)).
[[nodiscard]] inline Quatd toQuat(const Matrix4& M) noexcept
{
    const Vector3d X = normalise(M.axis(0));
    const Vector3d Y = normalise(M.axis(1));
    const Vector3d Z = normalise(M.axis(2));
    const double tw = std::abs(1 + X.x + Y.y + Z.z);
    const double tx = std::abs(1 + X.x - Y.y - Z.z);
    const double ty = std::abs(1 - X.x + Y.y - Z.z);
    const double tz = std::abs(1 - X.x - Y.y + Z.z);
    Quatd q;
    if (tw >= tx && tw >= ty && tw >= tz) {
        const double s = 2 * std::sqrt(tw);
        q = {(Y.z - Z.y) / s, (Z.x - X.z) / s, (X.y - Y.x) / s, s / 4};
    } else if (tx >= ty && tx >= tz) {
        const double s = 2 * std::sqrt(tx);
        q = {s / 4, (X.y + Y.x) / s, (Z.x + X.z) / s, (Y.z - Z.y) / s};
    } else if (tz > ty) {
        const double s = 2 * std::sqrt(tz);
        q = {(Z.x + X.z) / s, (Y.z + Z.y) / s, s / 4, (X.y - Y.x) / s};
    } else {
        const double s = 2 * std::sqrt(ty);
        q = {(X.y + Y.x) / s, s / 4, (Y.z + Z.y) / s, (Z.x - X.z) / s};
    }
    return upperHemisphere(normalise(q));
}

/// Rodrigues' rotation matrix. angle [degrees]; the axis must be of unit length.
[[nodiscard]] inline Matrix4 rotationMatrix(double angleDegrees, double axisX, double axisY,
                                            double axisZ) noexcept
{
    const double angle = angleDegrees * 0.017453292519943295;
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    const double k = 1 - c;
    Matrix4 out;
    out.m[0] = axisX * axisX * k + c;
    out.m[1] = axisX * axisY * k + axisZ * s;
    out.m[2] = axisX * axisZ * k - axisY * s;
    out.m[4] = axisX * axisY * k - axisZ * s;
    out.m[5] = axisY * axisY * k + c;
    out.m[6] = axisY * axisZ * k + axisX * s;
    out.m[8] = axisX * axisZ * k + axisY * s;
    out.m[9] = axisY * axisZ * k - axisX * s;
    out.m[10] = axisZ * axisZ * k + c;
    return out;
}

} // namespace tvw
