/// The loops under FixedMatrix and PPMatrix, written once for both.
///
/// A matrix type offers row(i) (a pointer to its row, from 0), rows(), columns() and kMaxColumns.
/// Where rows() and columns() are constants the compiler unrolls the loops and keeps a row of the
/// result in registers. Sums always run over the inner index from 0 up, so that equal input gives
/// equal bits whatever the vector width. The result must not be one of the arguments.
#pragma once

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

namespace tvw::matrix {

/// The first `width` elements of row i of Aᵀ B. width: an int or a constant.
template <class Width, class Out, class A, class B>
[[gnu::always_inline]] inline void transposedProductRow(Out& out, const A& a, const B& b, int i,
                                                        Width width)
{
    double sum[B::kMaxColumns] = {};
    for (int k = 0; k < a.rows(); ++k) {
        const double factor = a.row(k)[i];
        const double* const from = b.row(k);
        for (int j = 0; j < width; ++j) {
            sum[j] += factor * from[j];
        }
    }
    std::copy_n(sum, static_cast<int>(width), out.row(i));
}

/// out = A B
template <class Out, class A, class B>
void product(Out& out, const A& a, const B& b)
{
    for (int i = 0; i < a.rows(); ++i) {
        double sum[B::kMaxColumns] = {};
        const double* const factors = a.row(i);
        for (int k = 0; k < a.columns(); ++k) {
            const double* const from = b.row(k);
            for (int j = 0; j < b.columns(); ++j) {
                sum[j] += factors[k] * from[j];
            }
        }
        std::copy_n(sum, b.columns(), out.row(i));
    }
}

/// out = Aᵀ B
template <class Out, class A, class B>
void transposedProduct(Out& out, const A& a, const B& b)
{
    for (int i = 0; i < a.columns(); ++i) {
        transposedProductRow(out, a, b, i, b.columns());
    }
}

/// The lower triangle of M onto the upper one.
template <class M>
void mirrorLowerTriangle(M& m)
{
    for (int i = 1; i < m.rows(); ++i) {
        for (int j = 0; j < i; ++j) {
            m.row(j)[i] = m.row(i)[j];
        }
    }
}

/// Rows are dealt with in groups of four, as wide as the group's last diagonal element.
inline constexpr int kGroup = 4;

template <int End, class Out, class A, class B>
[[gnu::always_inline]] inline void lowerGroup(Out& out, const A& a, const B& b, int first)
{
    for (int i = first; i < End; ++i) {
        transposedProductRow(out, a, b, i, std::integral_constant<int, End>{});
    }
}

/// out = Aᵀ B for a result known to be symmetric: the lower triangle, mirrored, so that rounding
/// leaves no difference between the two halves.
template <class Out, class A, class B>
void symmetricProduct(Out& out, const A& a, const B& b)
{
    if constexpr (Out::kIsFixed) {
        constexpr int n = Out::rows();
        [&]<int... G>(std::integer_sequence<int, G...>)
        {
            (lowerGroup<std::min(kGroup * (G + 1), n)>(out, a, b, kGroup * G), ...);
        }
        (std::make_integer_sequence<int, (n + kGroup - 1) / kGroup>{});
    } else {
        for (int i = 0; i < out.rows(); ++i) {
            transposedProductRow(out, a, b, i, i + 1);
        }
    }
    mirrorLowerTriangle(out);
}

/// M = L D Lᵀ in place, for a symmetric M of which the lower triangle is read: L (unit diagonal)
/// below the diagonal, D on it. False where a pivot is 0 or no number.
template <class M>
[[nodiscard]] bool factoriseLdl(M& m)
{
    const int n = m.rows();
    for (int j = 0; j < n; ++j) {
        double* const rowJ = m.row(j);
        double pivot = rowJ[j];
        for (int k = 0; k < j; ++k) {
            pivot -= rowJ[k] * rowJ[k] * m.row(k)[k];
        }
        if (pivot == 0.0 || !std::isfinite(pivot)) {
            return false;
        }
        rowJ[j] = pivot;
        for (int i = j + 1; i < n; ++i) {
            double* const rowI = m.row(i);
            double sum = rowI[j];
            for (int k = 0; k < j; ++k) {
                sum -= rowI[k] * rowJ[k] * m.row(k)[k];
            }
            rowI[j] = sum / pivot;
        }
    }
    return true;
}

/// row(to) -= factor * row(from)
template <class X>
[[gnu::always_inline]] inline void subtractRow(X& x, int to, double factor, int from)
{
    for (int j = 0; j < x.columns(); ++j) {
        x.row(to)[j] -= factor * x.row(from)[j];
    }
}

/// X := M⁻¹ X for an M from factoriseLdl.
template <class M, class X>
void solveLdl(const M& m, X& x)
{
    const int n = m.rows();
    for (int i = 1; i < n; ++i) {
        for (int k = 0; k < i; ++k) {
            subtractRow(x, i, m.row(i)[k], k);
        }
    }
    for (int i = 0; i < n; ++i) {
        const double reciprocal = 1.0 / m.row(i)[i];
        for (int j = 0; j < x.columns(); ++j) {
            x.row(i)[j] *= reciprocal;
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int k = i + 1; k < n; ++k) {
            subtractRow(x, i, m.row(k)[i], k);
        }
    }
}

/// X := M⁻¹ X by Gauss' elimination with the largest pivot of the column; M is used up. False where
/// M is singular: X is then of no use.
template <class M, class X>
[[nodiscard]] bool solveGeneral(M& m, X& x)
{
    const int n = m.rows();
    const auto swapRows = [](auto& matrix, int a, int b) {
        std::swap_ranges(matrix.row(a), matrix.row(a) + matrix.columns(), matrix.row(b));
    };
    for (int c = 0; c < n; ++c) {
        int best = c;
        for (int i = c + 1; i < n; ++i) {
            best = std::abs(m.row(i)[c]) > std::abs(m.row(best)[c]) ? i : best;
        }
        if (m.row(best)[c] == 0.0 || !std::isfinite(m.row(best)[c])) {
            return false;
        }
        if (best != c) {
            swapRows(m, c, best);
            swapRows(x, c, best);
        }
        for (int i = c + 1; i < n; ++i) {
            const double factor = m.row(i)[c] / m.row(c)[c];
            subtractRow(m, i, factor, c);
            subtractRow(x, i, factor, c);
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int k = i + 1; k < n; ++k) {
            subtractRow(x, i, m.row(i)[k], k);
        }
        for (int j = 0; j < x.columns(); ++j) {
            x.row(i)[j] /= m.row(i)[i];
        }
    }
    return true;
}

/// Sum of the absolute values of the lower triangle with the diagonal.
template <class M>
[[nodiscard]] double sumNorm(const M& m)
{
    double sum = 0.0;
    for (int i = 0; i < m.rows(); ++i) {
        const int width = std::min(i + 1, static_cast<int>(m.columns()));
        for (int j = 0; j < width; ++j) {
            sum += std::abs(m.row(i)[j]);
        }
    }
    return sum;
}

} // namespace tvw::matrix
