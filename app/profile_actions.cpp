#include "app/profile_actions.h"

#include "core/core_implementation.h"
#include "core/tool.h"
#include "gui/qt/boxes.h"

#include <QFileDialog>
#include <QFileInfo>

#include <algorithm>

namespace tvw::rgs::app {

using core::CoreImplementation;
using unidevice::XMLFileManager;
using util::xml::Element;

namespace {

constexpr const char* kProduct = "Rigstage";
constexpr const char* kNothingChosen = "Please select or specify a profile";
constexpr const char* kForbidden =
    " - name contains forbidden characters. \n The following characters are not allowed: "
    "\\ / : * ? \" < > | . , [ ] ; =";
constexpr const char* kReadOnly =
    "The specified profile is considered read-only and cannot be overwritten.";
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

// Boxes.

void ProfileActions::say(const std::string& text, const std::string& title) const
{
    CoreImplementation::instance().messageBox(parent_, text, title,
                                              core::box::ok | core::box::warning, false);
}

bool ProfileActions::ask(const std::string& text, const std::string& title) const
{
    return CoreImplementation::instance().messageBox(
               parent_, text, title, core::box::yes | core::box::no | core::box::question, false) ==
           core::box::yes;
}

std::optional<std::string> ProfileActions::askName(const std::string& title,
                                                   const std::string& prompt,
                                                   const std::string& suggestion,
                                                   const std::string& own)
{
    std::string name = suggestion;
    while (gui::inputBox(parent_, title, prompt, name, name) && !name.empty()) {
        if (!XMLFileManager::isValidName(name))
            say(name + kForbidden, title);
        else if (name == own || !isStored(name) || mayOverwrite(name))
            return name;
        else
            say(name + " - name already exists.", title);
    }
    return std::nullopt;
}

bool ProfileActions::isStored(const std::string& name)
{
    return !subject_.store().profile(name).isEmpty();
}

bool ProfileActions::mayOverwrite(const std::string& name)
{
    return ask("This will overwrite the profile " + name + ", do you wish to continue?",
               "Overwrite?");
}

// Storing.

bool ProfileActions::store(const Element& profile)
{
    constexpr bool toFile = true, force = false;
    const int outcome = subject_.store().store(profile, toFile, force);
    if (outcome == XMLFileManager::refused)
        say(kReadOnly, kProduct);
    else if (outcome != XMLFileManager::done)
        say("The profile could not be saved", "Rigstage - Error");
    return outcome == XMLFileManager::done;
}

void ProfileActions::createNew()
{
    const auto name = askName("New profile...", "Select a new name");
    if (!name)
        return;
    const Element before = subject_.present(subject_.current());
    const Element factory = subject_.store().profile(core::kFactorySettings);
    subject_.load(factory);
    if (store(subject_.present(*name)))
        subject_.setCurrent(*name);
    else
        subject_.load(before);
}

void ProfileActions::save(const std::string& name)
{
    if (name.empty())
        say(kNothingChosen, kProduct);
    else if (store(subject_.present(name)))
        subject_.setCurrent(name);
}

void ProfileActions::saveAs()
{
    const auto name = askName("Save profile as...", "Select a new name", subject_.current());
    if (name && store(subject_.present(*name)))
        subject_.setCurrent(*name);
}

bool ProfileActions::saveAsStartup()
{
    return store(subject_.present(core::kStartProfile));
}

void ProfileActions::rename(const std::string& name)
{
    XMLFileManager& profiles = subject_.store();
    if (name.empty())
        return say(kNothingChosen, kProduct);
    if (name.find("Example:") != std::string::npos)
        return say("Cannot rename example profiles.", kProduct);
    if (profiles.isReadOnly(name))
        return say("Cannot rename this profile.", kProduct);
    const auto wanted = askName("Rename", "Set a new name", name, name);
    if (!wanted || *wanted == name)
        return;
    const Element overwritten = profiles.profile(*wanted);
    constexpr bool toFile = true, force = false;
    if (profiles.store(renamed(profiles.profile(name), *wanted), toFile, force) !=
        XMLFileManager::done)
        return say(kNotRenamed, kProduct);
    if (profiles.remove(name) != XMLFileManager::done) { // shipped, or its file can't be written
        if (overwritten.isEmpty())
            (void)profiles.remove(*wanted);
        else
            (void)profiles.store(overwritten, toFile, force);
        return say(kNotRenamed, kProduct);
    }
    if (subject_.current() == name)
        subject_.setCurrent(*wanted);
}

void ProfileActions::remove(const std::string& name)
{
    XMLFileManager& profiles = subject_.store();
    if (name.empty())
        return say(kNothingChosen, kProduct);
    if (!ask("Do you really want to delete the profile: " + name + "?", kProduct))
        return;
    const std::string next = neighbourOf(name, profiles.names());
    const int outcome = profiles.remove(name);
    if (outcome == XMLFileManager::refused)
        return say("The profile " + name + " belongs to the program and cannot be deleted.",
                   kProduct);
    if (outcome != XMLFileManager::done)
        return say("The profile " + name + " could not be deleted.", "Rigstage - Error");
    profiles.rescan(); // a shipped one that the user's had replaced comes back
    if (const Element wanted = profiles.profile(next); !wanted.isEmpty())
        subject_.load(wanted);
}

void ProfileActions::select(const std::string& name)
{
    XMLFileManager& profiles = subject_.store();
    const std::string current = subject_.current();
    const Element& stored = profiles.profile(current);
    if (!stored.isEmpty() && subject_.differsFrom(stored) &&
        ask("Do you wish to save your changes to " + current + "?", "Save?") &&
        !store(subject_.present(current)))
        return; // the changes are nowhere yet
    const Element wanted = profiles.profile(name);
    if (!wanted.isEmpty())
        subject_.load(wanted);
}

// Files.

void ProfileActions::importFile()
{
    const std::string path =
        CoreImplementation::instance().windows().chooseFile("Import Profile", subject_.filter());
    if (path.empty())
        return;
    const std::vector<Element> found = subject_.store().loadFromFile(path);
    if (found.empty())
        say("The profile could not be imported. ", kProduct);
    for (const Element& profile : found) {
        if (!importProfile(profile))
            return;
    }
}

/// False: the rest of the file need not be tried.
bool ProfileActions::importProfile(Element profile)
{
    XMLFileManager& profiles = subject_.store();
    const std::string name = profiles.profileName(profile);
    if (isStored(name) && !profiles.isReadOnly(name) &&
        !ask("A profile with the name " + name +
                 " already exists. This will overwrite that profile, do you wish to continue?",
             "Overwrite?")) {
        const auto other = askName("Import Profile", "Select a new name", name + "_01");
        if (!other)
            return true;
        profile.setAttribute("name", *other);
    }
    constexpr bool toFile = true, force = false;
    const int outcome = profiles.store(profile, toFile, force);
    if (outcome == XMLFileManager::refused)
        say("The profile already exists and cannot be overwritten.", kProduct);
    else if (outcome != XMLFileManager::done)
        say("The profile could not be imported. ", kProduct);
    return outcome != XMLFileManager::failed;
}

void ProfileActions::exportFile()
{
    QFileDialog dialog(parent_, "Export Profile", {}, subject_.filter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromStdString(subject_.store().pattern().substr(2)));
    dialog.selectFile(QString::fromStdString(subject_.current()));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QFileInfo file(dialog.selectedFiles().constFirst());
    const Element profile = subject_.present(file.completeBaseName().toStdString());
    if (!subject_.fileOf(profile).save(file.filePath().toStdString()))
        say("The profile could not be saved", "Rigstage - Error");
    subject_.store().rescan();
}

} // namespace tvw::rgs::app
