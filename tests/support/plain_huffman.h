/// The compressed format told a second time, as plainly as can be, to check the fast decoder
/// against.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvw::test {

inline constexpr std::size_t kHeaderBytes = 16;
inline constexpr std::size_t kRecordBytes = 5;

inline std::uint32_t numberAt(std::string_view bytes, std::size_t at)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

/// Decodes as the format tells it, bit by bit through a list of nodes, to check the decoder
/// against, which looks at many bits at once.
class PlainDecoder
{
public:
    /// A block with at least two symbols.
    explicit PlainDecoder(std::string_view block) : length_(numberAt(block, 12))
    {
        const std::uint32_t symbols = numberAt(block, 8);
        for (std::uint32_t i = 0; i < symbols; ++i) {
            const std::size_t at = kHeaderBytes + kRecordBytes * i;
            nodes_.push_back({kNone, kNone, numberAt(block, at + 1), block[at]});
        }
        code_ = block.substr(kHeaderBytes + kRecordBytes * symbols);
        for (std::size_t i = 0; i + 1 < nodes_.size(); i += 2) {
            join(i);
        }
    }

    /// Nothing if the bits break off.
    [[nodiscard]] std::optional<std::string> decode() const
    {
        std::string out;
        std::size_t bit = 0;
        while (out.size() < length_) {
            std::size_t node = nodes_.size() - 1;
            while (nodes_[node].left != kNone) {
                if (bit == 8 * code_.size()) {
                    return std::nullopt;
                }
                const bool isRight =
                    (static_cast<unsigned char>(code_[bit / 8]) >> bit % 8 & 1) != 0;
                node = isRight ? nodes_[node].right : nodes_[node].left;
                ++bit;
            }
            out += nodes_[node].value;
        }
        return out;
    }

private:
    static constexpr auto kNone = static_cast<std::size_t>(-1);
    struct Node
    {
        std::size_t left, right;
        std::uint64_t weight;
        char value;
    };

    /// Puts the sum of nodes i and i + 1 in behind all of equal weight.
    void join(std::size_t i)
    {
        const std::uint64_t sum = nodes_[i].weight + nodes_[i + 1].weight;
        std::size_t place = i + 2;
        while (place < nodes_.size() && nodes_[place].weight <= sum) {
            ++place;
        }
        for (Node& node : nodes_) {
            for (std::size_t* const index : {&node.left, &node.right}) {
                *index += *index != kNone && *index >= place ? 1 : 0;
            }
        }
        nodes_.insert(nodes_.begin() + static_cast<std::ptrdiff_t>(place), {i, i + 1, sum, 0});
    }

    std::vector<Node> nodes_;
    std::string_view code_;
    std::size_t length_;
};

} // namespace tvw::test
