#include "util/base64.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

namespace tvw {
namespace {

using namespace std::string_literals;

/// The first seven from RFC 4648, section 10.
const std::pair<std::string, std::string> kCases[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"\0\0\0"s, "AAAA"},
    {"\xff\xff\xff", "////"},
    {"\xfb\xef\xbe", "++++"},
};

TEST(Base64, BothWays)
{
    for (const auto& [bytes, text] : kCases) {
        EXPECT_EQ(base64Encode(bytes), text);
        EXPECT_EQ(base64Decode(text), bytes);
    }
}

/// Long enough for any wide path and all its ends, against the definition by numbers: six bits at a
/// time, highest first.
TEST(Base64, EveryLengthAndEveryByte)
{
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::mt19937 random(1);
    for (std::size_t size = 0; size < 200; ++size) {
        std::string bytes(size, '\0');
        for (char& c : bytes) {
            c = static_cast<char>(random());
        }
        std::string text;
        for (std::size_t bit = 0; bit < 8 * size; bit += 6) {
            unsigned six = 0;
            for (std::size_t b = bit; b < bit + 6; ++b) {
                const bool set = b < 8 * size && (bytes[b / 8] >> (7 - b % 8) & 1) != 0;
                six = 2 * six + (set ? 1 : 0);
            }
            text += kAlphabet[six];
        }
        text.append((4 - text.size() % 4) % 4, '=');
        EXPECT_EQ(base64Encode(bytes), text);
        EXPECT_EQ(base64Decode(text), bytes);
    }
}

TEST(Base64, RefusesUnsoundTexts)
{
    for (const char* text :
         {"A", "AA", "AAA", "AAAAA", "=", "====", "A===", "=AAA", "A=AA", "AA=A", "AA==AAAA",
          "AAA=AAAA", "AAAAAA==AAAA", "AA A", "AAA\n", "AAA-", "AAA_", "AAA\x80", "AAAAAAA\n"}) {
        EXPECT_EQ(base64Decode(text), "") << text;
    }
}

/// One bad character anywhere spoils all, wherever a wide path would meet it.
TEST(Base64, FindsEachBadCharacterAtEachPlace)
{
    const std::string good = base64Encode(std::string(150, 'q'));
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (int c = 0; c < 256; ++c) {
            const bool inAlphabet =
                std::isalnum(c) != 0 || c == '+' || c == '/' || (c == '=' && at + 1 == good.size());
            std::string text = good;
            text[at] = static_cast<char>(c);
            EXPECT_EQ(base64Decode(text).empty(), !inAlphabet) << at << " " << c;
        }
    }
}

TEST(Base64, IgnoresTheSpareBitsOfTheLastCharacter)
{
    EXPECT_EQ(base64Decode("Zh=="), "f");
    EXPECT_EQ(base64Decode("Zm9="), "fo");
}

} // namespace
} // namespace tvw
