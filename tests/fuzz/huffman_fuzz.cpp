#include "tests/fuzz/check.h"
#include "tests/support/plain_huffman.h"
#include "util/huffman.h"

#include <cstdint>
#include <cstring>
#include <optional>

namespace {

using namespace tvw::test;

/// Whether the bytes say to be a block whose table is whole; `symbols` gets their number.
bool hasTable(std::string_view bytes, std::uint32_t& symbols)
{
    if (bytes.size() < kHeaderBytes || numberAt(bytes, 0) != 5452234 || numberAt(bytes, 4) != 100) {
        return false;
    }
    symbols = numberAt(bytes, 8);
    return symbols <= 256 && bytes.size() >= kHeaderBytes + kRecordBytes * symbols;
}

void tryBlock(std::string_view block)
{
    const tvw::Result<std::string> bytes = tvw::decompress(block);
    const std::optional<std::string> expected = PlainDecoder(block).decode();
    RIGSTAGE_FUZZ_CHECK(static_cast<bool>(bytes) == expected.has_value());
    RIGSTAGE_FUZZ_CHECK(!bytes || *bytes == *expected);
}

/// The block with its bits again and again: long ones are decoded in several places at once.
void tryLongBlock(std::string_view block, std::size_t codeAt)
{
    constexpr std::size_t kCodeBytes = 12000;
    const std::string_view code = block.substr(codeAt);
    std::string longBlock(block.substr(0, codeAt));
    while (!code.empty() && longBlock.size() < codeAt + kCodeBytes) {
        longBlock += code;
    }
    // As many symbols as there are bits are too many for all but the shortest codes; the last
    // bytes of the code say how many are wanted.
    const std::size_t bits = 8 * (longBlock.size() - codeAt);
    const std::uint32_t length =
        static_cast<std::uint32_t>(bits * static_cast<unsigned char>(longBlock.back()) / 255);
    std::memcpy(longBlock.data() + 12, &length, sizeof length);
    tryBlock(longBlock);
}

void tryAsBlock(std::string_view input)
{
    std::uint32_t symbols = 0;
    const bool isBlock = hasTable(input, symbols);
    // A block of one symbol may say any length: one of 200 MiB is no fault, but slow.
    if (isBlock && symbols == 1 && numberAt(input, 12) > 1 << 20) {
        return;
    }
    const tvw::Result<std::string> bytes = tvw::decompress(input);
    RIGSTAGE_FUZZ_CHECK(bytes || !bytes.reason().empty());
    if (!isBlock || symbols < 2) {
        return;
    }
    const std::size_t codeAt = kHeaderBytes + kRecordBytes * symbols;
    if (numberAt(input, 12) <= 8 * (input.size() - codeAt)) {
        tryBlock(input);
    } else {
        RIGSTAGE_FUZZ_CHECK(!bytes);
    }
    tryLongBlock(input, codeAt);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    tryAsBlock(input);
    const std::string block = tvw::compress(input);
    const tvw::Result<std::string> back = tvw::decompress(block);
    RIGSTAGE_FUZZ_CHECK(back && *back == input);
    RIGSTAGE_FUZZ_CHECK(size == 0 || !tvw::decompress(block.substr(0, block.size() - 1)));
    return 0;
}
