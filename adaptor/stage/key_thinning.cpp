#include "adaptor/stage/key_thinning.h"

#include "util/matrix4.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::rgs::stage {

namespace {

/// The longest stretch looked at as a whole. It bounds the time for the worst of curves, and
/// costs one key in so many.
constexpr std::size_t kLongest = 1024;

double fraction(const std::vector<float>& times, std::size_t a, std::size_t b, std::size_t i)
{
    return (double{times[i]} - double{times[a]}) / (double{times[b]} - double{times[a]});
}

/// error(a, b, i): how far key i lies from the curve between a and b.
template <class Error>
std::vector<std::size_t> thin(std::size_t count, double tolerance, const Error& error)
{
    std::vector<std::size_t> kept;
    if (!(tolerance > 0.0) || count < 3)
        return kept;
    std::vector<char> keep(count, 0);
    std::vector<std::pair<std::size_t, std::size_t>> open;
    for (std::size_t a = 0; a + 1 < count; a += kLongest) {
        const std::size_t b = std::min(a + kLongest, count - 1);
        keep[a] = keep[b] = 1;
        open.emplace_back(a, b);
    }
    while (!open.empty()) {
        const auto [a, b] = open.back();
        open.pop_back();
        double worst = tolerance;
        std::size_t farthest = a;
        for (std::size_t i = a + 1; i < b; ++i) {
            if (const double e = error(a, b, i); !(e <= worst)) {
                worst = e;
                farthest = i;
            }
        }
        if (farthest == a)
            continue;
        keep[farthest] = 1;
        open.emplace_back(a, farthest);
        open.emplace_back(farthest, b);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (keep[i] != 0)
            kept.push_back(i);
    }
    return kept;
}

Quatd quatOf(const std::array<float, 4>& q)
{
    return normalise(Quatd{q[0], q[1], q[2], q[3]});
}

} // namespace

std::vector<std::size_t> thinnedVectors(const std::vector<float>& times,
                                        const std::vector<std::array<float, 3>>& values,
                                        double tolerance)
{
    const auto at = [&](std::size_t i) {
        return Vector3d{values[i][0], values[i][1], values[i][2]};
    };
    return thin(values.size(), tolerance, [&](std::size_t a, std::size_t b, std::size_t i) {
        return length(at(a) + (at(b) - at(a)) * fraction(times, a, b, i) - at(i));
    });
}

std::vector<std::size_t> thinnedRotations(const std::vector<float>& times,
                                          const std::vector<std::array<float, 4>>& values,
                                          double tolerance)
{
    constexpr double kDegrees = 57.29577951308232;
    return thin(values.size(), tolerance, [&](std::size_t a, std::size_t b, std::size_t i) {
        const Quatd from = quatOf(values[a]);
        const Vector3d turn = toRotationVector(multiply(conjugate(from), quatOf(values[b])));
        const Quatd there = multiply(from, fromRotationVector(turn * fraction(times, a, b, i)));
        const Vector3d off = toRotationVector(multiply(conjugate(there), quatOf(values[i])));
        return length(off) * kDegrees;
    });
}

} // namespace tvw::rgs::stage
