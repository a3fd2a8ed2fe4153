#include "util/huffman_decoder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tvw::detail {

namespace {

constexpr int kCountAt = 8;
constexpr int kSymbolsAt = 16;
constexpr int kMaxSymbols = 6; ///< that fit an entry

/// 4096 entries of 8 bytes: as many as the first-level cache holds.
constexpr int kMaxTableBits = 12;
constexpr int kMinTableBits = 6;

/// Walks single codes bit by bit: at the ends, and where a code is longer than the table's bits.
class Walker
{
public:
    Walker(const HuffmanTree& tree, std::string_view code) : tree_(tree), code_(code) {}

    [[nodiscard]] std::size_t bits() const { return 8 * code_.size(); }

    /// Reads one symbol at bit `at`, which moves behind it; false if the code ends before.
    [[nodiscard]] bool read(std::size_t& at, char& out) const
    {
        int node = tree_.root();
        while (!tree_.isLeaf(node)) {
            if (at == bits()) {
                return false;
            }
            node = tree_.node(node).child[static_cast<unsigned char>(code_[at / 8]) >> at % 8 & 1];
            ++at;
        }
        out = static_cast<char>(tree_.node(node).value);
        return true;
    }

private:
    const HuffmanTree& tree_;
    std::string_view code_;
};

} // namespace

HuffmanDecoder::HuffmanDecoder(const HuffmanTree& tree, std::size_t length)
    : tree_(tree), tableBits_(std::clamp(static_cast<int>(std::bit_width(length)) - 4,
                                         kMinTableBits, kMaxTableBits)),
      table_(std::size_t{1} << tableBits_)
{
    fillTable();
}

void HuffmanDecoder::fillTable()
{
    struct Single
    {
        std::uint8_t value;
        std::uint8_t length; ///< [bits]; 0: longer than the table's bits
    };
    std::vector<Single> singles(table_.size());
    tree_.visitCodes(tableBits_, [&](std::uint8_t value, std::uint64_t code, int length) {
        for (std::uint64_t i = code; i < singles.size(); i += std::uint64_t{1} << length) {
            singles[i] = {value, static_cast<std::uint8_t>(length)};
        }
    });
    for (std::size_t i = 0; i < table_.size(); ++i) {
        Entry entry = 0;
        int used = 0;
        int count = 0;
        for (; count < kMaxSymbols; ++count) {
            // Above the bits that are left, zeros are shifted in: a code that needs them is none.
            const Single& next = singles[i >> used];
            if (next.length == 0 || used + next.length > tableBits_) {
                break;
            }
            entry |= Entry{next.value} << (kSymbolsAt + 8 * count);
            used += next.length;
        }
        table_[i] = entry | static_cast<Entry>(used) | static_cast<Entry>(count) << kCountAt;
    }
}

bool HuffmanDecoder::decode(std::string_view code, char* out, std::size_t length) const
{
    constexpr int kLookups = 4;
    static_assert(kLookups * kMaxTableBits <= 64 - 7, "a step's bits come from one load");
    // A step may write so many bytes, the last of its eight-byte stores included.
    constexpr std::size_t kStepBytes = (kLookups - 1) * kMaxSymbols + 8;

    const Walker walker(tree_, code);
    const Entry* const table = table_.data();
    const std::uint64_t mask = table_.size() - 1;
    char* const end = out + length;
    std::size_t at = 0; // [bits]
    while (static_cast<std::size_t>(end - out) >= kStepBytes && at + 64 <= walker.bits()) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, code.data() + at / 8, sizeof bits);
        bits >>= at % 8;
        std::uint64_t used = 0;
        Entry entry = 0;
        for (int i = 0; i < kLookups; ++i) {
            entry = table[bits & mask];
            const Entry symbols = entry >> kSymbolsAt;
            std::memcpy(out, &symbols, sizeof symbols);
            out += entry >> kCountAt & 0xff;
            bits >>= entry & 63;
            used += entry & 63;
        }
        at += used;
        // An entry of a long code is 0 and takes no bits, so that all after it are the same.
        if (entry == 0) [[unlikely]] {
            if (!walker.read(at, *out++)) {
                return false;
            }
        }
    }
    for (; out != end; ++out) {
        if (!walker.read(at, *out)) {
            return false;
        }
    }
    return true;
}

} // namespace tvw::detail
