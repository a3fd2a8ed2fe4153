/// The iteration behind a linear-quadratic regulator in discrete time: x' = A x + B u, with the
/// cost xᵀ Q x + uᵀ R u per step.
#pragma once

#include "util/fixedmatrix.h"

namespace tvw {

/// S states, U inputs.
template <int S, int U>
struct RiccatiModel
{
    FixedMatrix<S, S> A;
    FixedMatrix<S, U> B;
    double q[S] = {}; ///< diagonal of Q, 0 and up
    double r[U] = {}; ///< diagonal of R, above 0
};

namespace detail {

/// PB = P B and W = (Bᵀ P B + R)⁻¹ Bᵀ P. False where the inverse does not exist.
template <int S, int U>
[[nodiscard]] bool riccatiFeedback(const RiccatiModel<S, U>& model, const FixedMatrix<S, S>& P,
                                   FixedMatrix<S, U>& PB, FixedMatrix<U, S>& W)
{
    matrix::product(PB, P, model.B);
    FixedMatrix<U, U> N;
    matrix::symmetricProduct(N, model.B, PB);
    for (int i = 0; i < U; ++i) {
        N(i, i) += model.r[i];
    }
    W = transposed(PB); // P is symmetric
    if (!matrix::factoriseLdl(N)) {
        return false;
    }
    matrix::solveLdl(N, W);
    return true;
}

} // namespace detail

/// One step of the difference equation (R. E. Kalman, 1960):
///     P := Aᵀ (P - P B (Bᵀ P B + R)⁻¹ Bᵀ P) A + Q
/// P must be symmetric and stays so to the bit: without that the rounding of one half runs away
/// from the other's. False, and P stays as it was, where the inverse does not exist.
template <int S, int U>
[[nodiscard]] bool riccatiStep(const RiccatiModel<S, U>& model, FixedMatrix<S, S>& P)
{
    FixedMatrix<S, U> PB;
    FixedMatrix<U, S> W;
    if (!detail::riccatiFeedback(model, P, PB, W)) {
        return false;
    }
    FixedMatrix<S, S> reduced;
    matrix::product(reduced, PB, W);
    for (int i = 0; i < S; ++i) {
        for (int j = 0; j < S; ++j) {
            reduced(i, j) = P(i, j) - reduced(i, j);
        }
    }
    FixedMatrix<S, S> moved;
    matrix::product(moved, reduced, model.A);
    matrix::symmetricProduct(P, model.A, moved);
    for (int i = 0; i < S; ++i) {
        P(i, i) += model.q[i];
    }
    return true;
}

/// The gain K = (Bᵀ P B + R)⁻¹ Bᵀ P A of the feedback u = -K x. False, and K stays as it was, where
/// the inverse does not exist.
template <int S, int U>
[[nodiscard]] bool riccatiGain(const RiccatiModel<S, U>& model, const FixedMatrix<S, S>& P,
                               FixedMatrix<U, S>& K)
{
    FixedMatrix<S, U> PB;
    FixedMatrix<U, S> W;
    if (!detail::riccatiFeedback(model, P, PB, W)) {
        return false;
    }
    matrix::product(K, W, model.A);
    return true;
}

} // namespace tvw
