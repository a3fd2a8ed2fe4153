/// Collects written bytes in a small buffer and hands them on in large pieces.
#pragma once

#include "util/xml/copy.h"

#include <cstddef>
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

    static constexpr std::size_t kLargestPiece = 1024; ///< [bytes]

    /// At least n bytes to write to, n <= kLargestPiece; advanceTo then tells
    /// how far they were used.
    char* room(std::size_t n)
    {
        if (n > static_cast<std::size_t>(buffer_ + sizeof buffer_ - at_)) {
            flush();
        }
        return at_;
    }

    void advanceTo(char* at) { at_ = at; }

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
        while (!text.empty()) {
            const std::string_view piece = text.substr(0, kLargestPiece);
            at_ = copyBytes(room(piece.size()), piece);
            text.remove_prefix(piece.size());
        }
    }

    /// Hands on the rest. Without it that is lost.
    void flush()
    {
        out_.append(buffer_, static_cast<std::size_t>(at_ - buffer_));
        at_ = buffer_;
    }

private:
    static constexpr std::size_t kShort = 16; ///< most names and keys [bytes]

    std::string& out_;
    char* at_ = buffer_;
    char buffer_[16 * 1024];
};

} // namespace tvw::util::xml
