#include "util/huffman_tree.h"

#include <algorithm>

namespace tvw::detail {

HuffmanTree::HuffmanTree(std::span<const HuffmanLeaf> leaves)
{
    // Nodes keep their index for life; what moves up as new ones go in between is the row of them
    // by weight. Sums of 256 32-bit weights, added up tree by tree, fit 64 bits.
    struct Waiting
    {
        std::uint64_t weight;
        std::int16_t node;
    };
    std::array<Waiting, 2 * kMaxLeaves - 1> row;
    auto count = static_cast<std::int16_t>(leaves.size());
    for (std::int16_t i = 0; i < count; ++i) {
        nodes_[i].value = leaves[i].value;
        row[i] = {leaves[i].frequency, i};
    }
    for (int i = 0; i + 1 < count; i += 2) {
        const Waiting left = row[i];
        const Waiting right = row[i + 1];
        const std::uint64_t sum = left.weight + right.weight;
        // Behind all of equal weight. The leaves of a foreign block may stand unsorted, so this is
        // the first heavier one in the row, not a search by halves.
        const auto place = std::find_if(row.begin() + i + 2, row.begin() + count,
                                        [sum](const Waiting& w) { return w.weight > sum; });
        std::move_backward(place, row.begin() + count, row.begin() + count + 1);
        *place = {sum, count};
        nodes_[count].child[0] = left.node;
        nodes_[count].child[1] = right.node;
        ++count;
    }
    root_ = row[count - 1].node;
}

} // namespace tvw::detail
