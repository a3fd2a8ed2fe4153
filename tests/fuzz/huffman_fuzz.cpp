/// Any bytes as a compressed block, and as what is to be compressed.
#include "tests/fuzz/fuzz.h"
#include "util/huffman.h"

#include <cstring>
#include <string>

namespace {

using tvw::fuzz::require;

/// A block of a single symbol has no bits and may stand for up to 256 MiB: sound, but too slow to
/// expand over and over.
bool isLongRun(std::string_view block)
{
    constexpr std::uint32_t kLong = 1 << 20;
    std::uint32_t header[4] = {};
    if (block.size() < sizeof header) {
        return false;
    }
    std::memcpy(header, block.data(), sizeof header);
    return header[2] == 1 && header[3] > kLong;
}

void decompressAnything(std::string_view block)
{
    const tvw::Result<std::string> bytes = tvw::decompress(block);
    if (!bytes) {
        require(!bytes.reason().empty(), "a block is refused without a reason");
        return;
    }
    require(*bytes == block || bytes->size() <= tvw::kMaxDecompressedSize, "a block is too large");
}

void compressAnything(std::string_view bytes)
{
    const std::string block = tvw::compress(bytes);
    const tvw::Result<std::string> again = tvw::decompress(block);
    require(static_cast<bool>(again), "a compressed block is refused");
    require(*again == bytes, "bytes change when compressed and expanded");
    if (block.size() > 16) {
        // Cut within the table or within the bits; a single symbol has no bits to cut.
        require(!tvw::decompress(std::string_view(block).substr(0, block.size() - 1)),
                "a cut block is taken");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = tvw::fuzz::asText(data, size);
    if (!isLongRun(bytes)) {
        decompressAnything(bytes);
    }
    compressAnything(bytes);
    return 0;
}
