/// Memory of one tree: handed out piece by piece, given back all at once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>

namespace tvw::util::xml {

class Arena
{
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena()
    {
        while (blocks_ != nullptr) {
            Block* const next = blocks_->next;
            ::operator delete(blocks_);
            blocks_ = next;
        }
    }

    /// Uninitialised room for n bytes, of no particular alignment.
    char* bytes(std::size_t n)
    {
        if (n > static_cast<std::size_t>(end_ - at_)) {
            return addBlock(n);
        }
        char* const room = at_;
        at_ += n;
        return room;
    }

    /// Uninitialised room for n objects of T, which must need no destruction.
    template <class T>
    T* array(std::size_t n)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        const auto misfit = reinterpret_cast<std::uintptr_t>(at_) % alignof(T);
        const std::size_t padding = misfit == 0 ? 0 : alignof(T) - misfit;
        const std::size_t size = n * sizeof(T);
        if (padding + size > static_cast<std::size_t>(end_ - at_)) {
            return reinterpret_cast<T*>(addBlock(size));
        }
        char* const room = at_ + padding;
        at_ = room + size;
        return reinterpret_cast<T*>(room);
    }

    /// Takes back what lies behind `end` of the piece that was handed out last.
    void giveBackFrom(const void* end, const void* pieceEnd)
    {
        if (pieceEnd == at_) {
            at_ -= static_cast<const char*>(pieceEnd) - static_cast<const char*>(end);
        }
    }

    char* copy(std::string_view text)
    {
        if (text.empty()) {
            return nullptr;
        }
        char* const room = bytes(text.size());
        std::memcpy(room, text.data(), text.size());
        return room;
    }

    std::size_t parsedBytes = 0; ///< length of the texts that were parsed into it

private:
    struct alignas(std::max_align_t) Block
    {
        Block* next;
    };
    static constexpr std::size_t kFirstBlock = 512;         ///< most trees are a few tags [bytes]
    static constexpr std::size_t kLargestBlock = 64 * 1024; ///< unless one piece needs more [bytes]

    /// Room for n bytes at the begin of a new block. A large piece gets a block of its own, so that
    /// what is left of the current one is not lost.
    char* addBlock(std::size_t n)
    {
        const bool alone = n > nextBlock_ / 2;
        const std::size_t room = alone ? n : nextBlock_ - sizeof(Block);
        auto* const block = static_cast<Block*>(::operator new(sizeof(Block) + room));
        block->next = blocks_;
        blocks_ = block;
        char* const begin = reinterpret_cast<char*>(block + 1);
        if (!alone) {
            at_ = begin + n;
            end_ = begin + room;
            nextBlock_ = std::min(2 * nextBlock_, kLargestBlock);
        }
        return begin;
    }

    char* at_ = nullptr;
    char* end_ = nullptr;
    Block* blocks_ = nullptr;
    std::size_t nextBlock_ = kFirstBlock;
};

/// Sizes are kept in 32 bits. Throws std::length_error beyond.
inline std::uint32_t checkedSize(std::size_t size)
{
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("XML: more than 4 GiB in one part of a tree");
    }
    return static_cast<std::uint32_t>(size);
}

/// A copy of the first `count` of `from` with room for `capacity`.
template <class T>
T* regrown(Arena& arena, const T* from, std::size_t count, std::size_t capacity)
{
    T* const room = arena.array<T>(capacity);
    std::copy_n(from, count, room);
    return room;
}

} // namespace tvw::util::xml
