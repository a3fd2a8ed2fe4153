/// Bytes as text: Base64 with the standard alphabet and "=" padding (RFC 4648, section 4), in one
/// line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tvw {

[[nodiscard]] std::string base64Encode(std::string_view bytes);
[[nodiscard]] inline std::string base64Encode(const void* bytes, std::size_t size)
{
    return base64Encode(std::string_view(static_cast<const char*>(bytes), size));
}

/// The bytes, or none at all if the text is not sound as a whole: its length is no multiple of 4, a
/// character is not in the alphabet (line breaks and blanks are none), or padding stands anywhere
/// but in the last one or two places. The bits of the last character that no byte takes are
/// ignored.
[[nodiscard]] std::string base64Decode(std::string_view text);

} // namespace tvw
