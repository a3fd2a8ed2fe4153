#include "util/ppmatrix.h"

namespace tvw {

void PPMatrix::symmetrise()
{
    assert(rows_ == columns_);
    forEach([&](int i, int j) {
        if (j < i) {
            e_[i][j] = e_[j][i] = (e_[i][j] + e_[j][i]) / 2;
        }
    });
    symmetric_ = true;
}

PPMatrix& PPMatrix::operator*=(double s)
{
    forEach([&](int i, int j) { e_[i][j] *= s; });
    return *this;
}

PPMatrix& PPMatrix::addScaled(const PPMatrix& b, double factor)
{
    assert(rows_ == b.rows_ && columns_ == b.columns_);
    if (b.diagonal_) {
        for (int i = 0; i < rows_; ++i) {
            e_[i][i] += factor * b.e_[i][i];
        }
        return *this; // what was known about this matrix still holds
    }
    forEach([&](int i, int j) { e_[i][j] += factor * b.e_[i][j]; });
    diagonal_ = false;
    symmetric_ = symmetric_ && b.symmetric_;
    return *this;
}

PPMatrix operator*(const PPMatrix& a, const PPMatrix& b)
{
    assert(a.columns_ == b.rows_);
    PPMatrix out(a.rows_, b.columns_);
    out.diagonal_ = out.symmetric_ = a.diagonal_ && b.diagonal_;
    if (a.diagonal_) {
        out.forEach([&](int i, int j) { out.e_[i][j] = a.e_[i][i] * b.e_[i][j]; });
    } else if (b.diagonal_) {
        out.forEach([&](int i, int j) { out.e_[i][j] = a.e_[i][j] * b.e_[j][j]; });
    } else {
        matrix::product(out, a, b);
    }
    return out;
}

PPMatrix PPMatrix::transposed() const
{
    PPMatrix out(columns_, rows_);
    out.diagonal_ = diagonal_;
    out.symmetric_ = symmetric_;
    forEach([&](int i, int j) { out.e_[j][i] = e_[i][j]; });
    return out;
}

PPMatrix PPMatrix::selfProduct() const
{
    PPMatrix out(columns_, columns_);
    out.diagonal_ = diagonal_;
    matrix::symmetricProduct(out, *this, *this);
    return out;
}

PPMatrix PPMatrix::quadraticForm(const PPMatrix& B) const
{
    assert(B.rows_ == rows_ && B.columns_ == rows_);
    const PPMatrix right = B * *this;
    PPMatrix out(columns_, columns_);
    out.diagonal_ = diagonal_ && B.diagonal_;
    matrix::symmetricProduct(out, *this, right);
    return out;
}

bool PPMatrix::solveSymmetric(PPMatrix& X) const
{
    assert(rows_ == columns_ && X.rows_ == rows_);
    PPMatrix factors = *this;
    if (!matrix::factoriseLdl(factors)) {
        return false;
    }
    X.forgetShape();
    matrix::solveLdl(factors, X);
    return true;
}

bool PPMatrix::solve(PPMatrix& X) const
{
    assert(rows_ == columns_ && X.rows_ == rows_);
    PPMatrix left = *this;
    PPMatrix right = X;
    if (!matrix::solveGeneral(left, right)) {
        return false;
    }
    right.forgetShape();
    X = right;
    return true;
}

PPMatrix PPMatrix::inverseOfDiagonal() const
{
    assert(diagonal_);
    PPMatrix out(rows_, rows_);
    for (int i = 0; i < rows_; ++i) {
        out.e_[i][i] = 1.0 / e_[i][i];
    }
    return out;
}

void PPMatrix::copyInto(PPMatrix& target, int row, int column) const
{
    assert(row >= 1 && row + rows_ - 1 <= target.rows_);
    assert(column >= 1 && column + columns_ - 1 <= target.columns_);
    target.forgetShape();
    forEach([&](int i, int j) { target.e_[row - 1 + i][column - 1 + j] = e_[i][j]; });
}

double PPMatrix::euclideanNorm() const
{
    double sum = 0.0;
    forEach([&](int i, int j) { sum += e_[i][j] * e_[i][j]; });
    return std::sqrt(sum);
}

} // namespace tvw
