/// Where the system's files lie. Paths have "/" between their parts and none at their end.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::core {

/// The folder of a kind: "data" (embedded, begins with ":"), "plugin", "doc", "prm", "settings", "" or
/// "rgs"; any other kind gives the install root alone. Empty, but for "data", without an install root.
std::string getPath(std::string_view kind);

/// The folder of the user's own files: profiles below "data", saved tools in "prm", settings and the
/// journal of the take in progress. Empty when there is none.
std::string getUserPath();

/// Takes another folder for the user's files; empty goes back to the platform's.
void setUserPath(std::string folder);

/// With an install root given by the environment its own; else the user's, since an installed program
/// can't write beside itself.
std::string getSettingsFile();

/// The two texts as they are, one behind the other.
std::string joinPath(std::string_view a, std::string_view b);

/// Makes the folder and all that it lies in. Whether it is there afterwards.
bool makeDirectories(const std::string& path);

/// What stands behind the last "/" or "\".
std::string fileName(std::string_view path);

/// Paths of the files below a folder whose names match a pattern ("*" and "?"), sorted.
std::vector<std::string> listFiles(const std::string& folder, std::string_view pattern, bool recursive);

} // namespace tvw::rgs::core
