/// A number as a profile holds it.
#pragma once

#include "util/xml/element.h"

#include <optional>

namespace tvw::rgs::core::configadaptor {

/// Of an "item": the bytes of a double as Base64, or text. Nothing when there is no item, or none
/// that is a number in it.
[[nodiscard]] std::optional<double> storedNumber(const util::xml::Element& item);

} // namespace tvw::rgs::core::configadaptor
