/// The data that is built into the program, below ":/rigstage/data".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::core {

/// Lets XML files be read from embedded paths. Any number of times.
void installResourceLoader();

/// Whole content of an embedded file; false when there is none.
bool readResource(const std::string& path, std::string& out);

/// Embedded files of a folder that match a pattern, as whole paths, sorted.
std::vector<std::string> listResources(const std::string& folder, std::string_view pattern);

} // namespace tvw::rgs::core
