/// The windows, as the core asks for them.
#pragma once

#include "core/windows.h"

#include <memory>

namespace tvw::rgs::core {
class CoreImplementation;
}

namespace tvw::rgs::app {

class AboutRGS;
class ConfigWindow;
class CountdownDialog;
class HelpWindow;
class InputWindows;
class MainDlg;
class PreferencesWindow;
class ResimulateWindow;
class UpdateWindow;

/// Made before the core, told of it when it stands. Needs a running QApplication.
class AppWindows final : public core::Windows
{
public:
    AppWindows();
    ~AppWindows() override;

    void attach(); ///< the core stands: builds the windows
    void detach(); ///< the core is about to go: ends them

    [[nodiscard]] MainDlg* mainDialog() const { return main_.get(); } ///< null while no core stands
    [[nodiscard]] ConfigWindow* configWindow() const { return config_.get(); }
    void openPreferences();

    std::uint32_t messageBox(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t flags, bool force) override;

    int openMainWindow(void* parent) override;
    int closeMainWindow() override;
    bool isMainWindowOpen() override;
    gui::Component* mainComponent() override;
    gui::Component* createComponent(const util::xml::Element& element) override;
    void addImageTokens(gui::Component* component) override;
    void* mainWindowHandle() override;

    bool autoExpandTimeline() override;
    bool lowPolyOnRecord() override;
    bool resimulateFromFirstFrame() override;

    void refreshTree() override;
    void refreshToolLists() override;
    void refreshRunState() override;
    void treeEntryChanged(core::InstanceReference* reference) override;
    void beginRename(core::InstanceReference* reference) override;

    void openConfiguration(core::Instance* instance) override;
    void openInputs(core::Instance* instance) override;
    void closeWindowsOf(core::Instance* instance) override;
    void openHelp(const std::string& pluginName) override;
    std::string chooseFile(const std::string& title, const std::string& filter) override;

    void showCountdown(int seconds, double fraction) override;
    void hideCountdown() override;

    void flushEvents() override;

private:
    std::unique_ptr<MainDlg> main_;
    std::unique_ptr<ConfigWindow> config_;
    std::unique_ptr<InputWindows> inputs_;
    std::unique_ptr<PreferencesWindow> preferences_;
    std::unique_ptr<AboutRGS> about_;
    std::unique_ptr<UpdateWindow> updates_;
    std::unique_ptr<ResimulateWindow> resimulation_;
    std::unique_ptr<HelpWindow> help_;
    std::unique_ptr<CountdownDialog> countdown_;
    bool checkedForUpdates_ = false;
};

} // namespace tvw::rgs::app
