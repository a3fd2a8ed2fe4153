/// Counts what this program allocates.
#pragma once

#include <cstdint>

namespace tvw::rgs::tests {

/// Calls of operator new so far, in all threads.
std::uint64_t allocationCount();

} // namespace tvw::rgs::tests
