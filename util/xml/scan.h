/// Searches bytes sixteen at a time, within a text that has some room behind its end.
#pragma once

#include <bit>
#include <cstddef>
#include <emmintrin.h>

namespace tvw::util::xml {

/// How many bytes behind the end of a text must be readable, whatever they hold.
inline constexpr std::size_t kScanPadding = sizeof(__m128i);

/// Bit i is set where byte i is the wanted one.
inline unsigned matches(__m128i bytes, char wanted)
{
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(wanted))));
}

/// The first such byte in [at, end), else end.
inline char* findByte(char* at, char* end, char wanted)
{
    for (; at < end; at += sizeof(__m128i)) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        if (const unsigned found = matches(bytes, wanted); found != 0) {
            char* const place = at + std::countr_zero(found);
            return place < end ? place : end;
        }
    }
    return end;
}

struct Content
{
    char* end;
    bool hasAmpersand; ///< perhaps; surely not if false
};

/// The same, and whether there may be an ampersand before it.
inline Content findContent(char* at, char* end, char wanted)
{
    bool hasAmpersand = false;
    for (; at < end; at += sizeof(__m128i)) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const unsigned found = matches(bytes, wanted);
        const unsigned ampersands = matches(bytes, '&');
        if (found != 0) {
            const unsigned before = (found & (0U - found)) - 1;
            char* const place = at + std::countr_zero(found);
            return {place < end ? place : end, hasAmpersand || (ampersands & before) != 0};
        }
        hasAmpersand = hasAmpersand || ampersands != 0;
    }
    return {end, hasAmpersand};
}

} // namespace tvw::util::xml
