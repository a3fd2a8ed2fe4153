#include "util/filters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tvw {
namespace {

constexpr double kTiny = 1e-14;

Quatd aboutZ(double angle)
{
    return fromRotationVector(Vector3d{0, 0, angle});
}

double angleAboutZ(const Quatd& q)
{
    return toRotationVector(q).z;
}

using ScalarFilter = void (*)(double&, double, double, double);
using VectorFilter = void (*)(Vector3d&, const Vector3d&, double, double);

// From 0 towards 1: n = 1 + trunc(dt / 0.04), k = factor dt / 0.04 / n, and 1 - (1 - k)^n is left
// behind.
TEST(Filters, coverTheShareOfTheTimeBase)
{
    struct Case
    {
        const char* name;
        ScalarFilter scalar;
        VectorFilter vector;
        double factor, dt, expected;
    };
    const Case cases[] = {
        {"response 0 is unfiltered", response, response, 0.0, 0.04, 1.0},
        {"response 0 even in no time", response, response, 0.0, 0.0, 1.0},
        {"response 1 at once", response, response, 1.0, 0.01, 1.0},
        {"response just below 1", response, response, 0.999, 0.04, 1 - 0.5005 * 0.5005},
        {"response half a frame", response, response, 0.5, 0.02, 0.25},
        {"response two frames", response, response, 0.5, 0.08, 19.0 / 27},
        {"response no time", response, response, 0.5, 0.0, 0.0},
        {"smoothing 0 is unfiltered", smoothing, smoothing, 0.0, 0.04, 1.0},
        {"smoothing 1 one frame", smoothing, smoothing, 1.0, 0.04, 0.75},
        {"smoothing 1 two frames", smoothing, smoothing, 1.0, 0.08, 26.0 / 27},
        {"smoothing 1 no time", smoothing, smoothing, 1.0, 0.0, 0.0},
        {"smoothing share of 1", smoothing, smoothing, 2.0, 0.04, 1.0},
        {"smoothing share above 1", smoothing, smoothing, 3.0, 0.04, 1.0},
        {"smoothing half a frame", smoothing, smoothing, 0.5, 0.02, 0.25},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        double x = 0.0;
        c.scalar(x, 1.0, c.factor, c.dt);
        EXPECT_NEAR(x, c.expected, kTiny);
        Vector3d v{1, 0, 2};
        c.vector(v, {2, -2, 2}, c.factor, c.dt);
        EXPECT_NEAR(v.x, 1 + c.expected, kTiny);
        EXPECT_NEAR(v.y, -2 * c.expected, kTiny);
        EXPECT_NEAR(v.z, 2, kTiny);
    }
}

TEST(Filters, limitedResponseOfANumber)
{
    struct Case
    {
        const char* name;
        double target, factor, maxVelocity, dt, expected;
    };
    const Case cases[] = {
        {"no limit", 10, 0.5, 0, 0.04, 4.375}, // k = 1/4 twice
        {"limit before the filter", 10, 0.5, 25, 0.04, 0.4375},
        {"limit keeps the sign", -10, 0.5, 25, 0.04, -0.4375},
        {"target within the limit", 0.5, 0.5, 25, 0.04, 0.21875},
        {"factor 0, no limit", 10, 0, 0, 0.04, 10},
        {"factor 0: the limit alone", 10, 0, 25, 0.04, 1},
        {"factor 0 lands", 0.5, 0, 25, 0.04, 0.5},
        {"share of 1: the limit alone", -10, 2, 25, 0.04, -1},
        {"share of 1, no limit", 10, 2, 0, 0.04, 10},
    };
    for (const Case& c : cases) {
        double x = 0.0;
        limitedResponse(x, c.target, c.factor, c.maxVelocity, c.dt);
        EXPECT_NEAR(x, c.expected, kTiny) << c.name;
    }
}

TEST(Filters, orientationsTakeTheShorterWay)
{
    // State and target lie in the upper hemisphere, yet nearer to each other's negative.
    const Quatd target{-0.8, 0, 0, 0.6};
    Quatd q{0.8, 0, 0, 0.6};
    response(q, target, 0.5, 0.02);
    const double len = std::sqrt(0.64 + 0.09);
    EXPECT_NEAR(q.x, -0.8 / len, kTiny);
    EXPECT_NEAR(q.w, -0.3 / len, kTiny); // -0.6 a quarter of the way to 0.6

    // The sign of neither the state nor the target matters.
    const double s = std::sqrt(0.5);
    for (const double sign : {1.0, -1.0}) {
        Quatd r{0, 0, 0, -sign};
        smoothing(r, Quatd{0, 0, sign * s, sign * s}, 0.5, 0.02);
        const Quatd expected = normalise(Quatd{0, 0, 0.25 * s, 0.75 + 0.25 * s});
        EXPECT_NEAR(r.z, expected.z, kTiny);
        EXPECT_NEAR(r.w, expected.w, kTiny);
    }
}

TEST(Filters, limitedResponseOfAnOrientationMovesByWhatTheFactorLeaves)
{
    struct Case
    {
        const char* name;
        double target, factor, maxVelocity, dt, expected; // angles about z [rad]
    };
    const Case cases[] = {
        {"limit alone", 1, 0, 2, 0.1, 0.2},
        {"limit alone, backward", -1, 0, 2, 0.1, -0.2},
        {"limit not reached", 0.1, 0, 2, 0.1, 0.1},
        {"factor alone", 1, 0.5, 0, 0.04, 0.5625}, // (3/4)^2
        {"both", 1, 0.5, 5, 0.04, 0.2 * 0.5625},
        {"neither", 1, 0, 0, 0.04, 1},
        {"share of 1 ignores the limit", 1, 2, 5, 0.04, 1},
        {"there already", 0, 0.5, 5, 0.04, 0},
    };
    for (const Case& c : cases) {
        Quatd q = aboutZ(0.0);
        limitedResponse(q, aboutZ(c.target), c.factor, c.maxVelocity, c.dt);
        EXPECT_NEAR(angleAboutZ(q), c.expected, 1e-12) << c.name;
        Quatd onATilt = aboutZ(0.0) * fromRotationVector(Vector3d{0.7, 0, 0});
        const Quatd tilt = onATilt;
        limitedResponse(onATilt, -(aboutZ(c.target) * tilt), c.factor, c.maxVelocity, c.dt);
        const Quatd moved = onATilt * conjugate(tilt);
        EXPECT_NEAR(angleAboutZ(moved), c.expected, 1e-12) << c.name << ", on a tilt";
    }
}

TEST(Filters, springOfAPosition)
{
    struct Case
    {
        const char* name;
        double stiffness, maxVelocity, position, velocity;
    };
    const Case cases[] = {
        {"semi-implicit", 10, 0, 0.1, 2.7}, // 1 + ((2 - 0.1) 10 - 2) 0.1
        {"limited", 10, 2, 0.1, 2.0},
        {"no spring jumps", 0, 0.5, 2.0, 1.0},
    };
    for (const Case& c : cases) {
        Vector3d x;
        Vector3d v{0, 1, 0};
        spring(x, v, {0, 2, 0}, c.stiffness, 2.0, c.maxVelocity, 0.1);
        EXPECT_NEAR(x.y, c.position, kTiny) << c.name;
        EXPECT_NEAR(v.y, c.velocity, kTiny) << c.name;
        EXPECT_EQ(x.x, 0.0) << c.name;
    }
}

TEST(Filters, springOfAnOrientationSwingsLikeAPendulum)
{
    // Undamped, a stiffness of 4 / s^2 swings with 2 rad/s: half a period is pi / 2 s, and from
    // rest the far side is twice the way to the target.
    constexpr int kSteps = 500;
    Quatd q;
    Vector3d w;
    for (int i = 0; i < kSteps; ++i) {
        spring(q, w, -aboutZ(0.5), 4.0, 0.0, 0.0, std::numbers::pi / 2 / kSteps);
    }
    EXPECT_NEAR(angleAboutZ(q), 1.0, 2e-3);
    EXPECT_NEAR(w.z, 0.0, 2e-3);
    EXPECT_EQ(w.x, 0.0);
}

TEST(Filters, springOfAnOrientationTurnsInItsOwnFrame)
{
    const Quatd tilt = fromRotationVector(Vector3d{std::numbers::pi / 2, 0, 0});
    Quatd q = tilt;
    Vector3d w{0, 0, 1};
    spring(q, w, tilt, 1e-12, 0.0, 0.0, 0.1);
    const Quatd expected = aboutZ(0.1) * tilt; // about the own z first
    EXPECT_NEAR(dot(q, expected), 1.0, 1e-8);

    spring(q, w, tilt, 1.0, 0.0, 0.25, 0.1);
    EXPECT_LE(length(w), 0.25 + kTiny);

    const Vector3d before = w;
    spring(q, w, -tilt, 0.0, 5.0, 0.1, 0.1);
    EXPECT_EQ(q, -tilt);
    EXPECT_EQ(w, before);
}

TEST(Filters, aSenselessStepEnds)
{
    double x = 0.0;
    response(x, 1.0, 0.5, 1e300);
    x = 0.0;
    response(x, 1.0, 0.5, -0.04); // n stays 1: moves away by half
    EXPECT_EQ(x, -0.5);
}

} // namespace
} // namespace tvw
