#include "core/documentation.h"

#include "core/paths.h"

#include <filesystem>
#include <system_error>

namespace tvw::rgs::core {

std::string findPage(const std::string& page)
{
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (const std::string installed = joinPath(getPath("doc"), "/" + page);
        fs::is_regular_file(installed, ignored))
        return installed;
    // A build folder lies in its source tree: programs two folders deep, tests four.
    constexpr int kMostLevels = 5;
    fs::path folder = getPath("program");
    for (int level = 0; level < kMostLevels && !folder.empty(); ++level) {
        if (const fs::path candidate = folder / "docs" / page;
            fs::is_regular_file(candidate, ignored))
            return candidate.string();
        if (folder == folder.parent_path())
            break;
        folder = folder.parent_path();
    }
    return {};
}

} // namespace tvw::rgs::core
