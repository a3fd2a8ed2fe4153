/// The core as its windows and its host see it.
#pragma once

#include "core/contract/codes.h"
#include "core/settings.h"
#include "core/windows.h"
#include "util/messagenode.h"

#include <string>
#include <vector>

namespace tvw::unidevice {
class Property;
}

namespace tvw::rgs::core {

inline constexpr int kAlreadyRunning = 71;

/// A key that passes on to the host while a run is on. modifiers: bit 0 Ctrl, 1 Alt, 2 Shift required.
struct HookKey
{
    std::int32_t key; ///< virtual key code, 0 to 255
    std::uint32_t modifiers;
};

/// Times are seconds. THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN; the first are `MessageNode`'s.
class CoreInterface : public MessageNode
{
public:
    using MessageNode::MessageNode;

    virtual ~CoreInterface() = default;

    virtual void saveTree(XmlSink& sink) = 0; ///< the record of all tools, with state
    virtual void saveUnboundTools(util::xml::Element& element) = 0; ///< adds the tools without nodes
    /// The first new tool, null when none was made.
    virtual InstanceReference* createFromXml(const util::xml::Element& element) = 0;
    virtual void deleteAllInstances() = 0; ///< no undo
    virtual int openMainWindow(void* parent) = 0; ///< 0, or kWindowAlreadyOpen
    virtual int closeMainWindow() = 0;            ///< 0, or kNoWindowOpen
    virtual bool isMainWindowOpen() = 0;
    virtual gui::Component* getMainComponent() = 0;
    virtual gui::Component* createComponent(const util::xml::Element& element) = 0;
    virtual Settings getSettings() = 0;
    virtual void timeChanged(double time) = 0; ///< the host moved its time
    virtual bool isRunning() = 0;
    virtual bool isResimulating() = 0;
    virtual void setHookKeys(const std::vector<HookKey>& keys) = 0;
    virtual int startRecord() = 0; ///< 0, or kAlreadyRunning
    virtual void stopRecord() = 0;
    virtual int getTimeScale() = 0;       ///< n of the speed 1 / 2^(n-1)
    virtual void setTimeScale(int n) = 0; ///< 1 to 10000
    virtual int startResimulation(double from, double to) = 0; ///< 0, or kAlreadyRunning
    virtual InstanceReference* findInstance(const std::string& name) = 0; ///< null when none
    virtual bool applyConfigProfile(const std::string& instance, const std::string& profile) = 0;
    virtual std::string createNamedInstance(const std::string& pluginId) = 0; ///< empty: none made
    virtual std::string cloneInstance(const std::string& name) = 0;           ///< empty: none made
    virtual InstanceReference* findInstanceToo(const std::string& name) { return findInstance(name); }
    virtual void deleteInstance(const std::string& name) = 0;
    virtual void addImageTokens(gui::Component* component) = 0;
    virtual void flushEvents() = 0;
    virtual void describeProperty(const unidevice::Property& property, std::string& out) = 0;
    virtual std::uint32_t messageBox(void* parent, const std::string& text, const std::string& title,
                                     std::uint32_t flags, bool force) = 0;
};

} // namespace tvw::rgs::core
