/// Key times: whole flicks.
///
/// A flick is 1/705,600,000 of a second. The frames of 24, 25, 30, 48, 50, 60, 90, 100 and 120
/// pictures a second, and of the NTSC rates' nominal counterparts, all start on whole flicks, so
/// that two ways of computing one frame's seconds meet on the same key. Seconds (double) stay the
/// unit of every interface.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tvw::rgs::stage {

using Flicks = std::int64_t;

inline constexpr Flicks kFlicksPerSecond = 705'600'000;

/// About 140 years either way: far beyond any time line, and the sum of two still fits.
inline constexpr Flicks kLastFlick = std::int64_t{1} << 61;

/// The nearest flick, halves away from zero. Times out of range are held to it; no number is 0.
[[nodiscard]] inline Flicks toFlicks(double seconds) noexcept
{
    const double flicks = seconds * static_cast<double>(kFlicksPerSecond);
    if (std::isnan(flicks))
        return 0;
    constexpr auto kLimit = static_cast<double>(kLastFlick);
    return static_cast<Flicks>(std::llround(std::clamp(flicks, -kLimit, kLimit)));
}

/// [s], correctly rounded for times of up to five months: the flicks of i / 25 give i / 25 back.
[[nodiscard]] constexpr double toSeconds(Flicks flicks) noexcept
{
    return static_cast<double>(flicks) / static_cast<double>(kFlicksPerSecond);
}

} // namespace tvw::rgs::stage
