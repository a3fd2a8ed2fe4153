/// The libraries that the program stands on.
#pragma once

#include <string>
#include <vector>

namespace tvw::rgs::app {

struct LinkedLibrary
{
    std::string key;     ///< begins the names of its widgets
    std::string title;   ///< with the version that the process runs with, or was built with
    std::string licence; ///< its name in the folder of licence texts
    std::string package; ///< whose copyright file the system has
    std::string notice;  ///< in a sentence: where neither is there
};

[[nodiscard]] std::vector<LinkedLibrary> linkedLibraries();

/// The embedded text of the licence, else that which the system installed with the library, else
/// our notice.
[[nodiscard]] std::string licenceText(const LinkedLibrary& library);

} // namespace tvw::rgs::app
