#include "adaptor/stage/spline_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tvw::rgs::stage {
namespace {

double distance(const Vector3d& a, const Vector3d& b)
{
    return length(a - b);
}

const std::vector<Vector3d> kUneven{{0, 0, 0}, {0.1, 0, 0.2}, {5, 1, 0}, {5, 4, -3}, {-2, 4, 1}};

TEST(SplineCurve, TwoPointsMakeAStraightLineAtEvenSpeed)
{
    const SplineCurve line({{1, 2, 3}, {1, 2, -7}});
    EXPECT_NEAR(line.length(), 10.0, 1e-12);
    for (double u : {0.0, 0.1, 0.25, 0.5, 0.77, 1.0})
        EXPECT_LT(distance(line.pointAt(u), {1, 2, 3 - 10 * u}), 1e-9) << u;
    for (double u : {0.0, 0.3, 1.0})
        EXPECT_LT(distance(line.tangentAt(u), {0, 0, -1}), 1e-6) << u;
}

TEST(SplineCurve, RunsThroughItsPointsInEqualSteps)
{
    for (bool closed : {false, true}) {
        SCOPED_TRACE(closed);
        const SplineCurve curve(kUneven, closed);
        constexpr int kSteps = 20'000;
        const double step = curve.length() / kSteps;
        std::vector<double> nearest(kUneven.size(), 1e9);
        Vector3d last = curve.pointAt(0.0);
        for (int i = 0; i <= kSteps; ++i) {
            const Vector3d next = curve.pointAt(static_cast<double>(i) / kSteps);
            for (std::size_t k = 0; k < kUneven.size(); ++k)
                nearest[k] = std::min(nearest[k], distance(next, kUneven[k]));
            // A chord is shorter than its arc by (step * curvature)^2 / 24 of it.
            if (i > 0 && i < kSteps) {
                ASSERT_NEAR(distance(last, next) / step, 1.0, 2e-4) << "step " << i;
            }
            last = next;
        }
        for (const double each : nearest)
            EXPECT_LT(each, 1e-3);
    }
}

TEST(SplineCurve, ACircleOfPointsIsNearlyACircle)
{
    std::vector<Vector3d> points;
    for (int i = 0; i < 24; ++i) {
        const double a = i * std::numbers::pi / 12;
        points.push_back({3 * std::cos(a), 0, 3 * std::sin(a)});
    }
    const SplineCurve circle(points, true);
    EXPECT_NEAR(circle.length(), 6 * std::numbers::pi, 1e-3 * 6 * std::numbers::pi);
    for (int i = 0; i < 100; ++i) {
        const double a = i * std::numbers::pi / 50;
        EXPECT_LT(distance(circle.pointAt(i / 100.0), {3 * std::cos(a), 0, 3 * std::sin(a)}), 3e-3);
        EXPECT_LT(distance(circle.tangentAt(i / 100.0), {-std::sin(a), 0, std::cos(a)}), 1e-2);
    }
}

TEST(SplineCurve, EndsAndOutOfRange)
{
    const SplineCurve open(kUneven);
    const SplineCurve closed(kUneven, true);
    struct Case
    {
        const char* name;
        const SplineCurve& curve;
        double u, same;
    };
    const Case kCases[] = {{"open, before", open, -0.5, 0.0},
                           {"open, behind", open, 1.5, 1.0},
                           {"closed, once round", closed, 1.0, 0.0},
                           {"closed, more than once round", closed, 2.25, 0.25},
                           {"closed, backward", closed, -0.25, 0.75},
                           {"no number", open, std::nan(""), 0.0}};
    for (const Case& c : kCases)
        EXPECT_LT(distance(c.curve.pointAt(c.u), c.curve.pointAt(c.same)), 1e-12) << c.name;
    EXPECT_LT(distance(open.pointAt(0.0), kUneven.front()), 1e-12);
    EXPECT_LT(distance(open.pointAt(1.0), kUneven.back()), 1e-9);
}

TEST(SplineCurve, PoorPoints)
{
    EXPECT_EQ(SplineCurve().pointAt(0.5), (Vector3d{0, 0, 0}));
    const SplineCurve one({{4, 5, 6}});
    EXPECT_EQ(one.pointAt(0.5), (Vector3d{4, 5, 6}));
    EXPECT_EQ(one.length(), 0.0);
    const SplineCurve same({{4, 5, 6}, {4, 5, 6}}, true);
    EXPECT_EQ(same.pointAt(0.5), (Vector3d{4, 5, 6}));
    const SplineCurve repeated({{0, 0, 0}, {0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {std::nan(""), 0, 0}});
    EXPECT_NEAR(repeated.length(), 2.0, 1e-12);
    EXPECT_LT(distance(repeated.pointAt(0.5), {1, 0, 0}), 1e-9);
    const SplineCurve tiny({{0, 0, 0}, {1e-300, 0, 0}, {1, 0, 0}});
    EXPECT_TRUE(std::isfinite(tiny.pointAt(0.3).x));
}

} // namespace
} // namespace tvw::rgs::stage
