/// Whole files: read at once, replaced at once.
#pragma once

#include "util/result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvw {

/// All bytes of the file. Fails, with path and cause, if it cannot be opened or read, a folder
/// among these.
[[nodiscard]] Result<std::string> readFile(const std::string& path);

/// The same into `out`; false, and `out` stays as it was, if it fails.
[[nodiscard]] bool readFile(const std::string& path, std::vector<std::byte>& out);

/// Makes `bytes` the content of the file: whoever opens it at any moment, a power cut in between
/// included, finds the old content or the new one, whole. The bytes go to a new file beside it,
/// which then takes its name and its permissions. On failure the file is as it was, nothing is
/// left beside it, and the reason holds path and cause. A symbolic link stays: what it points at is
/// replaced.
Status writeFileAtomically(const std::string& path, std::string_view bytes);

} // namespace tvw
