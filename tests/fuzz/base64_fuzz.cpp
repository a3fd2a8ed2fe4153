#include "tests/fuzz/check.h"
#include "util/base64.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    RIGSTAGE_FUZZ_CHECK(tvw::base64Decode(tvw::base64Encode(input)) == input);
    if (const std::string bytes = tvw::base64Decode(input); !bytes.empty()) {
        // All but the spare bits of the last character and the padding come back.
        const std::string text = tvw::base64Encode(bytes);
        RIGSTAGE_FUZZ_CHECK(text.size() == size);
        RIGSTAGE_FUZZ_CHECK(text.compare(0, size - 4, input.substr(0, size - 4)) == 0);
    }
    return 0;
}
