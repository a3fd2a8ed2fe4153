/// The core: one in the process while it is up.
#pragma once

#include "core/core_interface.h"
#include "core/core_subsystem.h"
#include "core/instance_manager.h"
#include "core/record_manager.h"

#include <memory>

namespace tvw::rgs::core {

/// Keeps the seam to the host.
class AdaptorManager final : public CoreSubSystem
{
public:
    using CoreSubSystem::CoreSubSystem;
};

/// Checks for new versions, when the user allows it; the windows' side does the asking.
class UpdateManager final : public CoreSubSystem
{
public:
    using CoreSubSystem::CoreSubSystem;
};

class CoreImplementation final : public CoreInterface
{
public:
    /// clock, windows: must outlive the core.
    CoreImplementation(Clock& clock, Windows& windows);
    ~CoreImplementation() override;

    /// The core of the process. There must be one.
    static CoreImplementation& instance();
    static bool exists();

    RecordManager& records() { return records_; }
    InstanceManager& instances() { return instances_; }
    Windows& windows() { return *windows_; }
    void setWindows(Windows& windows) { windows_ = &windows; }
    SettingsStore& settings() { return settings_; }

    void saveTree(XmlSink& sink) override;
    void saveUnboundTools(util::xml::Element& element) override;
    InstanceReference* createFromXml(const util::xml::Element& element) override;
    void deleteAllInstances() override;
    int openMainWindow(void* parent) override;
    int closeMainWindow() override;
    bool isMainWindowOpen() override;
    gui::Component* getMainComponent() override;
    gui::Component* createComponent(const util::xml::Element& element) override;
    Settings getSettings() override;
    void timeChanged(double time) override;
    bool isRunning() override;
    bool isResimulating() override;
    void setHookKeys(const std::vector<HookKey>& keys) override;
    int startRecord() override;
    void stopRecord() override;
    int getTimeScale() override;
    void setTimeScale(int n) override;
    int startResimulation(double from, double to) override;
    InstanceReference* findInstance(const std::string& name) override;
    bool applyConfigProfile(const std::string& instance, const std::string& profile) override;
    std::string createNamedInstance(const std::string& pluginId) override;
    std::string cloneInstance(const std::string& name) override;
    void deleteInstance(const std::string& name) override;
    void addImageTokens(gui::Component* component) override;
    void flushEvents() override;
    void describeProperty(const unidevice::Property& property, std::string& out) override;
    std::uint32_t messageBox(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t flags, bool force) override;

private:
    Windows* windows_;
    SettingsStore settings_;

    // In the order of their start; they end in the reverse.
    AdaptorManager adaptorManager_;
    RecordManager records_;
    InstanceManager instances_;
    UpdateManager updates_;
};

} // namespace tvw::rgs::core
