#include "util/huffman.h"

#include "util/huffman_decoder.h"
#include "util/huffman_tree.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

namespace tvw {

namespace {

using detail::HuffmanLeaf;
using detail::HuffmanTree;

struct Header
{
    std::uint32_t magic;
    std::uint32_t version;
    std::uint32_t symbols;
    std::uint32_t length;
};
static_assert(sizeof(Header) == 16);

constexpr std::uint32_t kMagic = 5452234;
constexpr std::uint32_t kVersion = 100;
constexpr std::size_t kRecordBytes = 5;

/// The code of each byte value. One has at most 41 bits, since the weights of a tree that deep are
/// Fibonacci's numbers and their sum is above kMaxDecompressedSize.
struct CodeTable
{
    std::uint64_t bits[256] = {};  ///< the first bit lowest
    std::uint8_t length[256] = {}; ///< [bits]
};

using Frequencies = std::array<std::uint32_t, 256>;

Frequencies frequenciesOf(std::string_view bytes)
{
    // Four tables, so that the same value twice in a row need not wait for its own count.
    std::array<Frequencies, 4> counts{};
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    for (; left >= 4; left -= 4, at += 4) {
        ++counts[0][at[0]];
        ++counts[1][at[1]];
        ++counts[2][at[2]];
        ++counts[3][at[3]];
    }
    for (; left > 0; --left) {
        ++counts[0][*at++];
    }
    Frequencies sum;
    for (std::size_t i = 0; i < sum.size(); ++i) {
        sum[i] = counts[0][i] + counts[1][i] + counts[2][i] + counts[3][i];
    }
    return sum;
}

/// The values that occur, by rising frequency.
std::vector<HuffmanLeaf> leavesOf(const Frequencies& frequencies)
{
    std::vector<HuffmanLeaf> leaves;
    for (int value = 0; value < 256; ++value) {
        if (frequencies[value] != 0) {
            leaves.push_back({static_cast<std::uint8_t>(value), frequencies[value]});
        }
    }
    std::stable_sort(leaves.begin(), leaves.end(), [](const HuffmanLeaf& a, const HuffmanLeaf& b) {
        return a.frequency < b.frequency;
    });
    return leaves;
}

/// Of at most one leaf: no bits at all.
CodeTable codesOf(std::span<const HuffmanLeaf> leaves)
{
    CodeTable codes;
    if (leaves.size() > 1) {
        HuffmanTree(leaves).visitCodes(64, [&](std::uint8_t value, std::uint64_t bits, int length) {
            codes.bits[value] = bits;
            codes.length[value] = static_cast<std::uint8_t>(length);
        });
    }
    return codes;
}

std::uint64_t bitsOf(const Frequencies& frequencies, const CodeTable& codes)
{
    std::uint64_t bits = 0;
    for (std::size_t value = 0; value < frequencies.size(); ++value) {
        bits += std::uint64_t{frequencies[value]} * codes.length[value];
    }
    return bits;
}

char* put(char* out, const void* bytes, std::size_t size)
{
    std::memcpy(out, bytes, size);
    return out + size;
}

/// Packs the codes from `out` on, which needs 8 bytes more than they fill.
void encode(std::string_view bytes, const CodeTable& codes, char* out)
{
    // Below `filled`, at most 7 between two flushes, wait the bits that are not yet a byte.
    std::uint64_t pending = 0;
    unsigned filled = 0;
    const auto flush = [&] {
        std::memcpy(out, &pending, sizeof pending);
        out += filled / 8;
        pending >>= filled & 56;
        filled &= 7;
    };
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto one = [&](unsigned char value) {
        pending |= codes.bits[value] << filled;
        filled += codes.length[value];
        flush();
    };
    std::size_t left = bytes.size();
    for (; left >= 4; left -= 4, at += 4) {
        const unsigned a = codes.length[at[0]];
        const unsigned ab = a + codes.length[at[1]];
        const unsigned c = codes.length[at[2]];
        const unsigned abcd = ab + c + codes.length[at[3]];
        if (abcd > 56) [[unlikely]] {
            for (int i = 0; i < 4; ++i) {
                one(at[i]);
            }
            continue;
        }
        const std::uint64_t first = codes.bits[at[0]] | codes.bits[at[1]] << a;
        const std::uint64_t second = codes.bits[at[2]] | codes.bits[at[3]] << c;
        pending |= (first | second << ab) << filled;
        filled += abcd;
        flush();
    }
    for (; left > 0; --left) {
        one(*at++);
    }
}

/// The header, if the bytes begin as a block does.
std::optional<Header> headerOf(std::string_view bytes)
{
    Header header{};
    if (bytes.size() < sizeof(Header)) {
        return std::nullopt;
    }
    std::memcpy(&header, bytes.data(), sizeof(Header));
    const bool isBlock = header.magic == kMagic && header.version == kVersion &&
                         header.symbols <= HuffmanTree::kMaxLeaves;
    return isBlock ? std::optional(header) : std::nullopt;
}

/// `records` holds at least `count` of them.
std::vector<HuffmanLeaf> readLeaves(std::string_view records, std::uint32_t count)
{
    std::vector<HuffmanLeaf> leaves(count);
    for (HuffmanLeaf& leaf : leaves) {
        leaf.value = static_cast<std::uint8_t>(records[0]);
        std::memcpy(&leaf.frequency, records.data() + 1, sizeof(leaf.frequency));
        records.remove_prefix(kRecordBytes);
    }
    return leaves;
}

/// Of no leaves or at least two.
Result<std::string> decode(std::span<const HuffmanLeaf> leaves, std::string_view code,
                           std::size_t length)
{
    // Each byte takes a bit at least, so that a length beyond the bits costs no memory.
    const std::size_t most = leaves.empty() ? 0 : 8 * code.size();
    if (length <= most) {
        std::string out(length, '\0');
        if (length == 0) {
            return out;
        }
        const HuffmanTree tree(leaves);
        if (detail::HuffmanDecoder(tree, length).decode(code, out.data(), length)) {
            return out;
        }
    }
    return Result<std::string>::failure("the compressed block ends early");
}

} // namespace

std::string compress(std::string_view bytes)
{
    if (bytes.size() > kMaxDecompressedSize) {
        return std::string(bytes);
    }
    const Frequencies frequencies = frequenciesOf(bytes);
    const std::vector<HuffmanLeaf> leaves = leavesOf(frequencies);
    const CodeTable codes = codesOf(leaves);
    const std::uint64_t bits = bitsOf(frequencies, codes);
    const std::size_t size = sizeof(Header) + kRecordBytes * leaves.size() + (bits + 7) / 8;
    constexpr std::size_t kSpare = 8; // what the last store of the encoder may touch
    std::string out(size + kSpare, '\0');
    const Header header{kMagic, kVersion, static_cast<std::uint32_t>(leaves.size()),
                        static_cast<std::uint32_t>(bytes.size())};
    char* at = put(out.data(), &header, sizeof(Header));
    for (const HuffmanLeaf& leaf : leaves) {
        at = put(at, &leaf.value, sizeof(leaf.value));
        at = put(at, &leaf.frequency, sizeof(leaf.frequency));
    }
    if (bits > 0) {
        encode(bytes, codes, at);
    }
    out.resize(size);
    return out;
}

Result<std::string> decompress(std::string_view bytes)
{
    const std::optional<Header> header = headerOf(bytes);
    if (!header) {
        return std::string(bytes);
    }
    const std::string_view records = bytes.substr(sizeof(Header));
    if (records.size() / kRecordBytes < header->symbols) {
        return Result<std::string>::failure("the compressed block ends within its table");
    }
    if (header->length > kMaxDecompressedSize) {
        return Result<std::string>::failure("the compressed block says that it expands to " +
                                            std::to_string(header->length) + " bytes, too many");
    }
    const std::vector<HuffmanLeaf> leaves = readLeaves(records, header->symbols);
    if (leaves.size() == 1) {
        return std::string(header->length, static_cast<char>(leaves[0].value));
    }
    return decode(leaves, records.substr(kRecordBytes * leaves.size()), header->length);
}

} // namespace tvw
