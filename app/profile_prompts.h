/// The questions and messages that the windows of both kinds of profile have in common.
#pragma once

#include <optional>
#include <string>

class QWidget;

namespace tvw::unidevice {
class XMLFileManager;
}

namespace tvw::rgs::app {

/// A warning with an Ok; an empty title is the program's name.
void tell(const std::string& text, const std::string& title = {});
[[nodiscard]] bool confirm(const std::string& text, const std::string& title); ///< Yes and No

/// Asks for a profile's name until one can be taken, or the user gives up. One that is there
/// already is taken when the user agrees to overwrite it.
[[nodiscard]] std::optional<std::string>
askProfileName(QWidget* parent, const unidevice::XMLFileManager& profiles, const std::string& title,
               const std::string& prompt, const std::string& suggestion);

[[nodiscard]] bool hasProfile(const unidevice::XMLFileManager& profiles, const std::string& name);

/// The text with "_" for each character that a profile's name can't have.
[[nodiscard]] std::string asProfileName(std::string text);

/// Says why a profile was not stored. Whether it was. outcome: of XMLFileManager::store.
bool tellStored(int outcome);

} // namespace tvw::rgs::app
