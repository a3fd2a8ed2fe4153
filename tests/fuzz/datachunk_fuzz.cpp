#include "tests/fuzz/check.h"
#include "util/datachunk.h"

#include <cstdint>

/// A chunk that could be read is written as the bytes it was read from; any other is empty.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tvw::DataChunk chunk(data, size);
    std::size_t written = 0;
    const void* const bytes = chunk.serialize(&written);
    RIGSTAGE_FUZZ_CHECK(bytes != nullptr);
    const bool isEmpty =
        chunk.name().empty() && chunk.payloadSize() == 0 && chunk.memberCount() == 0;
    RIGSTAGE_FUZZ_CHECK(isEmpty || (written <= size && std::memcmp(bytes, data, written) == 0));
    const tvw::DataChunk again(bytes, written);
    RIGSTAGE_FUZZ_CHECK(again.memberCount() == chunk.memberCount());
    double value = 0;
    (void)chunk.member("a").readValue(value);
    return 0;
}
