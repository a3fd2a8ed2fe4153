#include "util/ppmatrix.h"
#include "util/riccati.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

namespace tvw {
namespace {

PPMatrix matrixOf(int rows, int columns, std::initializer_list<double> elements)
{
    PPMatrix out(rows, columns);
    int i = 0;
    for (const double e : elements) {
        out.set(i / columns + 1, i % columns + 1, e);
        ++i;
    }
    return out;
}

void expectElements(const PPMatrix& m, int rows, int columns,
                    std::initializer_list<double> elements)
{
    ASSERT_EQ(m.rows(), rows);
    ASSERT_EQ(m.columns(), columns);
    int i = 0;
    for (const double e : elements) {
        EXPECT_NEAR(m(i / columns + 1, i % columns + 1), e, 1e-14) << "element " << i;
        ++i;
    }
}

const PPMatrix kA = matrixOf(2, 3, {1, 2, 3, 4, 5, 6});

TEST(PPMatrix, productsAndSums)
{
    const PPMatrix b = matrixOf(3, 2, {1, 0, -1, 2, 0, 1});
    expectElements(kA * b, 2, 2, {-1, 7, -1, 16});
    expectElements(kA + kA * -0.5, 2, 3, {0.5, 1, 1.5, 2, 2.5, 3});
    expectElements(kA - kA, 2, 3, {0, 0, 0, 0, 0, 0});
    expectElements(kA.transposed(), 3, 2, {1, 4, 2, 5, 3, 6});
    expectElements(kA.selfProduct(), 3, 3, {17, 22, 27, 22, 29, 36, 27, 36, 45});
    PPMatrix s = matrixOf(2, 2, {2, 1, 1, 0});
    s.symmetrise();
    // S A = {6 9 12 / 1 2 3}
    expectElements(kA.quadraticForm(s), 3, 3, {10, 17, 24, 17, 28, 39, 24, 39, 54});
    EXPECT_TRUE(kA.quadraticForm(s).isSymmetric());
}

TEST(PPMatrix, shortPathsGiveWhatTheLongOnesGive)
{
    PPMatrix d = PPMatrix::identity(2);
    d.set(1, 1, 3);
    EXPECT_TRUE(d.isDiagonal());
    expectElements(d * kA, 2, 3, {3, 6, 9, 4, 5, 6});
    PPMatrix wide = PPMatrix::identity(3);
    wide.set(3, 3, -1);
    expectElements(kA * wide, 2, 3, {1, 2, -3, 4, 5, -6});
    expectElements(d * d, 2, 2, {9, 0, 0, 1});
    EXPECT_TRUE((d * d).isDiagonal());
    PPMatrix general = matrixOf(2, 2, {1, 2, 3, 4});
    expectElements(general + d, 2, 2, {4, 2, 3, 5});
    expectElements(d - general, 2, 2, {2, -2, -3, -3});
    EXPECT_FALSE((d - general).isDiagonal());
    EXPECT_FALSE((d - general).isSymmetric());
    expectElements(d.inverseOfDiagonal(), 2, 2, {1.0 / 3, 0, 0, 1});
}

TEST(PPMatrix, solves)
{
    // M x = (2, 7, 14) for x = (1, -1, 2), and twice that.
    const PPMatrix symmetric = matrixOf(3, 3, {4, 2, 0, 2, -3, 1, 0, 1, 7.5});
    PPMatrix x = matrixOf(3, 2, {2, 4, 7, 14, 14, 28});
    ASSERT_TRUE(symmetric.solveSymmetric(x));
    expectElements(x, 3, 2, {1, 2, -1, -2, 2, 4});

    // The first pivot is 0: rows must be exchanged. x = (3, 1, 2).
    const PPMatrix general = matrixOf(3, 3, {0, 2, 1, 1, 0, -1, 2, 1, 0});
    PPMatrix y = matrixOf(3, 1, {4, 1, 7});
    ASSERT_TRUE(general.solve(y));
    expectElements(y, 3, 1, {3, 1, 2});
}

TEST(PPMatrix, aSingularSolveChangesNothing)
{
    const PPMatrix singular = matrixOf(2, 2, {1, 2, 2, 4});
    PPMatrix x = matrixOf(2, 1, {5, 6});
    EXPECT_FALSE(singular.solve(x));
    EXPECT_FALSE(singular.solveSymmetric(x));
    expectElements(x, 2, 1, {5, 6});
}

TEST(Riccati, oneStateHasAKnownSolution)
{
    // x' = x + u with q = r = 1: P = 1 + P / (1 + P), so P is the golden ratio, and the gain is
    // P / (1 + P) = 1 / P.
    RiccatiModel<1, 1> model;
    model.A(0, 0) = model.B(0, 0) = model.q[0] = model.r[0] = 1.0;
    auto P = FixedMatrix<1, 1>::identity();
    ASSERT_TRUE(riccatiStep(model, P));
    EXPECT_NEAR(P(0, 0), 1.5, 1e-15);
    for (int i = 0; i < 40; ++i) {
        ASSERT_TRUE(riccatiStep(model, P));
    }
    const double golden = (1 + std::sqrt(5.0)) / 2;
    EXPECT_NEAR(P(0, 0), golden, 1e-14);
    FixedMatrix<1, 1> K;
    ASSERT_TRUE(riccatiGain(model, P, K));
    EXPECT_NEAR(K(0, 0), 1 / golden, 1e-14);
}

TEST(Riccati, oneStepByHandAndSymmetricToTheBit)
{
    // A = {1 1 / 0 1}, B = (0, 1), Q = diag(1, 0), R = 1, P = identity: N = 2,
    // P - PB N^-1 BtP = diag(1, 1/2), and At diag A = {1 1 / 1 3/2}.
    RiccatiModel<2, 1> model;
    model.A = FixedMatrix<2, 2>::identity();
    model.A(0, 1) = 1;
    model.B(1, 0) = 1;
    model.q[0] = 1;
    model.r[0] = 1;
    auto P = FixedMatrix<2, 2>::identity();
    ASSERT_TRUE(riccatiStep(model, P));
    EXPECT_EQ(P(0, 0), 2.0);
    EXPECT_EQ(P(0, 1), 1.0);
    EXPECT_EQ(P(1, 1), 1.5);
    model.A(1, 0) = 0.1;
    for (int i = 0; i < 30; ++i) {
        ASSERT_TRUE(riccatiStep(model, P));
        ASSERT_EQ(P(0, 1), P(1, 0));
    }
}

TEST(Riccati, withoutAnInverseNothingChanges)
{
    RiccatiModel<2, 1> model; // B and R are 0
    auto P = FixedMatrix<2, 2>::identity();
    EXPECT_FALSE(riccatiStep(model, P));
    EXPECT_EQ(P(0, 0), 1.0);
    EXPECT_EQ(P(1, 0), 0.0);
}

} // namespace
} // namespace tvw
