#include "app/input_config_dialog.h"

#include "app/input_dialog_ids.h"
#include "app/property_manager.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/tool.h"
#include "gui/componentinterface/dialog.h"
#include "gui/componentinterface/label.h"
#include "gui/componentinterface/listbox.h"
#include "gui/message_ids.h"
#include "util/factory.h"

#include <algorithm>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::CoreImplementation;

/// Hears that somebody else has loaded a profile, and that the tool ends.
class InputConfigDlg::ToolListener final : public MessageNode
{
public:
    ToolListener(core::Instance& instance, InputConfigDlg& window)
        : MessageNode("ToolListener"), window_(window)
    {
        listenTo(&instance);
    }
    void receive(Message& message, bool) override
    {
        constexpr std::uint32_t kInputProfileLoaded = 154;
        if (message.id == kInputProfileLoaded)
            window_.isStale_ = true;
        else if (message.id == Message::kNodeDestroyed)
            window_.leave();
    }

private:
    InputConfigDlg& window_;
};

InputConfigDlg::InputConfigDlg(core::Instance& instance)
    : WindowBase("InputConfigDlg"), instance_(&instance), tool_(instance.type()),
      toolListener_(std::make_unique<ToolListener>(instance, *this))
{
    unidevice::DeviceHub::instance().addListener(this);
}

InputConfigDlg::~InputConfigDlg()
{
    if (unidevice::DeviceHub::exists())
        unidevice::DeviceHub::instance().removeListener(this);
}

void InputConfigDlg::open()
{
    if (!instance_ || (!root() && !build("rgs_inputs")))
        return;
    for (int id = input::first; id <= input::last; ++id)
        listen({id});
    if (auto* const picture = as<ci::Label>(input::picture))
        picture->setImagePath(tool_->getImagePath() + "/button_product_default.png");
    if (auto* const dialog = gui::toDialog(root()))
        dialog->setTopmost(CoreImplementation::instance().getSettings().alwaysOnTop);
    makePanels();
    refresh();
    if (!isShown())
        show();
    raise();
}

void InputConfigDlg::leave()
{
    if (!instance_)
        return;
    instance_ = nullptr;
    for (const auto& panel : panels_)
        panel->closeDialogs();
    hide();
}

void InputConfigDlg::makePanels()
{
    gui::Component* const list = find(input::panels);
    const auto count = static_cast<std::size_t>(instance_->properties().count());
    if (!list || panels_.size() == count)
        return;
    const util::xml::Element layout = loadLayout("rgs_inputs_propertymanager");
    for (std::size_t i = panels_.size(); i < count; ++i) {
        gui::ComponentPtr made(AbstractFactory<gui::Component>::instance().create(layout));
        if (!made)
            return;
        gui::Component& panel = *made.release();
        list->addChild(&panel);
        panels_.push_back(std::make_unique<PropertyManager>(
            *instance_->properties().propertyAt(static_cast<int>(i)), panel));
        if (list->isShown())
            panel.show();
    }
}

void InputConfigDlg::refresh()
{
    // In a replay the inputs hang on what was recorded; their bindings come back at its end.
    isStale_ = CoreImplementation::instance().isResimulating();
    for (const auto& panel : panels_) {
        if (!isStale_)
            panel->refresh();
    }
    showTitle();
    showProfiles();
}

void InputConfigDlg::showTitle()
{
    const std::string maker = "Tarvo ";
    const std::string tool = tool_->getDisplayName();
    root()->setLabel("Inputs for " + instance_->name() + " (" +
                     (tool.starts_with(maker) ? tool : maker + tool) + ")");
}

void InputConfigDlg::showProfiles()
{
    auto* const list = as<ci::ListBox>(input::profiles);
    if (!list)
        return;
    const std::vector<std::string> names = profiles().names();
    bool isSame = list->count() == static_cast<int>(names.size());
    for (int i = 0; isSame && i < list->count(); ++i)
        isSame = list->itemAt(i) == names[static_cast<std::size_t>(i)];
    if (!isSame) {
        list->clear();
        for (const std::string& name : names)
            list->insertItem(name, -1);
    }
    list->selectText(instance_->inputProfileName());
}

bool InputConfigDlg::isDetecting() const
{
    return std::any_of(panels_.begin(), panels_.end(),
                       [](const auto& panel) { return panel->isDetecting(); });
}

void InputConfigDlg::showLive()
{
    if (!instance_ || !isShown())
        return;
    CoreImplementation& core = CoreImplementation::instance();
    lock(core.isRunning());
    if (isStale_ && !core.isResimulating() && !isDetecting()) {
        makePanels();
        refresh();
    }
    for (const auto& panel : panels_)
        panel->showLive();
}

void InputConfigDlg::lock(bool isLocked)
{
    if (isLocked == isLocked_)
        return;
    isLocked_ = isLocked;
    for (int id = input::first; id <= input::last; ++id) {
        const bool staysOpen = id == input::window || id == input::status || id == input::close;
        if (gui::Component* const component = find(id); component && !staysOpen)
            component->setEnabled(!isLocked, false);
    }
    if (isLocked) {
        for (const auto& panel : panels_)
            panel->closeDialogs();
    }
    isStale_ = true;
    say(isLocked ? "A take is on: bindings can be changed when it has ended." : "");
}

void InputConfigDlg::say(const std::string& text)
{
    setText(input::status, text);
}

void InputConfigDlg::handle(gui::Component& component, Message& message)
{
    if (!instance_)
        return;
    const int id = component.id();
    if (id == input::window && handleWindowKeys(message)) {
        if (message.id == gui::message::windowActive)
            isStale_ = true; // tools may have come, gone or been renamed
        return;
    }
    const bool isLoad = message.id == gui::message::itemActivated && id == input::profiles;
    if (!isLoad && message.id != gui::message::buttonClicked)
        return;
    if (id == input::close)
        hide();
    else if (!CoreImplementation::instance().isRunning())
        press(id);
}

void InputConfigDlg::press(int id)
{
    if (id == input::clearAll) {
        for (const auto& panel : panels_)
            panel->clear();
        say("All bindings cleared");
        return;
    }
    ++questions_;
    pressOfProfiles(id);
    --questions_;
}

} // namespace tvw::rgs::app
