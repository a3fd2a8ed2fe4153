#include "util/huffman_decoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>

namespace tvw::detail {

namespace {

constexpr int kCountAt = 8;
constexpr int kSymbolsAt = 16;
constexpr int kMaxSymbols = 6; ///< that fit an entry

/// 4096 entries of 8 bytes: as many as the first-level cache holds.
constexpr int kMaxTableBits = 11;
constexpr int kMinTableBits = 6;

constexpr int kLookups = 4; ///< of a step
/// A step may write so many bytes, the last of its eight-byte stores included.
constexpr std::size_t kStepBytes = (kLookups - 1) * kMaxSymbols + 8;

constexpr std::size_t kStreams = 4;
constexpr std::size_t kSegmentBits = 8 * 2048;
/// A window's bits and those that the last step may read behind them.
constexpr std::size_t kWindowBits = kStreams * kSegmentBits + 128;
/// Streams that do not meet within so many bits are not worth waiting for. Codes that are all of
/// one length never meet: after a few misses a single stream does the rest.
constexpr std::size_t kJoinBits = 4096;
constexpr int kMaxMisses = 4;
constexpr auto kNotJoined = static_cast<std::size_t>(-1);

} // namespace

struct HuffmanDecoder::Stream
{
    std::size_t at; ///< [bits]
    char* out;
};

struct HuffmanDecoder::Lookup
{
    const Entry* table;
    std::uint64_t mask;
    const char* code;
};

/// Walks single codes bit by bit: at the ends, and where a code is longer than the table's bits.
class HuffmanDecoder::Walker
{
public:
    Walker(const HuffmanTree& tree, std::string_view code) : tree_(tree), code_(code) {}

    [[nodiscard]] std::string_view code() const { return code_; }
    [[nodiscard]] std::size_t bits() const { return 8 * code_.size(); }

    /// Reads one symbol at bit `at`, which moves behind it; false, and `at` stands at the end of
    /// all bits, if these break off before.
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

    /// One symbol of a stream. A code that breaks off leaves it at the end of all bits.
    [[nodiscard, gnu::noinline]] Stream step(Stream stream) const
    {
        if (read(stream.at, *stream.out)) {
            ++stream.out;
        }
        return stream;
    }

private:
    const HuffmanTree& tree_;
    std::string_view code_;
};

/// Where the true sequence of symbols stands.
struct HuffmanDecoder::Output
{
    std::size_t at; ///< behind its last code [bits]
    char* next;
    char* end;

    [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(end - next); }
    /// As many of the symbols as there is still room for.
    void append(const char* first, const char* last)
    {
        const std::size_t count = std::min(static_cast<std::size_t>(last - first), left());
        std::memcpy(next, first, count);
        next += count;
    }
};

/// What the streams found: a code has at least one bit, and the last step may pass the end.
struct HuffmanDecoder::Window : std::array<std::array<char, kSegmentBits + 64>, kStreams>
{
};

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

/// One step of a stream: up to four lookups. Reads 64 bits from byte at / 8 on. All by value and in
/// locals: what a store of a char might change would be read again for each symbol.
inline HuffmanDecoder::Stream HuffmanDecoder::step(Stream stream, Lookup lookup,
                                                   const Walker& walker)
{
    static_assert(kLookups * kMaxTableBits <= 64 - 7, "a step's bits come from one load");
    std::uint64_t bits = 0;
    std::memcpy(&bits, lookup.code + stream.at / 8, sizeof bits);
    bits >>= stream.at % 8;
    Entry entry = 0;
    for (int i = 0; i < kLookups; ++i) {
        entry = lookup.table[bits & lookup.mask];
        const Entry symbols = entry >> kSymbolsAt;
        std::memcpy(stream.out, &symbols, sizeof symbols);
        stream.out += entry >> kCountAt & 0xff;
        bits >>= entry & 63;
        stream.at += entry & 63;
    }
    // An entry of a long code is 0 and takes no bits, so that all after it are the same.
    return entry != 0 ? stream : walker.step(stream);
}

/// Each lookup waits for the one before it, so one stream alone leaves the processor idle most of
/// the time. A decoder that starts amid the bits falls into step with the real codes after a few
/// symbols: so several start a segment apart and run side by side, and are then joined where the
/// one before meets the places at which the next one's codes begin. Where they do not meet, what
/// the next one found is dropped, and decoding goes on behind the one before; the answer is false.
bool HuffmanDecoder::decodeWindow(const Walker& walker, Window& window, Output& output) const
{
    const Lookup lookup{table_.data(), table_.size() - 1, walker.code().data()};
    std::array<Stream, kStreams> streams;
    const std::size_t begin = output.at;
    const auto endOf = [begin](std::size_t i) { return begin + (i + 1) * kSegmentBits; };
    for (std::size_t i = 0; i < kStreams; ++i) {
        streams[i] = {begin + i * kSegmentBits, window[i].data()};
    }
    const auto allRun = [&] {
        bool run = true;
        for (std::size_t i = 0; i < kStreams; ++i) {
            run &= streams[i].at < endOf(i);
        }
        return run;
    };
    while (allRun()) {
        for (Stream& stream : streams) {
            stream = step(stream, lookup, walker);
        }
    }
    for (std::size_t i = 0; i < kStreams; ++i) {
        while (streams[i].at < endOf(i)) {
            streams[i] = step(streams[i], lookup, walker);
        }
    }

    output.append(window[0].data(), streams[0].out);
    output.at = streams[0].at;
    for (std::size_t i = 1; i < kStreams; ++i) {
        const std::size_t skipped = join(walker, begin + i * kSegmentBits, streams[i].at, output);
        if (skipped == kNotJoined) {
            return false;
        }
        output.append(window[i].data() + skipped, streams[i].out);
        output.at = streams[i].at;
    }
    return true;
}

/// Goes on symbol by symbol behind `output` until it stands where a code of the stream that ran
/// from `begin` to `end` begins. Answers how many of that stream's symbols lie before this place.
std::size_t HuffmanDecoder::join(const Walker& walker, std::size_t begin, std::size_t end,
                                 Output& output)
{
    const std::size_t limit = std::min(end, begin + kJoinBits);
    std::size_t skipped = 0;
    char symbol = 0;
    while (output.at != begin) {
        if (begin > limit) {
            return kNotJoined;
        }
        const bool isBehind = output.at < begin;
        if (!walker.read(isBehind ? output.at : begin, symbol)) {
            return kNotJoined;
        }
        if (isBehind) {
            output.append(&symbol, &symbol + 1);
        } else {
            ++skipped;
        }
    }
    return skipped;
}

bool HuffmanDecoder::decode(std::string_view code, char* out, std::size_t length) const
{
    const Walker walker(tree_, code);
    Output output{0, out, out + length};
    if (walker.bits() >= kWindowBits) {
        const auto window = std::make_unique<Window>();
        int misses = 0;
        while (output.left() > 0 && output.at + kWindowBits <= walker.bits() &&
               misses < kMaxMisses) {
            misses += decodeWindow(walker, *window, output) ? 0 : 1;
        }
    }
    const Lookup lookup{table_.data(), table_.size() - 1, code.data()};
    Stream stream{output.at, output.next};
    while (static_cast<std::size_t>(output.end - stream.out) >= kStepBytes &&
           stream.at + 64 <= walker.bits()) {
        stream = step(stream, lookup, walker);
    }
    for (; stream.out != output.end; ++stream.out) {
        if (!walker.read(stream.at, *stream.out)) {
            return false;
        }
    }
    return true;
}

} // namespace tvw::detail
