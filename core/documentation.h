/// Where the written documentation lies.
#pragma once

#include <string>

namespace tvw::rgs::core {

/// The whole path of a page of the documentation, as "tools/gyro.md": of the installed program,
/// else of the source tree that the program was built in. Empty: there is none.
[[nodiscard]] std::string findPage(const std::string& page);

} // namespace tvw::rgs::core
