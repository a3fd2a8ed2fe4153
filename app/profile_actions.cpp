#include "app/profile_actions.h"

#include "app/choose_output.h"
#include "app/profile_prompts.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/tool.h"

#include <QFileInfo>

#include <algorithm>

namespace tvw::rgs::app {

using core::CoreImplementation;
using unidevice::XMLFileManager;
using util::xml::Element;

namespace {

constexpr const char* kNothingChosen = "Please select or specify a profile";
constexpr bool kToFile = true, kForced = false;
constexpr const char* kNotRenamed =
    "The specified profile could not be renamed, please try with another name.";

Element renamed(const Element& profile, const std::string& name)
{
    Element copy = profile;
    copy.setAttribute("name", name);
    return copy;
}

/// The name behind that one, or ahead of it where it is the last.
std::string neighbourOf(const std::string& name, const std::vector<std::string>& names)
{
    const auto place = std::find(names.begin(), names.end(), name);
    if (place != names.end() && place + 1 != names.end())
        return *(place + 1);
    return place == names.begin() ? name : *(place - 1);
}

} // namespace

ProfileSubject::ProfileSubject(core::Instance& tool)
    : tool_(tool), type_(*tool.type()), entry_(tool.reference()->watch())
{
}

bool ProfileSubject::isThere() const
{
    return *entry_ != nullptr && (*entry_)->isAlive();
}

// Questions.

bool ProfileActions::ask(const std::string& text, const std::string& title)
{
    return confirm(text, title) && subject_.isThere();
}

std::optional<std::string> ProfileActions::askName(const std::string& title,
                                                   const std::string& prompt,
                                                   const std::string& suggestion)
{
    const auto name = askProfileName(parent_, subject_.store(), title, prompt, suggestion);
    return subject_.isThere() ? name : std::nullopt;
}

// Storing.

bool ProfileActions::store(const Element& profile)
{
    return tellStored(subject_.store().store(profile, kToFile, kForced)) && subject_.isThere();
}

void ProfileActions::createNew()
{
    const auto name = askName(subject_.texts().newTitle, "Select a new name");
    if (!name)
        return;
    const Element before = subject_.present(subject_.current());
    const Element factory = subject_.store().profile(core::kFactorySettings);
    subject_.load(factory);
    if (!saveUnder(*name) && subject_.isThere())
        subject_.load(before);
}

bool ProfileActions::saveUnder(const std::string& name)
{
    if (!store(subject_.present(name)))
        return false;
    subject_.setCurrent(name);
    return true;
}

bool ProfileActions::save(const std::string& name)
{
    if (name.empty())
        tell(kNothingChosen);
    return !name.empty() && saveUnder(name);
}

bool ProfileActions::saveAs()
{
    const auto name =
        askName(subject_.texts().saveAsTitle, "Select a new name", subject_.current());
    return name && saveUnder(*name);
}

bool ProfileActions::saveAsStartup()
{
    return store(subject_.present(core::kStartProfile));
}

void ProfileActions::rename(const std::string& name)
{
    XMLFileManager& profiles = subject_.store();
    if (name.empty())
        return tell(kNothingChosen);
    if (name.find("Example:") != std::string::npos)
        return tell("Cannot rename example profiles.");
    if (profiles.isReadOnly(name))
        return tell("Cannot rename this profile.");
    const auto wanted = askName("Rename", "Set a new name", name);
    if (!wanted || *wanted == name)
        return;
    const Element overwritten = profiles.profile(*wanted);
    if (profiles.store(renamed(profiles.profile(name), *wanted), kToFile, kForced) !=
        XMLFileManager::done)
        return tell(kNotRenamed);
    if (profiles.remove(name) != XMLFileManager::done) { // shipped, or its file can't be written
        if (overwritten.isEmpty())
            (void)profiles.remove(*wanted);
        else
            (void)profiles.store(overwritten, kToFile, kForced);
        return tell(kNotRenamed);
    }
    if (subject_.current() == name)
        subject_.setCurrent(*wanted);
}

void ProfileActions::remove(const std::string& name)
{
    XMLFileManager& profiles = subject_.store();
    if (name.empty())
        return tell(kNothingChosen);
    if (!ask("Do you really want to delete the profile: " + name + "?", "Delete profile"))
        return;
    const std::string next = neighbourOf(name, profiles.names());
    const int outcome = profiles.remove(name);
    if (outcome == XMLFileManager::refused)
        return tell("The profile " + name + " belongs to the program and cannot be deleted.");
    if (outcome != XMLFileManager::done)
        return tell("The profile " + name + " could not be deleted.", "Rigstage - Error");
    profiles.rescan(); // a shipped one that the user's had replaced comes back
    subject_.deleted(name, next);
}

void ProfileActions::select(const std::string& name)
{
    XMLFileManager& profiles = subject_.store();
    if (name.empty())
        return tell(kNothingChosen);
    const std::string current = subject_.current();
    const Element& stored = profiles.profile(current);
    if (!stored.isEmpty() && subject_.differsFrom(stored) &&
        ask("Do you wish to save your changes to " + current + "?", "Save?") &&
        !store(subject_.present(current)))
        return; // the changes are nowhere yet
    if (!subject_.isThere())
        return;
    const Element wanted = profiles.profile(name);
    if (!wanted.isEmpty())
        subject_.load(wanted);
}

// Files.

void ProfileActions::importFile()
{
    const std::string path = CoreImplementation::instance().windows().chooseFile(
        "Import Profile", subject_.texts().filter);
    if (path.empty() || !subject_.isThere())
        return;
    const std::vector<Element> found = subject_.store().loadFromFile(path);
    if (found.empty())
        tell(subject_.texts().importFailed);
    const QFileInfo file(QString::fromStdString(path));
    for (const Element& profile : found) {
        if (!importProfile(profile, file.completeBaseName().toStdString()))
            return;
    }
}

/// False: the rest of the file need not be tried. fallback: the name of one that has none.
bool ProfileActions::importProfile(Element profile, const std::string& fallback)
{
    XMLFileManager& profiles = subject_.store();
    const std::string name = profiles.profileName(profile);
    const bool isTaken = hasProfile(profiles, name) && !profiles.isReadOnly(name);
    const bool isRefused =
        isTaken && !ask("A profile with the name " + name +
                            " already exists. This will overwrite that profile, do you wish to "
                            "continue?",
                        "Overwrite?");
    if (isRefused || !XMLFileManager::isValidName(name)) {
        const std::string other = isRefused ? name + "_01" : name.empty() ? fallback : name;
        const auto wanted = askName("Import Profile", "Select a new name", asProfileName(other));
        if (!wanted)
            return subject_.isThere();
        profile.setAttribute("name", *wanted);
    }
    const int outcome = profiles.store(profile, kToFile, kForced);
    if (outcome == XMLFileManager::refused)
        tell(subject_.texts().importRefused);
    else if (outcome != XMLFileManager::done)
        tell(subject_.texts().importFailed);
    return outcome != XMLFileManager::failed;
}

std::string ProfileActions::exportFile()
{
    const QString chosen = chooseOutput(
        parent_, "Export Profile", QString::fromStdString(subject_.current()),
        subject_.texts().filter, QString::fromStdString(subject_.store().pattern().substr(2)));
    if (chosen.isEmpty() || !subject_.isThere())
        return {};
    const QFileInfo file(chosen);
    const std::string path = file.filePath().toStdString();
    const Element profile = subject_.present(asProfileName(file.completeBaseName().toStdString()));
    const Status written = subject_.fileOf(profile).save(path);
    if (!written)
        tellStored(XMLFileManager::failed);
    subject_.store().rescan();
    return written ? path : std::string();
}

} // namespace tvw::rgs::app
