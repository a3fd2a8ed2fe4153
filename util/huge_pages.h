/// Large blocks on large pages.
///
/// What a block of many megabytes costs is its pages: each is faulted in at its first touch, and
/// each needs a translation that the processor holds but few of. Where the system grants pages of 2
/// MiB on request, blocks from there on ask for them; elsewhere they are ordinary memory.
#pragma once

#include <cstddef>
#include <new>

namespace tvw {

inline constexpr std::size_t kHugePage = std::size_t{2} << 20; ///< [bytes]

/// Memory of that size [bytes], not initialised, aligned for any type; from kHugePage on to it.
/// Throws std::bad_alloc. Given back by `releaseHuge`.
[[nodiscard]] void* allocateHuge(std::size_t size);

/// Null is ignored.
void releaseHuge(void* memory) noexcept;

/// For the containers of the library: `std::vector<T, HugePageAllocator<T>>`.
template <class T>
struct HugePageAllocator
{
    using value_type = T;

    HugePageAllocator() = default;
    template <class U>
    explicit(false) HugePageAllocator(const HugePageAllocator<U>&) noexcept
    {
    }

    [[nodiscard]] T* allocate(std::size_t count)
    {
        if (count > static_cast<std::size_t>(-1) / sizeof(T))
            throw std::bad_array_new_length();
        return static_cast<T*>(allocateHuge(count * sizeof(T)));
    }
    void deallocate(T* memory, std::size_t) noexcept { releaseHuge(memory); }

    bool operator==(const HugePageAllocator&) const = default;
};

} // namespace tvw
