/// Numbers in the element that a tool adds to its record for copies and tool files, which hold no
/// saved state.
#pragma once

#include "util/xml/element.h"

#include <string_view>

namespace tvw::rgs {

void writeCustomNumber(util::xml::Element& custom, std::string_view name, double value);

/// False, and value stays, when there is no such number.
bool readCustomNumber(const util::xml::Element& custom, std::string_view name, double& value);

} // namespace tvw::rgs
