#include "tests/support/plain_huffman.h"
#include "util/huffman.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tvw {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

std::string le32(std::uint32_t value)
{
    std::string out;
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(static_cast<char>(value >> shift));
    }
    return out;
}

/// Magic, version, and what a case says.
std::string blockOf(std::uint32_t symbols, std::uint32_t length, const std::string& rest)
{
    return "\xca\x31\x53\x00"s + le32(100) + le32(symbols) + le32(length) + rest;
}

std::string leaf(char value, std::uint32_t frequency)
{
    return value + le32(frequency);
}

struct Case
{
    const char* name;
    std::string plain, block;
};

/// Trees and bits worked out by hand.
const Case kBothWays[] = {
    {"nothing", "", blockOf(0, 0, "")},
    {"one value has no bits", "zzzzz", blockOf(1, 5, leaf('z', 5))},
    // b = 0, a = 1; 1 1 0 from the lowest bit up is 3.
    {"two values", "aab", blockOf(2, 3, leaf('b', 1) + leaf('a', 2) + "\x03")},
    // The pair of c and d weighs 2 and goes behind a and b: c 00, d 01, a 10, b 11.
    {"a new node goes behind equal weights", "aabbcd",
     blockOf(4, 6, leaf('c', 1) + leaf('d', 1) + leaf('a', 2) + leaf('b', 2) + "\xf5\x08")},
};

TEST(Huffman, WritesAndReadsBlocks)
{
    for (const Case& c : kBothWays) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(compress(c.plain), c.block);
        const Result<std::string> plain = decompress(c.block);
        ASSERT_TRUE(plain) << plain.reason();
        EXPECT_EQ(*plain, c.plain);
    }
}

const Case kReadOnly[] = {
    // As stored: c and b pair up first; a = 0, c = 10, b = 11.
    {"the stored order of equal frequencies decides", "abc",
     blockOf(3, 3, leaf('c', 1) + leaf('b', 1) + leaf('a', 1) + "\x0e")},
    // 5 and 9 pair to 14, which goes before the 20; these two pair to 34 behind the 1; the 1 and
    // the 34 are the last two: d 0, c 11, a 100, b 101.
    {"unsorted frequencies stay unsorted", "dcab",
     blockOf(4, 4, leaf('a', 5) + leaf('b', 9) + leaf('c', 20) + leaf('d', 1) + "\x4e\x01")},
    {"bytes behind the last code are ignored", "ab",
     blockOf(2, 2, leaf('b', 1) + leaf('a', 2) + "\x01garbage")},
    {"text passes", "<?xml version=\"1.0\"?>\n<a/>\n", "<?xml version=\"1.0\"?>\n<a/>\n"},
    {"an unfinished header passes", "\xca\x31\x53", "\xca\x31\x53"},
    {"another version passes", "\xca\x31\x53\x00"s + le32(101) + le32(0) + le32(0),
     "\xca\x31\x53\x00"s + le32(101) + le32(0) + le32(0)},
    {"257 symbols pass", blockOf(257, 1, "x"), blockOf(257, 1, "x")},
    {"a negative count passes", blockOf(0xffffffff, 1, "x"), blockOf(0xffffffff, 1, "x")},
};

TEST(Huffman, ReadsWhatOthersWrote)
{
    for (const Case& c : kReadOnly) {
        SCOPED_TRACE(c.name);
        const Result<std::string> plain = decompress(c.block);
        ASSERT_TRUE(plain) << plain.reason();
        EXPECT_EQ(*plain, c.plain);
    }
}

struct BadCase
{
    const char* name;
    std::string block;
    const char* reason;
};
const BadCase kBad[] = {
    {"records cut off", blockOf(2, 2, leaf('b', 1) + "a\x02"), "within its table"},
    {"no records", blockOf(256, 2, ""), "within its table"},
    {"too large", blockOf(1, (256u << 20) + 1, leaf('a', 1)), "268435457 bytes"},
    {"length without symbols", blockOf(0, 1, ""), "ends early"},
    {"more bytes than bits", blockOf(2, 9, leaf('b', 1) + leaf('a', 2) + "\xff"), "ends early"},
    {"bits end within a code", blockOf(3, 8, leaf('c', 1) + leaf('b', 1) + leaf('a', 1) + "\xff"),
     "ends early"},
    {"claims much, has little",
     blockOf(2, 256u << 20, leaf('b', 1) + leaf('a', 2) + "\xff\xff\xff"), "ends early"},
};

TEST(Huffman, RefusesBrokenBlocks)
{
    for (const BadCase& c : kBad) {
        SCOPED_TRACE(c.name);
        const Result<std::string> plain = decompress(c.block);
        ASSERT_FALSE(plain);
        EXPECT_THAT(plain.reason(), HasSubstr(c.reason));
    }
}

/// Byte i occurs as often as Fibonacci's number i: the deepest tree that a length allows.
std::string fibonacciBytes(int values)
{
    std::string bytes;
    std::size_t a = 1;
    std::size_t b = 1;
    for (int i = 0; i < values; ++i) {
        bytes.append(a, static_cast<char>(i * 7));
        b = std::exchange(a, b) + b;
    }
    std::shuffle(bytes.begin(), bytes.end(), std::mt19937(5));
    return bytes;
}

std::string randomBytes(std::size_t size, int values)
{
    std::mt19937 random(static_cast<unsigned>(size));
    std::string bytes(size, '\0');
    for (char& c : bytes) {
        c = static_cast<char>(random() % static_cast<unsigned>(values));
    }
    return bytes;
}

/// Eight values equally often: all codes have three bits, and a decoder that starts amid them never
/// falls into step unless it starts at a code.
std::string equalLengthBytes(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes.push_back(static_cast<char>('a' + i % 8));
    }
    std::shuffle(bytes.begin(), bytes.end(), std::mt19937(9));
    return bytes;
}

TEST(Huffman, KeepsBytesOfEveryKind)
{
    std::vector<std::string> inputs{fibonacciBytes(20),      fibonacciBytes(25),
                                    randomBytes(70001, 256), randomBytes(40000, 3),
                                    randomBytes(9999, 40),   equalLengthBytes(160000)};
    for (std::size_t size = 2; size < 70; ++size) {
        inputs.push_back("ab" + randomBytes(size, 90));
    }
    for (const std::string& input : inputs) {
        SCOPED_TRACE(input.size());
        const std::string block = compress(input);
        EXPECT_TRUE(test::PlainDecoder(block).decode() == input);
        const Result<std::string> plain = decompress(block);
        ASSERT_TRUE(plain) << plain.reason();
        EXPECT_TRUE(*plain == input);
    }
}

TEST(Huffman, EveryCutOfABlockFails)
{
    const std::string block = compress(fibonacciBytes(16));
    for (std::size_t size = 16; size < block.size(); ++size) {
        EXPECT_FALSE(decompress(std::string_view(block).substr(0, size))) << size;
    }
}

/// The same where several streams decode side by side, at their ends above all.
TEST(Huffman, CutsOfALongBlockFail)
{
    const std::string block = compress(randomBytes(30000, 100));
    for (std::size_t cut = 1; cut < block.size() - 600; cut += 97) {
        EXPECT_FALSE(decompress(std::string_view(block).substr(0, block.size() - cut))) << cut;
    }
}

} // namespace
} // namespace tvw
