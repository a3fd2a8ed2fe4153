/// What the fuzz targets share. A target is one file with a LLVMFuzzerTestOneInput that checks what
/// holds of its parser for any bytes; plain_main.cpp runs it where the compiler brings no fuzzer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Checks one input; always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tvw::fuzz {

/// Ends the program, so that whichever fuzzer runs keeps the input. `broken`: what does not hold.
inline void require(bool holds, const char* broken)
{
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", broken);
        std::abort();
    }
}

inline std::string_view asText(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace tvw::fuzz
