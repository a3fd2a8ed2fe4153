#include "tests/fuzz/check.h"
#include "util/huffman.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace {

constexpr std::size_t kHeaderBytes = 16;
constexpr std::size_t kRecordBytes = 5;

std::uint32_t numberAt(std::string_view bytes, std::size_t at)
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

/// Whether the bytes say to be a block whose table is whole; `symbols` gets their number.
bool hasTable(std::string_view bytes, std::uint32_t& symbols)
{
    if (bytes.size() < kHeaderBytes || numberAt(bytes, 0) != 5452234 || numberAt(bytes, 4) != 100) {
        return false;
    }
    symbols = numberAt(bytes, 8);
    return symbols <= 256 && bytes.size() >= kHeaderBytes + kRecordBytes * symbols;
}

void tryBlock(std::string_view block)
{
    const tvw::Result<std::string> bytes = tvw::decompress(block);
    const std::optional<std::string> expected = PlainDecoder(block).decode();
    RIGSTAGE_FUZZ_CHECK(static_cast<bool>(bytes) == expected.has_value());
    RIGSTAGE_FUZZ_CHECK(!bytes || *bytes == *expected);
}

/// The block with its bits again and again: long ones are decoded in several places at once.
void tryLongBlock(std::string_view block, std::size_t codeAt)
{
    constexpr std::size_t kCodeBytes = 12000;
    const std::string_view code = block.substr(codeAt);
    std::string longBlock(block.substr(0, codeAt));
    while (!code.empty() && longBlock.size() < codeAt + kCodeBytes) {
        longBlock += code;
    }
    // As many symbols as there are bits are too many for all but the shortest codes; the last
    // bytes of the code say how many are wanted.
    const std::size_t bits = 8 * (longBlock.size() - codeAt);
    const std::uint32_t length =
        static_cast<std::uint32_t>(bits * static_cast<unsigned char>(longBlock.back()) / 255);
    std::memcpy(longBlock.data() + 12, &length, sizeof length);
    tryBlock(longBlock);
}

void tryAsBlock(std::string_view input)
{
    std::uint32_t symbols = 0;
    const bool isBlock = hasTable(input, symbols);
    // A block of one symbol may say any length: one of 200 MiB is no fault, but slow.
    if (isBlock && symbols == 1 && numberAt(input, 12) > 1 << 20) {
        return;
    }
    const tvw::Result<std::string> bytes = tvw::decompress(input);
    RIGSTAGE_FUZZ_CHECK(bytes || !bytes.reason().empty());
    if (!isBlock || symbols < 2) {
        return;
    }
    const std::size_t codeAt = kHeaderBytes + kRecordBytes * symbols;
    if (numberAt(input, 12) <= 8 * (input.size() - codeAt)) {
        tryBlock(input);
    } else {
        RIGSTAGE_FUZZ_CHECK(!bytes);
    }
    tryLongBlock(input, codeAt);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    tryAsBlock(input);
    const std::string block = tvw::compress(input);
    const tvw::Result<std::string> back = tvw::decompress(block);
    RIGSTAGE_FUZZ_CHECK(back && *back == input);
    RIGSTAGE_FUZZ_CHECK(size == 0 || !tvw::decompress(block.substr(0, block.size() - 1)));
    return 0;
}
