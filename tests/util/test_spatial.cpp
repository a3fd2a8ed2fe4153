#include "util/matrix4.h"
#include "util/quat.h"
#include "util/transform.h"
#include "util/vector3.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tvw {
namespace {

constexpr double kTiny = 1e-14;
constexpr double kPi = std::numbers::pi;
const double kHalf = std::sqrt(0.5);

Quatd about(int axis, double angle)
{
    Vector3d r;
    r[axis] = angle;
    return fromRotationVector(r);
}

/// Vectors, quaternions and matrices are their doubles in a row.
template <class T>
void expectNear(const T& actual, const T& expected, double tolerance = kTiny)
{
    const auto* const a = reinterpret_cast<const double*>(&actual);
    const auto* const e = reinterpret_cast<const double*>(&expected);
    for (std::size_t i = 0; i < sizeof(T) / sizeof(double); ++i) {
        EXPECT_NEAR(a[i], e[i], tolerance) << "element " << i;
    }
}

TEST(Vector3, normaliseOfZeroPointsUp)
{
    expectNear(normalise(Vector3d{3, 0, -4}), {0.6, 0, -0.8});
    EXPECT_EQ(normalise(Vector3d{}), (Vector3d{0, 1, 0}));
}

TEST(Quat, normaliseKeepsTheSign)
{
    expectNear(normalise(Quatd{0, 0, 0, -2}), {0, 0, 0, -1});
    EXPECT_EQ(normalise(Quatd{0, 0, 0, 0}), Quatd{});
}

TEST(Quat, rotatesByTheRightHand)
{
    struct Case
    {
        const char* name;
        Quatd q;
        Vector3d v, expected;
    };
    const Case cases[] = {
        {"z takes x to y", about(2, kPi / 2), {1, 0, 0}, {0, 1, 0}},
        {"x takes y to z", about(0, kPi / 2), {0, 1, 0}, {0, 0, 1}},
        {"y takes z to x", about(1, kPi / 2), {0, 0, 1}, {1, 0, 0}},
        {"first z then x", about(2, kPi / 2) * about(0, kPi / 2), {1, 0, 0}, {0, 0, 1}},
        {"first x then z", about(0, kPi / 2) * about(2, kPi / 2), {1, 0, 0}, {0, 1, 0}},
        {"length 2 scales by 4", {0, 0, 0, 2}, {1, 2, 3}, {4, 8, 12}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        expectNear(rotate(c.q, c.v), c.expected);
        expectNear(transformPoint(toMatrix(c.q), c.v), c.expected);
    }
}

TEST(Quat, productIsTheMatrixProductTheOtherWayRound)
{
    const Quatd a = fromRotationVector(Vector3d{0.3, -1.1, 0.7});
    const Quatd b = fromRotationVector(Vector3d{-2.0, 0.4, 0.9});
    expectNear(upperHemisphere(a * b), toQuat(toMatrix(b) * toMatrix(a)));
    expectNear(a * conjugate(a), Quatd{});
}

TEST(Quat, partsOfARotation)
{
    const Quatd half{0.5, 0.5, 0.5, 0.5};
    const double third = 1 / std::sqrt(3.0);
    expectNear(yawOnly(half), {0, kHalf, 0, kHalf});
    expectNear(removeRoll(half), {third, third, 0, third});
    EXPECT_EQ(yawOnly(Quatd{1, 0, 0, 0}), (Quatd{0, 0, 0, 0})); // guarded, not infinite
    EXPECT_EQ(removeRoll(Quatd{0, 0, 1, 0}), (Quatd{0, 0, 0, 0}));
    EXPECT_EQ(yawOnly(Quatd{1, 0, 0, 1e-13}).w, 1e-13 / 1e-12);
    expectNear(antiRollTarget(about(2, 0.3) * about(1, 1.0)), about(1, 1.0));
    expectNear(antiRollTarget(about(0, 0.4)), about(0, 0.4));
}

TEST(Quat, rotationVectors)
{
    EXPECT_EQ(fromRotationVector(Vector3d{}), Quatd{});
    expectNear(fromRotationVector(Vector3d{0, kPi / 2, 0}), {0, kHalf, 0, kHalf});
    expectNear(toRotationVector(Quatd{0, 0, kHalf, kHalf}), {0, 0, kPi / 2});
    expectNear(toRotationVector(Quatd{0, 0, -kHalf, -kHalf}), {0, 0, kPi / 2});
    EXPECT_EQ(toRotationVector(Quatd{0, 0, 0, 1 + 1e-15}), Vector3d{});
    const Vector3d r{0.5, -1.0, 2.0};
    expectNear(toRotationVector(fromRotationVector(r)), r);
}

TEST(Matrix4, toQuatTakesEachBranchWhateverTheScale)
{
    struct Case
    {
        const char* name;
        Quatd q; // with w >= 0
    };
    const Case cases[] = {
        {"w largest", {0, 0, 0, 1}},          {"half turn about x", {1, 0, 0, 0}},
        {"half turn about y", {0, 1, 0, 0}},  {"half turn about z", {0, 0, 1, 0}},
        {"x largest", {0.9, 0.1, -0.3, 0.3}}, {"y largest", {0.1, -0.9, 0.3, 0.3}},
        {"z largest", {0.1, 0.3, 0.9, 0.3}},  {"all alike", {0.5, -0.5, 0.5, 0.5}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Quatd q = normalise(c.q);
        expectNear(toQuat(toMatrix(q)), q);
        expectNear(toQuat(scaled(toMatrix(q), {2, 2, 2})), q);
        expectNear(toQuat(scaled(toMatrix(-q), {0.1, 3, 7})), q);
    }
}

TEST(Matrix4, layoutIsColumnByColumn)
{
    const Matrix4 quarter = rotationMatrix(90, 0, 0, 1);
    expectNear(quarter.axis(0), {0, 1, 0});
    expectNear(quarter.axis(1), {-1, 0, 0});
    expectNear(quarter.axis(2), {0, 0, 1});
    EXPECT_EQ(quarter.at(1, 0), quarter[1]);
    expectNear(rotationMatrix(120, 0.6, 0, 0.8),
               toMatrix(fromRotationVector(Vector3d{0.6, 0, 0.8} * (kPi * 2 / 3))));

    Matrix4 shift;
    setTranslation(shift, {1, 2, 3});
    EXPECT_EQ(shift[13], 2);
    expectNear(transformPoint(quarter * shift, {}), {-2, 1, 3}); // the right factor acts first
    expectNear(transformPoint(shift * quarter, {}), {1, 2, 3});
    expectNear(transformDirection(shift * quarter, {1, 0, 0}), {0, 1, 0});
}

TEST(Matrix4, pointIsDividedByTheFourthCoordinateUnlessItIsZero)
{
    Matrix4 M;
    setTranslation(M, {2, 4, 6});
    M[15] = 2;
    EXPECT_EQ(transformPoint(M, {}), (Vector3d{1, 2, 3}));
    M[15] = 0;
    EXPECT_EQ(transformPoint(M, {}), (Vector3d{2, 4, 6}));
    M[3] = 1; // w = x
    EXPECT_EQ(transformPoint(M, {2, 0, 0}), (Vector3d{2, 2, 3}));
}

TEST(Matrix4, inverse)
{
    Matrix4 M = scaled(Matrix4{}, {2, 2, 2});
    setTranslation(M, {2, 4, 6});
    Matrix4 expected = scaled(Matrix4{}, {0.5, 0.5, 0.5});
    setTranslation(expected, {-1, -2, -3});
    expectNear(inverse(M), expected);

    const Matrix4 general{{2, 1, 0, 3, -1, 4, 2, 0, 5, 0, 1, 1, 0, 2, -3, 6}};
    expectNear(general * inverse(general), Matrix4{});
    expectNear(inverse(general) * general, Matrix4{});

    const Matrix4 zeros = inverse(scaled(Matrix4{}, {1, 0, 1}));
    for (const double element : zeros.m) {
        EXPECT_EQ(element, 0.0);
    }
}

TEST(Matrix4, scaleAndOrthonormalise)
{
    const Matrix4 turned = toMatrix(fromRotationVector(Vector3d{0.4, 0.5, -0.6}));
    const Matrix4 M = scaled(turned, {2, 3, 0.5});
    expectNear(scaleOf(M), {2, 3, 0.5});
    expectNear(orthonormalise(M), turned);
    EXPECT_EQ(orthonormalise(scaled(turned, {1, 0, 1})).axis(1), Vector3d{});
}

TEST(QTransform, keepsPlaceAndTurnAndDropsScale)
{
    const QTransformd t{{1, -2, 3}, fromRotationVector(Vector3d{0.1, 0.2, 0.3})};
    const QTransformd back = toTransform(scaled(toMatrix(t), {4, 4, 4}));
    EXPECT_EQ(back.translation, t.translation);
    expectNear(back.rotation, t.rotation);
    const auto* numbers = reinterpret_cast<const double*>(&t);
    EXPECT_EQ(numbers[2], 3);
    EXPECT_EQ(numbers[6], t.rotation.w);
    EXPECT_EQ(QTransformd{}.rotation.w, 1.0);
}

} // namespace
} // namespace tvw
