#include "core/paths.h"

#include "core/platform/platform.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fnmatch.h>

namespace tvw::rgs::core {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kResources = ":/rigstage/data";

std::string& chosenUserPath()
{
    static std::string path;
    return path;
}

} // namespace

std::string getPath(std::string_view kind)
{
    if (kind == "data")
        return std::string(kResources);
    const std::string root = platform::installRoot();
    if (root.empty())
        return root;
    if (kind == "plugin")
        return root + "/rigstage/plugins/linux/x64";
    if (kind == "doc" || kind == "prm")
        return root + "/rigstage/" + std::string(kind);
    if (kind == "settings" || kind == "rgs" || kind.empty())
        return root + "/rigstage";
    return root;
}

std::string getUserPath()
{
    return chosenUserPath().empty() ? platform::userFolder() : chosenUserPath();
}

void setUserPath(std::string folder) { chosenUserPath() = std::move(folder); }

std::string getSettingsFile()
{
    const bool rootGiven = std::getenv("RIGSTAGE_ROOT") != nullptr;
    const bool besideInstallation = rootGiven && chosenUserPath().empty();
    return joinPath(besideInstallation ? getPath("settings") : getUserPath(), "/settings.json");
}

std::string joinPath(std::string_view a, std::string_view b) { return std::string(a).append(b); }

bool makeDirectories(const std::string& path)
{
    std::error_code failed;
    fs::create_directories(path, failed);
    return fs::is_directory(path, failed);
}

std::string fileName(std::string_view path)
{
    const std::size_t cut = path.find_last_of("/\\");
    return std::string(cut == std::string_view::npos ? path : path.substr(cut + 1));
}

std::vector<std::string> listFiles(const std::string& folder, std::string_view pattern, bool recursive)
{
    std::vector<std::string> found;
    const std::string wanted(pattern);
    const auto take = [&](const fs::directory_entry& entry) {
        std::error_code ignored;
        if (entry.is_regular_file(ignored) &&
            fnmatch(wanted.c_str(), entry.path().filename().c_str(), 0) == 0)
            found.push_back(entry.path().string());
    };
    std::error_code failed;
    if (recursive) {
        for (fs::recursive_directory_iterator at(folder, failed), end; !failed && at != end;
             at.increment(failed))
            take(*at);
    } else {
        for (fs::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed))
            take(*at);
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace tvw::rgs::core
