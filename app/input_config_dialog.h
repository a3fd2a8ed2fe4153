/// The inputs of one tool: their bindings, and the profiles that hold them.
#pragma once

#include "app/window_base.h"
#include "unidevice/device_hub.h"
#include "util/dynamicobject.h"

#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::core {
class Instance;
class Tool;
} // namespace tvw::rgs::core

namespace tvw::unidevice {
class InputProfileManager;
}

namespace tvw::rgs::app {

/// Bindings can't be changed while a take or its replay is on, which owns them.
class InputConfigDlg final : public WindowBase,
                             DynamicCreator<InputConfigDlg>,
                             private unidevice::DeviceHub::Listener
{
public:
    class PropertyManager;

    explicit InputConfigDlg(core::Instance& instance);
    ~InputConfigDlg() override;

    void open(); ///< or brings it to the front

    /// The tool goes: closes for good what is open. It may end once it is not busy. A tool that
    /// ends without a word does the same.
    void leave();
    [[nodiscard]] bool hasLeft() const { return !instance_; }
    [[nodiscard]] bool isBusy() const { return questions_ > 0; } ///< a question waits for an answer

    /// Shows what has changed since the last call. Called some times a second while shown.
    void showLive();
    [[nodiscard]] bool isDetecting() const; ///< the devices are being listened to

private:
    class ToolListener;

    void handle(gui::Component& component, Message& message) override;
    void press(int id);
    void deviceAdded(unidevice::Device*) override { isStale_ = true; }
    void deviceRemoved(unidevice::Device*) override { isStale_ = true; }

    void makePanels();
    void refresh();
    void showTitle();
    void showProfiles();
    void lock(bool isLocked);
    void say(const std::string& text); ///< in the status line

    [[nodiscard]] unidevice::InputProfileManager& profiles() const;
    void pressOfProfiles(int id);

    core::Instance* instance_; ///< null: it has gone
    core::Tool* tool_;
    std::unique_ptr<ToolListener> toolListener_;
    std::vector<std::unique_ptr<PropertyManager>> panels_;
    bool isStale_ = false;
    bool isLocked_ = false;
    int questions_ = 0;
};

} // namespace tvw::rgs::app
