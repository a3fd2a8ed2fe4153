#include "util/huge_pages.h"

#include <cstdlib>
#include <sys/mman.h>

namespace tvw {

void* allocateHuge(std::size_t size)
{
    if (size < kHugePage) {
        void* const memory = std::malloc(size == 0 ? 1 : size);
        if (memory == nullptr)
            throw std::bad_alloc();
        return memory;
    }
    if (size > static_cast<std::size_t>(-1) - kHugePage)
        throw std::bad_alloc();
    const std::size_t whole = (size + kHugePage - 1) / kHugePage * kHugePage;
    void* const memory = std::aligned_alloc(kHugePage, whole);
    if (memory == nullptr)
        throw std::bad_alloc();
    madvise(memory, whole, MADV_HUGEPAGE); // a wish: without it the pages are ordinary ones
    return memory;
}

void releaseHuge(void* memory) noexcept
{
    std::free(memory);
}

} // namespace tvw
