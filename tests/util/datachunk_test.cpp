#include "util/datachunk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace tvw {
namespace {

using namespace std::string_literals;

std::string le32(std::uint32_t value)
{
    std::string out(4, '\0');
    std::memcpy(out.data(), &value, 4);
    return out;
}

std::string head(std::uint32_t payload, std::uint32_t members, std::uint32_t name)
{
    return le32(payload) + le32(members) + le32(name);
}

std::string bytesOf(DataChunk& chunk)
{
    std::size_t size = 0;
    const void* const bytes = chunk.serialize(&size);
    return {static_cast<const char*>(bytes), size};
}

std::string payloadOf(const DataChunk& chunk)
{
    return {static_cast<const char*>(chunk.payload()), chunk.payloadSize()};
}

DataChunk parse(const std::string& block)
{
    return {block.data(), block.size()};
}

bool isEmpty(const DataChunk& chunk)
{
    return chunk.name().empty() && chunk.payloadSize() == 0 && chunk.memberCount() == 0;
}

/// Root "R" without payload; "a" with three bytes; "b" with a member "c" of one byte; "a" again.
DataChunk exampleTree()
{
    DataChunk root("R", nullptr, 0);
    root.addMember(DataChunk("a", "xyz", 3));
    DataChunk b("b", "", 0);
    b.addMember(DataChunk("c", "\xff", 1));
    root.addMember(b);
    root.addMember(DataChunk("a", "2nd", 3));
    return root;
}

std::string exampleBytes()
{
    return head(0, 3, 1) + "R" + head(3, 0, 1) + "a" + "xyz" + head(0, 1, 1) + "b" + head(1, 0, 1) +
           "c\xff" + head(3, 0, 1) + "a2nd";
}

TEST(DataChunk, WritesItsBinaryForm)
{
    DataChunk leaf("x", nullptr, 0);
    EXPECT_EQ(bytesOf(leaf), head(0, 0, 1) + "x");
    DataChunk tree = exampleTree();
    EXPECT_EQ(bytesOf(tree), exampleBytes());
    DataChunk none;
    EXPECT_EQ(bytesOf(none), head(0, 0, 0));
}

TEST(DataChunk, ReadsItsBinaryForm)
{
    const DataChunk tree = parse(exampleBytes() + "what lies behind is ignored");
    EXPECT_EQ(tree.name(), "R");
    ASSERT_EQ(tree.memberCount(), 3u);
    EXPECT_EQ(payloadOf(tree.member("a")), "xyz") << "the first of two";
    EXPECT_EQ(payloadOf(tree.memberAt(2)), "2nd");
    EXPECT_EQ(payloadOf(tree.member("b").member("c")), "\xff");
    EXPECT_TRUE(tree.hasMember("b"));
    EXPECT_FALSE(tree.hasMember("c"));
    EXPECT_TRUE(isEmpty(tree.member("c").member("of a missing one")));
}

const std::pair<const char*, std::string> kBad[] = {
    {"nothing", ""},
    {"half a header", head(0, 0, 0).substr(0, 11)},
    {"negative payload size", head(0xffffffff, 0, 1) + "x"},
    {"negative member count", head(0, 0xffffffff, 1) + "x"},
    {"negative name length", head(0, 0, 0xffffffff) + "x"},
    {"name longer than the block", head(0, 0, 2) + "x"},
    {"payload longer than the block", head(2, 0, 1) + "xy"},
    {"sizes whose sum is large", head(0x7fffffff, 0, 256) + std::string(300, 'x')},
    {"a member is missing", head(0, 1, 1) + "x"},
    {"many members are missing", head(0, 0x7fffffff, 1) + "x" + head(0, 0, 0)},
    {"a bad member behind a good one", head(0, 2, 0) + head(0, 0, 0) + head(0, 0, 300)},
    {"name of 257", head(0, 0, 257) + std::string(257, 'n')},
};

TEST(DataChunk, UnsoundBlocksGiveAnEmptyChunk)
{
    for (const auto& [name, block] : kBad) {
        EXPECT_TRUE(isEmpty(parse(block))) << name;
    }
    EXPECT_TRUE(isEmpty(DataChunk(nullptr, 0)));
    EXPECT_TRUE(isEmpty(DataChunk(nullptr, 100)));
    const std::string whole = exampleBytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_TRUE(isEmpty(parse(whole.substr(0, size)))) << "cut to " << size;
    }
}

TEST(DataChunk, NamesHoldUpTo256Bytes)
{
    const std::string name(256, 'n');
    EXPECT_EQ(parse(head(0, 0, 256) + name).name(), name);
    EXPECT_EQ(DataChunk(name + "more", nullptr, 0).name(), name);
}

TEST(DataChunk, NestsToItsLimitAndNoDeeper)
{
    const auto nested = [](int levels) {
        std::string block;
        for (int i = 0; i < levels; ++i) {
            block += head(0, 1, 0);
        }
        return block + head(0, 0, 1) + "x";
    };
    DataChunk deepest = parse(nested(DataChunk::kMaxDepth));
    EXPECT_EQ(deepest.memberCount(), 1u);
    EXPECT_EQ(bytesOf(deepest), nested(DataChunk::kMaxDepth));
    EXPECT_TRUE(isEmpty(parse(nested(DataChunk::kMaxDepth + 1))));
    EXPECT_TRUE(isEmpty(parse(nested(1000000))));

    DataChunk tooDeep;
    tooDeep.addMember(deepest);
    std::size_t size = 1;
    EXPECT_EQ(tooDeep.serialize(&size), nullptr);
    EXPECT_EQ(size, 0u);
}

TEST(DataChunk, CopiesAreTreesOfTheirOwn)
{
    DataChunk tree = exampleTree();
    DataChunk copy = tree;
    copy.addMember(DataChunk("more", nullptr, 0));
    EXPECT_EQ(bytesOf(tree), exampleBytes());
    tree.addMember(tree);
    EXPECT_EQ(tree.memberAt(3).memberCount(), 3u) << "a tree within itself";
    tree = tree.memberAt(1);
    EXPECT_EQ(bytesOf(tree), head(0, 1, 1) + "b" + head(1, 0, 1) + "c\xff") << "its own member";
}

TEST(DataChunk, ValuesKeepTheirDefaultWhereAMemberIsMissingOrShort)
{
    DataChunk chunk("values", nullptr, 0);
    chunk.addValue("double", 0.1);
    chunk.addValue("int", std::int32_t{-2});
    chunk.addValue("bool", true);
    chunk.addMember(DataChunk("odd bool", "\x80", 1));
    chunk.addMember(DataChunk("short", "1234567", 7));
    EXPECT_EQ(payloadOf(chunk.member("double")), "\x9a\x99\x99\x99\x99\x99\xb9\x3f");
    EXPECT_EQ(payloadOf(chunk.member("int")), "\xfe\xff\xff\xff");
    EXPECT_EQ(payloadOf(chunk.member("bool")), "\x01");

    double number = 7;
    EXPECT_FALSE(chunk.member("missing").readValue(number));
    EXPECT_FALSE(chunk.member("short").readValue(number));
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(chunk.member("double").readValue(number));
    EXPECT_EQ(number, 0.1);
    bool flag = false;
    EXPECT_TRUE(chunk.member("odd bool").readValue(flag));
    EXPECT_TRUE(flag);
    std::int32_t leading = 0;
    EXPECT_TRUE(chunk.member("double").readValue(leading)) << "the first bytes of a longer payload";
    EXPECT_EQ(leading, static_cast<std::int32_t>(0x9999999a));
}

} // namespace
} // namespace tvw
