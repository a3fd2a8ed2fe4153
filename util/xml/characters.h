/// Classes of bytes, those of the "C" locale, whatever locale the host has set.
#pragma once

#include <array>
#include <cstdint>

namespace tvw::util::xml {

inline constexpr std::uint8_t kSpace =
    1; ///< blank, tab, line feed, vertical tab, form feed, return
inline constexpr std::uint8_t kWritable = 2; ///< stands for itself in a written text or value
inline constexpr std::uint8_t kKeyEnd = 4;   ///< kSpace or "="

inline constexpr std::array<std::uint8_t, 256> kByteClass = [] {
    std::array<std::uint8_t, 256> table{};
    for (const char space : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        table[static_cast<unsigned char>(space)] = kSpace | kKeyEnd;
    }
    for (unsigned byte = 0x20; byte < 0x7F; ++byte) {
        if (byte != '&' && byte != '<') {
            table[byte] = static_cast<std::uint8_t>(table[byte] | kWritable);
        }
    }
    table['='] |= kKeyEnd;
    return table;
}();

[[nodiscard]] inline bool is(char byte, std::uint8_t classes)
{
    return (kByteClass[static_cast<unsigned char>(byte)] & classes) != 0;
}
[[nodiscard]] inline bool isSpace(char byte)
{
    return is(byte, kSpace);
}

} // namespace tvw::util::xml
