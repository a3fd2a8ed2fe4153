/// Copies and compares short texts without a call: names, keys and values mostly have a few bytes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tvw::util::xml {

template <class Word>
Word wordAt(const char* from)
{
    Word word;
    std::memcpy(&word, from, sizeof word);
    return word;
}

/// Two words, which may overlap, at both ends of `size` bytes. Returns the end.
template <class Word>
char* storeEnds(char* to, std::size_t size, Word first, Word last)
{
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + size - sizeof last, &last, sizeof last);
    return to + size;
}

/// Returns the end of the copy.
inline char* copyBytes(char* to, std::string_view text)
{
    const std::size_t size = text.size();
    const char* const from = text.data();
    if (size > 16) {
        std::memcpy(to, from, size);
        return to + size;
    }
    if (size >= 8) {
        return storeEnds(to, size, wordAt<std::uint64_t>(from),
                         wordAt<std::uint64_t>(from + size - 8));
    }
    if (size >= 4) {
        return storeEnds(to, size, wordAt<std::uint32_t>(from),
                         wordAt<std::uint32_t>(from + size - 4));
    }
    for (const char byte : text) {
        *to++ = byte;
    }
    return to;
}

/// Whether two texts are the same.
inline bool equalBytes(std::string_view a, std::string_view b)
{
    const std::size_t size = a.size();
    if (size != b.size()) {
        return false;
    }
    const auto equalWords = [&](auto word) {
        using Word = decltype(word);
        const std::size_t last = size - sizeof(Word);
        return wordAt<Word>(a.data()) == wordAt<Word>(b.data()) &&
               wordAt<Word>(a.data() + last) == wordAt<Word>(b.data() + last);
    };
    if (size > 16) {
        return std::memcmp(a.data(), b.data(), size) == 0;
    }
    if (size >= 8) {
        return equalWords(std::uint64_t{});
    }
    if (size >= 4) {
        return equalWords(std::uint32_t{});
    }
    return std::equal(a.begin(), a.end(), b.begin());
}

} // namespace tvw::util::xml
