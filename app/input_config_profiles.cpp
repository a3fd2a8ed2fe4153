/// What the buttons of the input window do with profiles.
#include "app/input_config_dialog.h"
#include "app/input_dialog_ids.h"
#include "app/input_profiles.h"
#include "core/instance.h"
#include "core/tool.h"
#include "gui/componentinterface/listbox.h"

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;

unidevice::InputProfileManager& InputConfigDlg::profiles() const
{
    return tool_->inputProfiles();
}

/// The tool can go while an action asks something.
void InputConfigDlg::pressOfProfiles(int id)
{
    const auto* const list = as<ci::ListBox>(input::profiles);
    const std::string chosen = list ? list->currentText() : std::string();
    InputProfiles subject(*instance_, [this](const std::string& text) { say(text); });
    ProfileActions actions(subject, root()->widget());
    std::string outcome;
    switch (id) {
    case input::profiles:
    case input::load:
        actions.select(chosen);
        break;
    case input::save:
        if (actions.save(chosen))
            outcome = "Saved: " + chosen;
        break;
    case input::saveAs:
        if (actions.saveAs())
            outcome = "Saved: " + subject.current();
        break;
    case input::makeNew:
        actions.createNew();
        break;
    case input::rename:
        actions.rename(chosen);
        break;
    case input::remove:
        actions.remove(chosen);
        break;
    case input::importProfile:
        actions.importFile();
        break;
    case input::exportProfile:
        if (const std::string path = actions.exportFile(); !path.empty())
            outcome = "Exported to " + path;
        break;
    case input::saveAsStart:
        if (actions.saveAsStartup())
            outcome = "Start Profile saved";
        break;
    default:
        return;
    }
    if (!instance_)
        return;
    refresh();
    if (!outcome.empty())
        say(outcome);
}

} // namespace tvw::rgs::app
