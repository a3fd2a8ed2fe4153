/// Any bytes as Base64 text, and as what is to be written so.
#include "tests/fuzz/fuzz.h"
#include "util/base64.h"

#include <string>

namespace {

using tvw::fuzz::require;

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string_view withoutPadding(std::string_view text)
{
    for (int i = 0; i < 2 && !text.empty() && text.back() == '='; ++i) {
        text.remove_suffix(1);
    }
    return text;
}

/// Told the slow way: whole groups, all characters but the padding in the alphabet.
bool isSound(std::string_view text)
{
    return text.size() % 4 == 0 &&
           withoutPadding(text).find_first_not_of(kAlphabet) == std::string_view::npos;
}

void decodeAnything(std::string_view text)
{
    const std::string bytes = tvw::base64Decode(text);
    if (!isSound(text)) {
        require(bytes.empty(), "unsound text gives bytes");
        return;
    }
    const std::string_view digits = withoutPadding(text);
    require(bytes.size() == digits.size() * 3 / 4, "sound text gives another number of bytes");
    // The last digit may hold bits that no byte takes; all others come back.
    const std::string again = tvw::base64Encode(bytes);
    require(again.size() == text.size(), "text comes back in another length");
    require(digits.empty() ||
                again.compare(0, digits.size() - 1, digits, 0, digits.size() - 1) == 0,
            "text comes back changed");
}

void encodeAnything(std::string_view bytes)
{
    const std::string text = tvw::base64Encode(bytes);
    require(text.size() == (bytes.size() + 2) / 3 * 4 && isSound(text), "unsound text is written");
    require(tvw::base64Decode(text) == bytes, "bytes change when encoded and decoded");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input = tvw::fuzz::asText(data, size);
    decodeAnything(input);
    // Nearly every change makes the input unsound as text: so try its sound part too.
    decodeAnything(input.substr(0, input.find_first_not_of(kAlphabet)));
    encodeAnything(input);
    return 0;
}
