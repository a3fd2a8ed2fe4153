#include "tests/plugins/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::uint64_t> count{0};

[[maybe_unused]] void* counted(std::size_t size)
{
    ++count;
    if (void* const memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// Under a sanitizer its own operators stay: it pairs each with its twin.
#if !RIGSTAGE_SANITIZED
void* operator new(std::size_t size) { return counted(size); }
void* operator new[](std::size_t size) { return counted(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
#endif

namespace tvw::rgs::tests {

std::uint64_t allocationCount() { return count; }

} // namespace tvw::rgs::tests
