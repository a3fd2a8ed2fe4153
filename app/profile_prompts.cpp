#include "app/profile_prompts.h"

#include "core/core_implementation.h"
#include "gui/box.h"
#include "gui/qt/boxes.h"
#include "unidevice/xml_file_manager.h"

#include <algorithm>

namespace tvw::rgs::app {

using core::CoreImplementation;
using unidevice::XMLFileManager;

namespace {

constexpr const char* kForbidden =
    " - name contains forbidden characters. \n The following characters are not allowed: "
    "\\ / : * ? \" < > | . , [ ] ; =";

} // namespace

void tell(const std::string& text, const std::string& title)
{
    CoreImplementation::instance().messageBox(nullptr, text, title.empty() ? "Rigstage" : title,
                                              gui::box::ok | gui::box::warning, false);
}

bool confirm(const std::string& text, const std::string& title)
{
    return CoreImplementation::instance().messageBox(
               nullptr, text, title, gui::box::yes | gui::box::no | gui::box::question, false) ==
           gui::box::yes;
}

std::optional<std::string> askProfileName(QWidget* parent, const XMLFileManager& profiles,
                                          const std::string& title, const std::string& prompt,
                                          const std::string& suggestion)
{
    std::string name = suggestion;
    while (gui::inputBox(parent, title, prompt, name, name) && !name.empty()) {
        if (!XMLFileManager::isValidName(name))
            tell(name + kForbidden, title);
        else if (!hasProfile(profiles, name) ||
                 confirm("This will overwrite the profile " + name + ", do you wish to continue?",
                         "Overwrite?"))
            return name;
        else
            tell(name + " - name already exists.", title);
    }
    return std::nullopt;
}

bool hasProfile(const XMLFileManager& profiles, const std::string& name)
{
    return !profiles.profile(name).isEmpty();
}

std::string asProfileName(std::string text)
{
    for (char& c : text) {
        if (!XMLFileManager::isValidName(std::string_view(&c, 1)))
            c = '_';
    }
    return text;
}

bool tellStored(int outcome)
{
    if (outcome == XMLFileManager::refused)
        tell("The specified profile is considered read-only and cannot be overwritten.");
    else if (outcome == XMLFileManager::failed)
        tell("The profile could not be saved", "Rigstage - Error");
    return outcome == XMLFileManager::done;
}

} // namespace tvw::rgs::app
