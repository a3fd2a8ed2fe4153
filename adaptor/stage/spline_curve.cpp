#include "adaptor/stage/spline_curve.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::stage {

namespace {

bool isNumber(const Vector3d& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

std::vector<Vector3d> withoutRepeats(const std::vector<Vector3d>& points, bool closed)
{
    std::vector<Vector3d> out;
    for (const Vector3d& p : points) {
        if (out.empty() || tvw::length(p - out.back()) > 0.0)
            out.push_back(p);
    }
    while (closed && out.size() > 1 && !(tvw::length(out.back() - out.front()) > 0.0))
        out.pop_back();
    return out;
}

} // namespace

SplineCurve::SplineCurve(std::vector<Vector3d> points, bool closed)
    : points_(std::move(points)), closed_(closed)
{
    std::erase_if(points_, [](const Vector3d& p) { return !isNumber(p); });
    const std::vector<Vector3d> p = withoutRepeats(points_, closed_);
    const std::size_t n = p.size();
    if (n < 2)
        return;
    const std::size_t count = closed_ ? n : n - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const Vector3d& a = p[i];
        const Vector3d& b = p[(i + 1) % n];
        const bool first = !closed_ && i == 0;
        const bool last = !closed_ && i + 1 == count;
        segments_.push_back(segmentThrough(first ? a - (b - a) : p[(i + n - 1) % n], a, b,
                                           last ? b + (b - a) : p[(i + 2) % n]));
    }
    measure();
}

SplineCurve::Segment SplineCurve::segmentThrough(const Vector3d& p0, const Vector3d& p1,
                                                 const Vector3d& p2, const Vector3d& p3)
{
    // Knot distances are the square roots of the chords; slopes are per knot, then scaled to t.
    const double d01 = std::sqrt(tvw::length(p1 - p0));
    const double d12 = std::sqrt(tvw::length(p2 - p1));
    const double d23 = std::sqrt(tvw::length(p3 - p2));
    const Vector3d chord = p2 - p1;
    const Vector3d m1 = ((p1 - p0) / d01 - (p2 - p0) / (d01 + d12)) * d12 + chord;
    const Vector3d m2 = ((p3 - p2) / d23 - (p3 - p1) / (d12 + d23)) * d12 + chord;
    return {p1, m1, chord * 3.0 - m1 * 2.0 - m2, m1 + m2 - chord * 2.0};
}

Vector3d SplineCurve::Segment::at(double t) const noexcept
{
    return ((c3 * t + c2) * t + c1) * t + c0;
}

double SplineCurve::Segment::speed(double t) const noexcept
{
    return tvw::length((c3 * (3.0 * t) + c2 * 2.0) * t + c1);
}

double SplineCurve::Segment::lengthBetween(double t0, double t1) const noexcept
{
    // Gauss-Legendre with five points, exact for polynomials up to degree 9.
    constexpr double kPlace[3] = {0.0, 0.5384693101056831, 0.9061798459386640};
    constexpr double kWeight[3] = {0.5688888888888889, 0.4786286704993665, 0.2369268850561891};
    const double middle = 0.5 * (t0 + t1);
    const double half = 0.5 * (t1 - t0);
    double sum = kWeight[0] * speed(middle);
    for (int i = 1; i < 3; ++i)
        sum += kWeight[i] * (speed(middle - half * kPlace[i]) + speed(middle + half * kPlace[i]));
    return half * sum;
}

void SplineCurve::measure()
{
    ends_.reserve(segments_.size() * kPieces);
    double total = 0.0;
    for (const Segment& segment : segments_) {
        for (int i = 0; i < kPieces; ++i) {
            total += segment.lengthBetween(static_cast<double>(i) / kPieces,
                                           static_cast<double>(i + 1) / kPieces);
            ends_.push_back(total);
        }
    }
}

Vector3d SplineCurve::pointAt(double u) const noexcept
{
    if (segments_.empty())
        return points_.empty() ? Vector3d{} : points_.front();
    if (std::isnan(u))
        u = 0.0;
    u = closed_ && std::isfinite(u) ? u - std::floor(u) : std::clamp(u, 0.0, 1.0);
    const double wanted = u * length();
    const auto end = std::lower_bound(ends_.begin(), ends_.end() - 1, wanted);
    const auto piece = static_cast<std::size_t>(end - ends_.begin());
    const double before = piece == 0 ? 0.0 : ends_[piece - 1];
    const Segment& segment = segments_[piece / kPieces];
    const double t0 = static_cast<double>(piece % kPieces) / kPieces;
    const double t1 = t0 + 1.0 / kPieces;
    const double size = *end - before;
    double t = size > 0.0 ? t0 + (wanted - before) / size / kPieces : t0;
    // Newton on the length; the start is within a few per cent of the piece already.
    for (int i = 0; i < 3; ++i) {
        const double speed = segment.speed(t);
        if (speed > 0.0)
            t -= (segment.lengthBetween(t0, t) - (wanted - before)) / speed;
        t = std::clamp(t, t0, t1);
    }
    return segment.at(t);
}

Vector3d SplineCurve::tangentAt(double u) const noexcept
{
    constexpr double kStep = 0.00001;
    double a = std::max(0.0, u - 0.5 * kStep);
    if (a + kStep >= 1.0)
        a = 1.0 - kStep;
    return normalise(pointAt(a + kStep) - pointAt(a));
}

} // namespace tvw::rgs::stage
