#include "tests/fuzz/check.h"
#include "util/base64.h"

#include <cstdint>

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string_view withoutPadding(std::string_view text)
{
    for (int i = 0; i < 2 && !text.empty() && text.back() == '='; ++i) {
        text.remove_suffix(1);
    }
    return text;
}

/// Told the plain way: whole groups, and but for the padding only characters of the alphabet.
bool isSound(std::string_view text)
{
    return text.size() % 4 == 0 &&
           withoutPadding(text).find_first_not_of(kAlphabet) == std::string_view::npos;
}

/// Sound text gives its bytes, any other none.
void tryText(std::string_view text)
{
    const std::string bytes = tvw::base64Decode(text);
    const std::string_view digits = withoutPadding(text);
    RIGSTAGE_FUZZ_CHECK(bytes.size() == (isSound(text) ? digits.size() * 3 / 4 : 0));
    if (!bytes.empty()) {
        // All but the spare bits of the last character come back.
        const std::string again = tvw::base64Encode(bytes);
        const std::string_view sure = digits.substr(0, digits.size() - 1);
        RIGSTAGE_FUZZ_CHECK(again.size() == text.size());
        RIGSTAGE_FUZZ_CHECK(std::string_view(again).substr(0, sure.size()) == sure);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string text = tvw::base64Encode(input);
    RIGSTAGE_FUZZ_CHECK(isSound(text) && text.size() == (size + 2) / 3 * 4);
    RIGSTAGE_FUZZ_CHECK(tvw::base64Decode(text) == input);
    tryText(input);
    // A long text with one byte of the input in it: whichever lane it falls into is looked at.
    if (size > 1) {
        std::string changed = text;
        changed[data[0] % changed.size()] = static_cast<char>(data[1]);
        tryText(changed);
    }
    return 0;
}
