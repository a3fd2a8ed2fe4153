/// Collects written bytes in a small buffer and hands them on in large pieces.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tvw::util::xml {

class Sink
{
public:
    explicit Sink(std::string& out) : out_(out) {}
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    void put(char byte)
    {
        char* const at = room(1);
        *at = byte;
        at_ = at + 1;
    }
    void put(std::size_t count, char byte)
    {
        while (count-- > 0) {
            put(byte);
        }
    }
    void put(std::string_view text)
    {
        if (text.size() <= kShort) {
            at_ = copyShort(room(kShort), text);
            return;
        }
        while (!text.empty()) {
            const std::size_t size = std::min(text.size(), kLargestPiece);
            std::memcpy(room(size), text.data(), size);
            at_ += size;
            text.remove_prefix(size);
        }
    }

    /// Hands on the rest. Without it that is lost.
    void flush()
    {
        out_.append(buffer_, static_cast<std::size_t>(at_ - buffer_));
        at_ = buffer_;
    }

private:
    static constexpr std::size_t kLargestPiece = 1024; ///< [bytes]
    static constexpr std::size_t kShort = 16;          ///< most names and keys [bytes]

    template <class Word>
    static char* copyEnds(char* to, std::string_view text)
    {
        Word first;
        Word last;
        std::memcpy(&first, text.data(), sizeof first);
        std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
        std::memcpy(to, &first, sizeof first);
        std::memcpy(to + text.size() - sizeof last, &last, sizeof last);
        return to + text.size();
    }

    /// Copies up to kShort bytes without a call, in two words that may overlap.
    static char* copyShort(char* to, std::string_view text)
    {
        if (text.size() >= 8) {
            return copyEnds<std::uint64_t>(to, text);
        }
        if (text.size() >= 4) {
            return copyEnds<std::uint32_t>(to, text);
        }
        for (const char byte : text) {
            *to++ = byte;
        }
        return to;
    }

    /// At least n bytes to write to, n <= kLargestPiece.
    char* room(std::size_t n)
    {
        if (n > static_cast<std::size_t>(buffer_ + sizeof buffer_ - at_)) {
            flush();
        }
        return at_;
    }

    std::string& out_;
    char* at_ = buffer_;
    char buffer_[16 * 1024];
};

} // namespace tvw::util::xml
