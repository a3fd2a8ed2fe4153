/// Keys that a curve does without.
///
/// Ramer-Douglas-Peucker over time: of a stretch the key that lies farthest from the curve between
/// the ends is kept as long as it lies farther than the tolerance. So at every key that is left
/// out the curve through those that are kept lies within the tolerance; and as both curves are
/// straight between keys, so it does in between for positions. (U. Ramer, "An iterative procedure
/// for the polygonal approximation of plane curves", 1972.)
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace tvw::rgs::stage {

/// The indices of the keys to keep, rising, first and last among them; empty: all are kept, which
/// is so for a tolerance of 0 or below. Linear curves; tolerance in the values' unit.
[[nodiscard]] std::vector<std::size_t>
thinnedVectors(const std::vector<float>& times, const std::vector<std::array<float, 3>>& values,
               double tolerance);

/// Rotations that turn evenly on the shorter way; tolerance [degrees].
[[nodiscard]] std::vector<std::size_t>
thinnedRotations(const std::vector<float>& times, const std::vector<std::array<float, 4>>& values,
                 double tolerance);

} // namespace tvw::rgs::stage
