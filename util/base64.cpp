#include "util/base64.h"

#include <array>
#include <cstdint>
#include <cstring>
#ifdef __SSSE3__
#include <tmmintrin.h>
#endif

namespace tvw {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint32_t kInvalid = 0xffffffff;

/// The six bits of each character, kInvalid of all others.
constexpr std::array<std::uint32_t, 256> kValues = [] {
    std::array<std::uint32_t, 256> values{};
    values.fill(kInvalid);
    for (std::uint32_t i = 0; i < 64; ++i) {
        values[static_cast<unsigned char>(kAlphabet[i])] = i;
    }
    return values;
}();

std::uint32_t byteAt(const char* at)
{
    return static_cast<unsigned char>(*at);
}

void encodeGroup(const char* in, char* out)
{
    const std::uint32_t bits = byteAt(in) << 16 | byteAt(in + 1) << 8 | byteAt(in + 2);
    out[0] = kAlphabet[bits >> 18];
    out[1] = kAlphabet[bits >> 12 & 63];
    out[2] = kAlphabet[bits >> 6 & 63];
    out[3] = kAlphabet[bits & 63];
}

/// Three bytes; false if a character is not in the alphabet.
[[nodiscard]] bool decodeGroup(const char* in, char* out)
{
    const std::uint32_t a = kValues[byteAt(in)];
    const std::uint32_t b = kValues[byteAt(in + 1)];
    const std::uint32_t c = kValues[byteAt(in + 2)];
    const std::uint32_t d = kValues[byteAt(in + 3)];
    const std::uint32_t bits = a << 18 | b << 12 | c << 6 | d;
    out[0] = static_cast<char>(bits >> 16);
    out[1] = static_cast<char>(bits >> 8);
    out[2] = static_cast<char>(bits);
    return (a | b | c | d) != kInvalid;
}

#ifdef __SSSE3__

/// Sixteen characters from the first twelve of sixteen bytes.
void encodeWide(const char* in, char* out)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    // Each lane: a group of three as one number, the first byte highest; then its four parts of six
    // bits, the highest in the lowest byte.
    const __m128i group = _mm_shuffle_epi8(
        bytes, _mm_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1));
    const __m128i low =
        _mm_or_si128(_mm_srli_epi32(group, 18),
                     _mm_and_si128(_mm_srli_epi32(group, 4), _mm_set1_epi32(0x00003f00)));
    const __m128i high =
        _mm_or_si128(_mm_and_si128(_mm_slli_epi32(group, 10), _mm_set1_epi32(0x003f0000)),
                     _mm_and_si128(_mm_slli_epi32(group, 24), _mm_set1_epi32(0x3f000000)));
    const __m128i values = _mm_or_si128(low, high);
    // The alphabet is five runs; what turns a value into its character is looked up by run: 0 for
    // the small letters, 1 to 10 for the digits, 11 and 12 for the signs, 13 for the capitals.
    const __m128i capital = _mm_cmpgt_epi8(_mm_set1_epi8(26), values);
    const __m128i run = _mm_or_si128(_mm_subs_epu8(values, _mm_set1_epi8(51)),
                                     _mm_and_si128(capital, _mm_set1_epi8(13)));
    constexpr char kDigit = '0' - 52;
    const __m128i shift =
        _mm_setr_epi8('a' - 26, kDigit, kDigit, kDigit, kDigit, kDigit, kDigit, kDigit, kDigit,
                      kDigit, kDigit, '+' - 62, '/' - 63, 'A', 0, 0);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                     _mm_add_epi8(values, _mm_shuffle_epi8(shift, run)));
}

/// What turns the characters first to last into their values, the first into `value`; 0 for all
/// others. Adds to `known` those that it found.
__m128i shiftOfRun(__m128i text, char first, char last, int value, __m128i& known)
{
    const __m128i found = _mm_and_si128(_mm_cmpgt_epi8(text, _mm_set1_epi8(first - 1)),
                                        _mm_cmplt_epi8(text, _mm_set1_epi8(last + 1)));
    known = _mm_or_si128(known, found);
    return _mm_and_si128(found, _mm_set1_epi8(static_cast<char>(value - first)));
}

/// Twelve bytes, and four of no meaning behind them, from sixteen characters; false if one of these
/// is not in the alphabet.
[[nodiscard]] bool decodeWide(const char* in, char* out)
{
    const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    __m128i known = _mm_setzero_si128();
    __m128i shift = shiftOfRun(text, 'A', 'Z', 0, known);
    shift = _mm_or_si128(shift, shiftOfRun(text, 'a', 'z', 26, known));
    shift = _mm_or_si128(shift, shiftOfRun(text, '0', '9', 52, known));
    shift = _mm_or_si128(shift, shiftOfRun(text, '+', '+', 62, known));
    shift = _mm_or_si128(shift, shiftOfRun(text, '/', '/', 63, known));
    const __m128i values = _mm_add_epi8(text, shift);
    // Two values to twelve bits, two of these to a group of three bytes; its highest comes first.
    const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi16(0x0140));
    const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                     _mm_shuffle_epi8(groups, _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12,
                                                            -1, -1, -1, -1)));
    return _mm_movemask_epi8(known) == 0xffff;
}

#endif

/// Encodes whole groups of three bytes.
void encodeGroups(const char* in, std::size_t groups, char* out)
{
#ifdef __SSSE3__
    // Six groups are more than the sixteen bytes that a step reads.
    for (; groups >= 6; groups -= 4, in += 12, out += 16) {
        encodeWide(in, out);
    }
#endif
    for (; groups > 0; --groups, in += 3, out += 4) {
        encodeGroup(in, out);
    }
}

/// Decodes groups of four characters; false if one of these is not in the alphabet.
[[nodiscard]] bool decodeGroups(const char* in, std::size_t groups, char* out)
{
    bool sound = true;
#ifdef __SSSE3__
    // Six groups are more than the sixteen bytes that a step writes.
    for (; groups >= 6 && sound; groups -= 4, in += 16, out += 12) {
        sound = decodeWide(in, out);
    }
#endif
    for (; groups > 0 && sound; --groups, in += 4, out += 3) {
        sound = decodeGroup(in, out);
    }
    return sound;
}

} // namespace

std::string base64Encode(std::string_view bytes)
{
    const std::size_t groups = bytes.size() / 3;
    const std::size_t rest = bytes.size() % 3;
    std::string text(4 * (groups + (rest != 0 ? 1 : 0)), '=');
    encodeGroups(bytes.data(), groups, text.data());
    if (rest != 0) {
        char last[3] = {};
        char group[4] = {};
        std::memcpy(last, bytes.data() + 3 * groups, rest);
        encodeGroup(last, group);
        std::memcpy(text.data() + 4 * groups, group, rest + 1);
    }
    return text;
}

std::string base64Decode(std::string_view text)
{
    if (text.size() % 4 != 0 || text.empty()) {
        return {};
    }
    const std::size_t padding = text.back() != '=' ? 0 : text[text.size() - 2] == '=' ? 2 : 1;
    const std::size_t groups = text.size() / 4;
    const std::size_t whole = groups - (padding != 0 ? 1 : 0);
    std::string bytes(3 * groups, '\0');
    if (!decodeGroups(text.data(), whole, bytes.data())) {
        return {};
    }
    if (padding != 0) {
        char last[4] = {'A', 'A', 'A', 'A'};
        std::memcpy(last, text.data() + 4 * whole, 4 - padding);
        if (!decodeGroup(last, bytes.data() + 3 * whole)) {
            return {};
        }
    }
    bytes.resize(3 * groups - padding);
    return bytes;
}

} // namespace tvw
