#include "tests/fuzz/check.h"
#include "util/huffman.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    // A block of one symbol may say any length: one of 200 MiB is no fault, but slow.
    constexpr std::size_t kLengthAt = 12;
    const bool isLarge = size > 16 && data[kLengthAt + 3] > 0 && data[8] == 1 && data[9] == 0;
    if (!isLarge) {
        const tvw::Result<std::string> plain = tvw::decompress(input);
        RIGSTAGE_FUZZ_CHECK(plain || !plain.reason().empty());
        RIGSTAGE_FUZZ_CHECK(!plain || plain->size() <= 8 * size || data[8] == 1);
    }
    const std::string block = tvw::compress(input);
    const tvw::Result<std::string> back = tvw::decompress(block);
    RIGSTAGE_FUZZ_CHECK(back && *back == input);
    return 0;
}
