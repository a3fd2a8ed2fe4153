/// Reads numbers from the texts and attributes of elements.
#pragma once

#include <optional>
#include <string_view>

namespace tvw::util::xml {

/// The finite number that the text begins with, behind any blanks; what follows it is ignored, as
/// a stream does. Nothing if there is none. No locale.
[[nodiscard]] std::optional<double> number(std::string_view text);

/// The same for a decimal integer; nothing if it does not fit either.
[[nodiscard]] std::optional<long> integer(std::string_view text);

} // namespace tvw::util::xml
