/// The code tree that the compressor's two directions share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tvw::detail {

struct HuffmanLeaf
{
    std::uint8_t value;
    std::uint32_t frequency;
};

/// Built from the leaves as a block stores them; the reader does not sort, so that the writer's
/// order of equal frequencies decides.
class HuffmanTree
{
public:
    static constexpr int kMaxLeaves = 256;
    static constexpr std::int16_t kNone = -1;

    struct Node
    {
        std::int16_t child[2] = {kNone, kNone}; ///< left and right; both or none
        std::uint8_t value = 0;                 ///< of a leaf
    };

    /// 1 to kMaxLeaves leaves.
    explicit HuffmanTree(std::span<const HuffmanLeaf> leaves);

    [[nodiscard]] int root() const noexcept { return root_; }
    [[nodiscard]] const Node& node(int i) const noexcept { return nodes_[i]; }
    [[nodiscard]] bool isLeaf(int i) const noexcept { return nodes_[i].child[0] == kNone; }

    /// Calls visit(value, code, length) for each leaf whose code has at most maxLength <= 64 bits;
    /// the code's first bit is its lowest.
    template <class Visit>
    void visitCodes(int maxLength, Visit&& visit) const
    {
        visitBelow(root_, 0, 0, maxLength, visit);
    }

private:
    template <class Visit>
    void visitBelow(int i, std::uint64_t code, int length, int maxLength, Visit& visit) const
    {
        if (isLeaf(i)) {
            visit(nodes_[i].value, code, length);
        } else if (length < maxLength) {
            visitBelow(nodes_[i].child[0], code, length + 1, maxLength, visit);
            visitBelow(nodes_[i].child[1], code | std::uint64_t{1} << length, length + 1, maxLength,
                       visit);
        }
    }

    std::array<Node, 2 * kMaxLeaves - 1> nodes_;
    int root_ = 0;
};

} // namespace tvw::detail
