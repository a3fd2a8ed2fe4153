/// Dense matrices of up to 20 by 20 whose size is told at run time; they never allocate.
///
/// A controller's set-up and its oddly shaped parts use these; its inner loop, whose sizes are
/// known, uses FixedMatrix, over the same kernels.
#pragma once

#include "util/fixedmatrix.h"
#include "util/matrixkernels.h"

#include <cassert>
#include <cmath>
#include <cstdint>

namespace tvw {

/// A value of rows() by columns() elements, addressed from 1. Two flags tell what is known about
/// it, and shorten sums and products: isDiagonal(), isSymmetric(). Sizes that do not fit together
/// are the caller's mistake (asserted).
class PPMatrix
{
public:
    static constexpr int kCapacity = 20;
    static constexpr bool kIsFixed = false;
    static constexpr int kMaxColumns = kCapacity;

    /// 1 by 1, zero.
    PPMatrix() : PPMatrix(1, 1) {}
    /// All zero; rows and columns 1 to 20.
    PPMatrix(int rows, int columns)
        : rows_(rows), columns_(columns), diagonal_(rows == columns), symmetric_(rows == columns)
    {
        assert(rows >= 1 && rows <= kCapacity && columns >= 1 && columns <= kCapacity);
    }
    template <int R, int C>
    explicit PPMatrix(const FixedMatrix<R, C>& from) : PPMatrix(R, C)
    {
        static_assert(R <= kCapacity && C <= kCapacity);
        forgetShape();
        forEach([&](int i, int j) { e_[i][j] = from(i, j); });
    }
    [[nodiscard]] static PPMatrix zero(int rows, int columns) { return {rows, columns}; }
    [[nodiscard]] static PPMatrix identity(int size)
    {
        PPMatrix out(size, size);
        for (int i = 0; i < size; ++i) {
            out.e_[i][i] = 1.0;
        }
        return out;
    }

    [[nodiscard]] int rows() const noexcept { return rows_; }
    [[nodiscard]] int columns() const noexcept { return columns_; }
    [[nodiscard]] bool isDiagonal() const noexcept { return diagonal_; }
    [[nodiscard]] bool isSymmetric() const noexcept { return symmetric_; }

    /// Element of row r and column c, from 1.
    [[nodiscard]] double operator()(int r, int c) const
    {
        return e_[checked(r, rows_)][checked(c, columns_)];
    }
    /// Sets an element. One off the diagonal ends what the flags told.
    void set(int r, int c, double value)
    {
        e_[checked(r, rows_)][checked(c, columns_)] = value;
        if (r != c) {
            forgetShape();
        }
    }
    /// Averages the two halves of a square matrix, which is symmetric from then on.
    void symmetrise();

    PPMatrix& operator*=(double s);
    PPMatrix& operator+=(const PPMatrix& b) { return addScaled(b, 1.0); }
    PPMatrix& operator-=(const PPMatrix& b) { return addScaled(b, -1.0); }
    [[nodiscard]] friend PPMatrix operator*(PPMatrix a, double s) { return a *= s; }
    [[nodiscard]] friend PPMatrix operator+(PPMatrix a, const PPMatrix& b) { return a += b; }
    [[nodiscard]] friend PPMatrix operator-(PPMatrix a, const PPMatrix& b) { return a -= b; }
    friend PPMatrix operator*(const PPMatrix& a, const PPMatrix& b);

    [[nodiscard]] PPMatrix transposed() const;
    /// Aᵀ A, symmetric.
    [[nodiscard]] PPMatrix selfProduct() const;
    /// Aᵀ B A for a symmetric B; the result is symmetric.
    [[nodiscard]] PPMatrix quadraticForm(const PPMatrix& B) const;
    /// X := M⁻¹ X, M this matrix, symmetric, by L D Lᵀ. False, and X stays as it was, where a pivot
    /// is 0.
    [[nodiscard]] bool solveSymmetric(PPMatrix& X) const;
    /// X := M⁻¹ X, M this matrix, square. False, and X stays as it was, where M is singular.
    [[nodiscard]] bool solve(PPMatrix& X) const;
    /// The reciprocal of each diagonal element; this matrix must be diagonal. One of 0 gives an
    /// infinity.
    [[nodiscard]] PPMatrix inverseOfDiagonal() const;
    /// Writes this matrix into target, its element (1, 1) at (row, column).
    void copyInto(PPMatrix& target, int row, int column) const;

    /// Square root of the sum of the squares of all elements.
    [[nodiscard]] double euclideanNorm() const;
    /// Sum of the absolute values of the lower triangle with the diagonal.
    [[nodiscard]] double sumNorm() const { return matrix::sumNorm(*this); }

    /// A row from 0, for the kernels. Whoever writes through it keeps to what the flags tell.
    [[nodiscard]] double* row(int i) noexcept { return e_[i]; }
    [[nodiscard]] const double* row(int i) const noexcept { return e_[i]; }

private:
    [[nodiscard]] static int checked(int index, [[maybe_unused]] int count)
    {
        assert(index >= 1 && index <= count);
        return index - 1;
    }
    template <class F>
    void forEach(F&& visit) const
    {
        for (int i = 0; i < rows_; ++i) {
            for (int j = 0; j < columns_; ++j) {
                visit(i, j);
            }
        }
    }
    void forgetShape() noexcept { diagonal_ = symmetric_ = false; }
    PPMatrix& addScaled(const PPMatrix& b, double factor);

    std::int32_t rows_;
    std::int32_t columns_;
    bool diagonal_;
    bool symmetric_;
    double e_[kCapacity][kCapacity] = {};
};

} // namespace tvw
