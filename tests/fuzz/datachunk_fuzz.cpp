#include "tests/fuzz/check.h"
#include "util/datachunk.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

/// Reads each member as tools do, and answers how deep the chunk nests.
int tryMembers(const tvw::DataChunk& chunk)
{
    int depth = 0;
    for (std::size_t i = 0; i < chunk.memberCount(); ++i) {
        const tvw::DataChunk& member = chunk.memberAt(i);
        double value = 0;
        RIGSTAGE_FUZZ_CHECK(member.name().size() <= tvw::DataChunk::kMaxNameLength);
        RIGSTAGE_FUZZ_CHECK(chunk.member(member.name()).name() == member.name());
        RIGSTAGE_FUZZ_CHECK(member.readValue(value) == (member.payloadSize() >= sizeof value));
        depth = std::max(depth, 1 + tryMembers(member));
    }
    return depth;
}

} // namespace

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
    RIGSTAGE_FUZZ_CHECK(tryMembers(chunk) <= tvw::DataChunk::kMaxDepth);
    return 0;
}
