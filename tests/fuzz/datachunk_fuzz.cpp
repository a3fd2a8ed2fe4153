/// Any bytes as a tool's save block.
#include "tests/fuzz/fuzz.h"
#include "util/datachunk.h"

#include <algorithm>
#include <cstring>

namespace {

using tvw::DataChunk;
using tvw::fuzz::require;

/// Reads as tools do: by name, single values straight from the payload. Answers the depth.
int readAll(const DataChunk& chunk)
{
    int depth = 0;
    for (std::size_t i = 0; i < chunk.memberCount(); ++i) {
        const DataChunk& member = chunk.memberAt(i);
        require(member.name().size() <= DataChunk::kMaxNameLength, "a name is too long");
        require(chunk.hasMember(member.name()), "a member is not found by its name");
        require(chunk.member(member.name()).name() == member.name(), "another member is found");
        double value = 0.0;
        require(member.readValue(value) == (member.payloadSize() >= sizeof value),
                "a value is read from a payload that does not hold it");
        depth = std::max(depth, 1 + readAll(member));
    }
    return depth;
}

bool isEmpty(const DataChunk& chunk)
{
    return chunk.name().empty() && chunk.payloadSize() == 0 && chunk.memberCount() == 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    DataChunk chunk(data, size);
    if (isEmpty(chunk)) {
        return 0;
    }
    require(readAll(chunk) <= DataChunk::kMaxDepth, "a block nests deeper than allowed");
    // Each tree has one binary form: what was read is what is written.
    std::size_t written = 0;
    const void* const form = chunk.serialize(&written);
    require(form != nullptr && written <= size, "a block that was read takes more bytes written");
    require(std::memcmp(form, data, written) == 0, "a block is written otherwise than it was read");
    DataChunk copy = chunk;
    std::size_t again = 0;
    const void* const secondForm = copy.serialize(&again);
    require(secondForm != nullptr && again == written, "a copy has another size");
    return 0;
}
