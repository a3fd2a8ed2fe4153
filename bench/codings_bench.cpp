/// The codings of saved tools against their usual peers: zlib that only codes (no matching, level
/// 1), and libmodpbase64. The bytes are those of a saved scene: text of tools and blocks of
/// doubles.

#include "bench/compare.h"
#include "util/base64.h"
#include "util/huffman.h"

#include <benchmark/benchmark.h>
#ifdef RIGSTAGE_HAS_MODPBASE64
#include <modp_b64.h>
#endif
#ifdef RIGSTAGE_HAS_ZLIB
#include <zlib.h>
#endif

#include <cmath>
#include <string>

namespace tvw::bench {
namespace {

/// Half text of items, half records of a smooth motion (time, three coordinates); 1 MiB.
std::string savedScene()
{
    constexpr std::size_t kHalf = 512 * 1024;
    std::string bytes;
    for (int i = 0; bytes.size() < kHalf; ++i) {
        const std::string index = std::to_string(i);
        bytes += "\t<property id=\"" + index + "\" name=\"Response Factor\">\n\t\t<value>" +
                 std::to_string(std::sin(i)) + "</value>\n\t\t<multiplier>1</multiplier>\n" +
                 "\t\t<device name=\"Joystick " + std::to_string(i % 4) + "\"/>\n\t</property>\n";
    }
    for (int i = 0; bytes.size() < 2 * kHalf; ++i) {
        const double t = i * 0.04;
        const double record[] = {t, 10 * std::sin(t), 2 + 0.1 * std::cos(3 * t), t * t};
        bytes.append(reinterpret_cast<const char*>(record), sizeof record);
    }
    return bytes;
}

[[maybe_unused]] void skip(benchmark::State& state, const char* why)
{
    state.SkipWithError(why);
}

#ifdef RIGSTAGE_HAS_ZLIB
std::string zlibEncode(const std::string& bytes)
{
    z_stream stream{};
    deflateInit2(&stream, 1, Z_DEFLATED, 15, 8, Z_HUFFMAN_ONLY);
    std::string out(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

std::string zlibDecode(const std::string& block, std::size_t size)
{
    z_stream stream{};
    inflateInit2(&stream, 15);
    std::string out(size, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(block.data()));
    stream.avail_in = static_cast<uInt>(block.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    inflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    inflateEnd(&stream);
    return out;
}

void huffmanEncode(benchmark::State& state)
{
    const std::string bytes = savedScene();
    const Result<std::string> back = decompress(compress(bytes));
    if (!back || *back != bytes || zlibDecode(zlibEncode(bytes), bytes.size()) != bytes) {
        return skip(state, "the bytes do not come back");
    }
    compare(
        state, [&bytes] { benchmark::DoNotOptimize(zlibEncode(bytes)); },
        [&bytes] { benchmark::DoNotOptimize(compress(bytes)); });
}

void huffmanDecode(benchmark::State& state)
{
    const std::string bytes = savedScene();
    const std::string theirs = zlibEncode(bytes);
    const std::string ours = compress(bytes);
    const Result<std::string> back = decompress(ours);
    if (!back || *back != bytes || zlibDecode(theirs, bytes.size()) != bytes) {
        return skip(state, "the bytes do not come back");
    }
    compare(
        state, [&] { benchmark::DoNotOptimize(zlibDecode(theirs, bytes.size())); },
        [&] { benchmark::DoNotOptimize(decompress(ours)); });
}
#else
void huffmanEncode(benchmark::State& state)
{
    skip(state, "skipped: zlib was not found");
}
void huffmanDecode(benchmark::State& state)
{
    skip(state, "skipped: zlib was not found");
}
#endif

#ifdef RIGSTAGE_HAS_MODPBASE64
std::string modpEncode(const std::string& bytes)
{
    std::string text(modp_b64_encode_len(bytes.size()), '\0');
    text.resize(modp_b64_encode(text.data(), bytes.data(), bytes.size()));
    return text;
}

std::string modpDecode(const std::string& text)
{
    std::string bytes(modp_b64_decode_len(text.size()), '\0');
    bytes.resize(modp_b64_decode(bytes.data(), text.data(), text.size()));
    return bytes;
}

void base64EncodeEntry(benchmark::State& state)
{
    const std::string bytes = savedScene();
    if (base64Encode(bytes) != modpEncode(bytes)) {
        return skip(state, "the texts differ");
    }
    compare(
        state, [&bytes] { benchmark::DoNotOptimize(modpEncode(bytes)); },
        [&bytes] { benchmark::DoNotOptimize(base64Encode(bytes)); });
}

void base64DecodeEntry(benchmark::State& state)
{
    const std::string bytes = savedScene();
    const std::string text = modpEncode(bytes);
    if (base64Decode(text) != bytes || modpDecode(text) != bytes) {
        return skip(state, "the bytes do not come back");
    }
    compare(
        state, [&text] { benchmark::DoNotOptimize(modpDecode(text)); },
        [&text] { benchmark::DoNotOptimize(base64Decode(text)); });
}
#else
void base64EncodeEntry(benchmark::State& state)
{
    skip(state, "skipped: libmodpbase64 was not found");
}
void base64DecodeEntry(benchmark::State& state)
{
    skip(state, "skipped: libmodpbase64 was not found");
}
#endif

BENCHMARK(huffmanEncode)->Name("huffman_encode_vs_zlib");
BENCHMARK(huffmanDecode)->Name("huffman_decode_vs_zlib");
BENCHMARK(base64EncodeEntry)->Name("base64_encode_vs_modp");
BENCHMARK(base64DecodeEntry)->Name("base64_decode_vs_modp");

} // namespace
} // namespace tvw::bench
