/// In which order a second pass ticks its tools.
///
/// Frame by frame, the data of a hundred tools has left the nearest caches when a tool's turn comes
/// again. So tools that cannot see each other tick several frames on end, one after the other: what
/// they compute is the same to the bit.
#pragma once

#include <cstdint>
#include <vector>

namespace tvw::rgs::core {

class Instance;

class TickOrder
{
public:
    /// Holds until the scene's tree or the set of its tools changes.
    void arrange(const std::vector<Instance*>& running);

    /// Ticks all tools for frames `first` to `first + count - 1`, whose times are multiples of
    /// `step` [s].
    void tick(std::int32_t first, std::int32_t count, double step) const;

private:
    /// In each set every frame goes through all of its tools, in the order of the tree.
    std::vector<std::vector<Instance*>> sets_;
};

} // namespace tvw::rgs::core
