#include "util/huffman.h"

#include "util/huffman_tree.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
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

struct Code
{
    std::uint64_t bits;
    int length;
};

std::vector<HuffmanLeaf> leavesOf(std::string_view bytes)
{
    std::uint32_t frequencies[256] = {};
    for (const char c : bytes) {
        ++frequencies[static_cast<unsigned char>(c)];
    }
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

} // namespace

std::string compress(std::string_view bytes)
{
    if (bytes.size() > kMaxDecompressedSize) {
        return std::string(bytes);
    }
    const std::vector<HuffmanLeaf> leaves = leavesOf(bytes);
    const Header header{kMagic, kVersion, static_cast<std::uint32_t>(leaves.size()),
                        static_cast<std::uint32_t>(bytes.size())};
    std::string out(reinterpret_cast<const char*>(&header), sizeof(Header));
    for (const HuffmanLeaf& leaf : leaves) {
        out.push_back(static_cast<char>(leaf.value));
        out.append(reinterpret_cast<const char*>(&leaf.frequency), sizeof(leaf.frequency));
    }
    if (leaves.size() < 2) {
        return out;
    }
    Code codes[256] = {};
    HuffmanTree(leaves).visitCodes(64,
                                   [&codes](std::uint8_t value, std::uint64_t bits, int length) {
                                       codes[value] = {bits, length};
                                   });
    std::uint64_t pending = 0;
    int filled = 0;
    for (const char c : bytes) {
        const Code& code = codes[static_cast<unsigned char>(c)];
        pending |= code.bits << filled;
        filled += code.length;
        for (; filled >= 8; filled -= 8, pending >>= 8) {
            out.push_back(static_cast<char>(pending));
        }
    }
    if (filled > 0) {
        out.push_back(static_cast<char>(pending));
    }
    return out;
}

Result<std::string> decompress(std::string_view bytes)
{
    Header header{};
    if (bytes.size() < sizeof(Header)) {
        return std::string(bytes);
    }
    std::memcpy(&header, bytes.data(), sizeof(Header));
    if (header.magic != kMagic || header.version != kVersion ||
        header.symbols > HuffmanTree::kMaxLeaves) {
        return std::string(bytes);
    }
    const std::string_view records = bytes.substr(sizeof(Header));
    if (records.size() / kRecordBytes < header.symbols) {
        return Result<std::string>::failure("the compressed block ends within its table");
    }
    if (header.length > kMaxDecompressedSize) {
        return Result<std::string>::failure("the compressed block says that it expands to " +
                                            std::to_string(header.length) + " bytes, too many");
    }
    std::vector<HuffmanLeaf> leaves(header.symbols);
    for (std::uint32_t i = 0; i < header.symbols; ++i) {
        leaves[i].value = static_cast<std::uint8_t>(records[kRecordBytes * i]);
        std::memcpy(&leaves[i].frequency, records.data() + kRecordBytes * i + 1, 4);
    }
    if (header.symbols == 1) {
        return std::string(header.length, static_cast<char>(leaves[0].value));
    }
    const std::string_view code = records.substr(kRecordBytes * header.symbols);
    if (header.length > 8 * code.size() || (header.symbols == 0 && header.length > 0)) {
        return Result<std::string>::failure("the compressed block ends early");
    }
    if (header.length == 0) {
        return std::string();
    }
    const HuffmanTree tree(leaves);
    std::string out(header.length, '\0');
    std::size_t bit = 0;
    for (char& c : out) {
        int node = tree.root();
        while (!tree.isLeaf(node)) {
            if (bit == 8 * code.size()) {
                return Result<std::string>::failure("the compressed block ends early");
            }
            node = tree.node(node).child[static_cast<unsigned char>(code[bit / 8]) >> bit % 8 & 1];
            ++bit;
        }
        c = static_cast<char>(tree.node(node).value);
    }
    return out;
}

} // namespace tvw
