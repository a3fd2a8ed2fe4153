/// Files of tool records (".prm"): plain XML text, or packed by the system's own compressor.
#pragma once

#include "util/result.h"
#include "util/xml/element.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {

/// The record of a file: an `RGT`, `rgs` or `RGT_Plugin`, each `RGT_Plugin` with its `path` set. The
/// reason, with the path in it, when the file can't be read or holds none.
Result<util::xml::Element> readSavedTools(const std::string& path);

/// The `RGT_Plugin` elements of a record, or the record itself when it is one.
std::vector<const util::xml::Element*> toolRecordsOf(const util::xml::Element& record);

} // namespace tvw::rgs::core
