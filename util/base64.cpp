#include "util/base64.h"

#include <array>
#include <cstdint>
#include <cstring>

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

} // namespace

std::string base64Encode(std::string_view bytes)
{
    const std::size_t groups = bytes.size() / 3;
    const std::size_t rest = bytes.size() % 3;
    std::string text(4 * (groups + (rest != 0 ? 1 : 0)), '=');
    for (std::size_t i = 0; i < groups; ++i) {
        encodeGroup(bytes.data() + 3 * i, text.data() + 4 * i);
    }
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
    for (std::size_t i = 0; i < whole; ++i) {
        if (!decodeGroup(text.data() + 4 * i, bytes.data() + 3 * i)) {
            return {};
        }
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
