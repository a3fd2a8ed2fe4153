/// The product's version.
#pragma once

namespace tvw::rgs {

inline constexpr const char* kProductName = "Rigstage";
inline constexpr const char* kVersion = "0.1.0"; // as in the build's own description

} // namespace tvw::rgs
