/// The storage of key tracks: blocks of keys that several states of a track may share.
///
/// A long take's cost is the first touch of fresh memory. So blocks are never moved while a track
/// grows, and a block that nobody needs any more waits in a pool for the next take. A block with
/// more than one user is never written to: this is what makes a remembered state of a track free.
///
/// Main thread only: neither the pool nor the counts are guarded.
#pragma once

#include "adaptor/stage/flicks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>
#include <vector>

namespace tvw::rgs::stage {

template <class T>
struct TrackKey
{
    Flicks time = 0;
    T value{};
};

namespace detail {

template <class T>
struct KeyBlock
{
    using Key = TrackKey<T>;
    static_assert(std::is_trivially_copyable_v<Key>);

    std::uint32_t users;
    std::uint32_t count;
    std::uint32_t capacity;
    std::uint32_t sizeClass;

    [[nodiscard]] Key* keys() noexcept { return reinterpret_cast<Key*>(this + 1); }
    [[nodiscard]] const Key* keys() const noexcept
    {
        return reinterpret_cast<const Key*>(this + 1);
    }
    [[nodiscard]] bool full() const noexcept { return count == capacity; }
};

/// Free blocks by size class, one pool for each kind of key.
template <class T>
class KeyBlockPool
{
public:
    using Block = KeyBlock<T>;
    static constexpr int kClasses = 3;

    /// Keys in a block of the class: a few for the many nodes that hardly move, 64 KiB for takes.
    static constexpr std::uint32_t capacityOf(std::uint32_t sizeClass) noexcept
    {
        constexpr std::uint32_t kLargest = 65536 / sizeof(TrackKey<T>);
        return sizeClass == 0 ? 8 : sizeClass == 1 ? 64 : kLargest;
    }

    /// The pool outlives every track, static ones too: it is never destroyed.
    static KeyBlockPool& instance()
    {
        static auto* const pool = new KeyBlockPool;
        return *pool;
    }

    /// An empty block with one user. Throws std::bad_alloc.
    Block* take(std::uint32_t sizeClass)
    {
        std::vector<Block*>& free = free_[sizeClass];
        if (free.empty())
            refill(sizeClass);
        Block* const block = free.back();
        free.pop_back();
        block->users = 1;
        block->count = 0;
        return block;
    }

    /// Ends one use; the last one frees the block.
    void drop(Block* block) noexcept
    {
        if (--block->users == 0)
            free_[block->sizeClass].push_back(block); // room was reserved when the block was made
    }

    /// Has at least `count` free blocks at hand, so that as many `take`s allocate nothing.
    void reserve(std::uint32_t sizeClass, std::size_t count)
    {
        while (free_[sizeClass].size() < count)
            refill(sizeClass);
    }

    /// Memory of the free blocks [bytes].
    [[nodiscard]] std::size_t freeBytes() const noexcept
    {
        std::size_t bytes = 0;
        for (std::uint32_t c = 0; c < kClasses; ++c)
            bytes += free_[c].size() * (sizeof(Block) + capacityOf(c) * sizeof(TrackKey<T>));
        return bytes;
    }

    /// Gives the memory of all free blocks back.
    void trim() noexcept
    {
        for (int c = 0; c < kClasses; ++c) {
            made_[c] -= free_[c].size();
            for (Block* const block : free_[c])
                ::operator delete(block);
            free_[c].clear();
        }
    }

private:
    void refill(std::uint32_t sizeClass)
    {
        const std::uint32_t capacity = capacityOf(sizeClass);
        std::vector<Block*>& free = free_[sizeClass];
        std::size_t& made = made_[sizeClass];
        if (made + 1 > free.capacity())
            free.reserve(2 * (made + 1));
        void* const memory = ::operator new(sizeof(Block) + capacity * sizeof(TrackKey<T>));
        free.push_back(new (memory) Block{0, 0, capacity, sizeClass});
        ++made;
    }

    std::array<std::vector<Block*>, kClasses> free_;
    std::array<std::size_t, kClasses> made_{};
};

} // namespace detail
} // namespace tvw::rgs::stage
