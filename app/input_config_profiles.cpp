/// What the buttons of the input window do with profiles.
#include "app/input_config_dialog.h"
#include "app/input_dialog_ids.h"
#include "app/profile_prompts.h"
#include "app/property_manager.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/tool.h"
#include "gui/componentinterface/listbox.h"

#include <QFileDialog>
#include <QFileInfo>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::CoreImplementation;
using unidevice::InputProfileManager;
using util::xml::Element;

namespace {

constexpr const char* kFilter = "Tarvo Input Profiles (*.tvi);;All files (*.*)";
constexpr const char* kNoSelection = "Please select or specify a profile";
constexpr const char* kExample = "Example:";
constexpr bool kInFile = true;
constexpr bool kForced = true;

std::string countText(int missing)
{
    if (missing == 1)
        return "1 control is not connected; its binding waits for it.";
    return std::to_string(missing) + " controls are not connected; their bindings wait for them.";
}

/// The profile under another name.
Element renamed(Element profile, const std::string& name)
{
    profile.setAttribute("name", name);
    return profile;
}

} // namespace

InputProfileManager& InputConfigDlg::profiles() const
{
    return tool_->inputProfiles();
}

std::string InputConfigDlg::selected() const
{
    const auto* const list = as<ci::ListBox>(input::profiles);
    const std::string name = list ? list->currentText() : std::string();
    if (name.empty())
        tell(kNoSelection);
    return name;
}

std::optional<std::string> InputConfigDlg::askName(const std::string& title,
                                                   const std::string& prompt,
                                                   const std::string& suggestion)
{
    const auto name = askProfileName(root()->widget(), profiles(), title, prompt, suggestion);
    return instance_ ? name : std::nullopt; // the tool can go while the question waits
}

/// It is the one that the tool has now, and the list shows it.
void InputConfigDlg::profileIsNow(const std::string& name)
{
    instance_->setInputProfileName(name);
    showProfiles();
}

void InputConfigDlg::apply(const Element& profile)
{
    const int missing = instance_->loadInputProfile(profile);
    if (missing == unidevice::PropertyHandler::kNoProfile) {
        tell("The profile could not be loaded.");
        return;
    }
    refresh();
    say(missing == 0 ? "Loaded: " + instance_->inputProfileName() : countText(missing));
}

void InputConfigDlg::load()
{
    if (const std::string name = selected(); !name.empty() && instance_)
        apply(profiles().profile(name));
}

bool InputConfigDlg::store(const std::string& name)
{
    Element present;
    instance_->writeInputProfile(present, name);
    return tellStored(profiles().store(present, kInFile, false)) && instance_;
}

void InputConfigDlg::save()
{
    const std::string name = selected();
    if (name.empty() || !instance_ || !store(name))
        return;
    profileIsNow(name);
    say("Saved: " + name);
}

void InputConfigDlg::saveAs()
{
    const auto name = askName("New profile", "Select a new name", instance_->inputProfileName());
    if (!name || !store(*name))
        return;
    profileIsNow(*name);
    say("Saved: " + *name);
}

void InputConfigDlg::makeNew()
{
    const auto name = askName("New profile", "Select a new name", "");
    if (!name)
        return;
    const Element fresh = renamed(profiles().profile(core::kFactorySettings), *name);
    if (tellStored(profiles().store(fresh, kInFile, false)) && instance_)
        apply(fresh);
}

void InputConfigDlg::rename()
{
    const std::string name = selected();
    if (name.empty() || !instance_)
        return;
    if (name.find(kExample) != std::string::npos || profiles().isReadOnly(name)) {
        tell(profiles().isReadOnly(name) ? "Cannot rename this profile."
                                         : "Cannot rename example profiles.");
        return;
    }
    const auto wanted = askName("Rename", "Set a new name", name);
    if (!wanted || *wanted == name)
        return;
    const Element overwritten = profiles().profile(*wanted);
    const bool isStored = profiles().store(renamed(profiles().profile(name), *wanted), kInFile,
                                           false) == InputProfileManager::done;
    if (!isStored || profiles().remove(name) != InputProfileManager::done) {
        if (isStored && overwritten.isEmpty())
            profiles().remove(*wanted);
        else if (isStored)
            profiles().store(overwritten, kInFile, false);
        tell("The specified profile could not be renamed, please try with another name.");
        return;
    }
    if (instance_->inputProfileName() == name)
        instance_->setInputProfileName(*wanted);
    showProfiles();
}

void InputConfigDlg::remove()
{
    const std::string name = selected();
    if (name.empty() || !instance_ ||
        !confirm("Do you really want to delete the profile: " + name + "?", "Delete profile") ||
        !instance_)
        return;
    switch (profiles().remove(name)) {
    case InputProfileManager::refused:
        tell("The profile comes with the program and cannot be deleted.");
        return;
    case InputProfileManager::failed:
        tell("The profile could not be deleted", "Rigstage - Error");
        return;
    default:
        break;
    }
    if (instance_->inputProfileName() == name)
        instance_->setInputProfileName({});
    showProfiles();
}

void InputConfigDlg::importFile()
{
    const std::string path =
        CoreImplementation::instance().windows().chooseFile("Import Profile", kFilter);
    if (path.empty() || !instance_)
        return;
    const std::vector<Element> found = profiles().loadFromFile(path);
    const std::string fallback =
        QFileInfo(QString::fromStdString(path)).completeBaseName().toStdString();
    if (found.empty())
        tell("The profile could not be imported.");
    for (const Element& profile : found) {
        if (!importProfile(profile, fallback) || !instance_)
            break;
    }
    if (!instance_)
        return;
    profiles().rescan();
    showProfiles();
}

/// False when the user has given up. fallback: the name of one that has none.
bool InputConfigDlg::importProfile(Element profile, const std::string& fallback)
{
    std::string name = profiles().profileName(profile);
    const bool isTaken = hasProfile(profiles(), name);
    if (isTaken && !confirm("A profile with the name " + name +
                                " already exists. This will overwrite that profile, do you wish "
                                "to continue?",
                            "Overwrite?"))
        name += "_01";
    else if (isTaken || InputProfileManager::isValidName(name))
        return tellImported(profiles().store(profile, kInFile, false));
    const auto wanted = askName("Import Profile", "Select a new name",
                                asProfileName(name.empty() ? fallback : name));
    return wanted && tellImported(profiles().store(renamed(profile, *wanted), kInFile, false));
}

void InputConfigDlg::exportFile()
{
    const QString chosen = QFileDialog::getSaveFileName(root()->widget(), "Export Profile", {},
                                                        QString::fromLatin1(kFilter));
    if (chosen.isEmpty() || !instance_)
        return;
    const QFileInfo file(chosen);
    const std::string path = (file.suffix().isEmpty() ? chosen + ".tvi" : chosen).toStdString();
    Element present;
    instance_->writeInputProfile(present, asProfileName(file.completeBaseName().toStdString()));
    Element root = util::xml::Tag("unidevice");
    root.addChild(present);
    if (!root.save(path)) {
        tellStored(InputProfileManager::failed);
        return;
    }
    profiles().rescan();
    showProfiles();
    say("Exported to " + path);
}

void InputConfigDlg::saveAsStart()
{
    if (!store(core::kStartProfile))
        return;
    showProfiles();
    say("Start Profile saved");
}

} // namespace tvw::rgs::app
