/// Counts what the test program allocates through operator new.
#pragma once

#include <cstddef>

namespace tvw::test {

[[nodiscard]] std::size_t allocationCount() noexcept; ///< since the program's start

} // namespace tvw::test
