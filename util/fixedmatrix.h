/// Dense matrices whose size the compiler knows: what a controller's inner loop reckons with.
#pragma once

#include "util/matrixkernels.h"

namespace tvw {

/// R rows of C columns, row by row; elements are addressed from 0. A new one is all zero.
template <int R, int C>
struct FixedMatrix
{
    static_assert(R > 0 && C > 0);
    static constexpr bool kIsFixed = true;
    static constexpr int kMaxColumns = C;

    alignas(16) double e[R][C] = {};

    [[nodiscard]] static constexpr int rows() noexcept { return R; }
    [[nodiscard]] static constexpr int columns() noexcept { return C; }
    [[nodiscard]] constexpr double* row(int i) noexcept { return e[i]; }
    [[nodiscard]] constexpr const double* row(int i) const noexcept { return e[i]; }
    [[nodiscard]] constexpr double& operator()(int r, int c) noexcept { return e[r][c]; }
    [[nodiscard]] constexpr double operator()(int r, int c) const noexcept { return e[r][c]; }

    [[nodiscard]] static constexpr FixedMatrix identity() noexcept requires(R == C)
    {
        FixedMatrix out;
        for (int i = 0; i < R; ++i) {
            out.e[i][i] = 1.0;
        }
        return out;
    }

    constexpr FixedMatrix& operator+=(const FixedMatrix& b) noexcept
    {
        for (int i = 0; i < R; ++i) {
            for (int j = 0; j < C; ++j) {
                e[i][j] += b.e[i][j];
            }
        }
        return *this;
    }
    constexpr FixedMatrix& operator-=(const FixedMatrix& b) noexcept
    {
        for (int i = 0; i < R; ++i) {
            for (int j = 0; j < C; ++j) {
                e[i][j] -= b.e[i][j];
            }
        }
        return *this;
    }
    [[nodiscard]] friend constexpr FixedMatrix operator+(FixedMatrix a, const FixedMatrix& b)
    {
        return a += b;
    }
    [[nodiscard]] friend constexpr FixedMatrix operator-(FixedMatrix a, const FixedMatrix& b)
    {
        return a -= b;
    }
};

template <int R, int K, int C>
[[nodiscard]] FixedMatrix<R, C> operator*(const FixedMatrix<R, K>& a, const FixedMatrix<K, C>& b)
{
    FixedMatrix<R, C> out;
    matrix::product(out, a, b);
    return out;
}

template <int R, int C>
[[nodiscard]] constexpr FixedMatrix<C, R> transposed(const FixedMatrix<R, C>& a)
{
    FixedMatrix<C, R> out;
    for (int i = 0; i < R; ++i) {
        for (int j = 0; j < C; ++j) {
            out.e[j][i] = a.e[i][j];
        }
    }
    return out;
}

} // namespace tvw
