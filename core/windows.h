/// What the core asks of its windows. Without any (command line, scripts) the defaults answer as with
/// no window open, and a message box goes to the log.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::gui {
class Component;
}

namespace tvw::util::xml {
class Element;
}

namespace tvw::rgs::core {

class Instance;
class InstanceReference;

/// Buttons and icons of a message box.
namespace box {
inline constexpr std::uint32_t ok = 0x1, cancel = 0x2, close = 0x4, help = 0x8, yes = 0x10, no = 0x20,
                               abort = 0x40, retry = 0x80, ignore = 0x100, yesToAll = 0x200,
                               noToAll = 0x400, apply = 0x800, discard = 0x1000, reset = 0x2000,
                               save = 0x4000;
inline constexpr std::uint32_t question = 0x20000, information = 0x40000, warning = 0x80000,
                               critical = 0x100000;

/// What a box that is not shown answers: the first of Ok, Yes, Save, Abort, Apply that it has, else No.
std::uint32_t silentAnswer(std::uint32_t flags);
} // namespace box

inline constexpr int kWindowAlreadyOpen = 10002;
inline constexpr int kNoWindowOpen = 10003;

/// The main thread only, as all of the core.
class Windows
{
public:
    virtual ~Windows() = default;

    /// Answers the flag of the button pressed. The default logs and gives the silent answer.
    virtual std::uint32_t messageBox(void* parent, const std::string& text, const std::string& title,
                                     std::uint32_t flags, bool force);

    // The main window.

    virtual int openMainWindow(void*) { return kNoWindowOpen; }
    virtual int closeMainWindow() { return kNoWindowOpen; }
    virtual bool isMainWindowOpen() { return false; }
    virtual gui::Component* mainComponent() { return nullptr; }
    virtual gui::Component* createComponent(const util::xml::Element&) { return nullptr; }
    virtual void addImageTokens(gui::Component*) {}
    virtual void* mainWindowHandle() { return nullptr; }

    virtual bool autoExpandTimeline() { return true; }
    virtual bool lowPolyOnRecord() { return false; }
    virtual bool resimulateFromFirstFrame() { return true; }

    virtual void refreshTree() {}        ///< entries came, went or moved
    virtual void refreshToolLists() {}   ///< the library changed
    virtual void refreshRunState() {}    ///< Record button, slow-motion spinner
    virtual void treeEntryChanged(InstanceReference*) {}
    virtual void beginRename(InstanceReference*) {}

    // A tool's windows.

    virtual void openConfiguration(Instance*) {}
    virtual void openInputs(Instance*) {}
    virtual void closeWindowsOf(Instance*) {}
    virtual void openHelp(const std::string& /*pluginName*/) {}
    virtual std::string chooseFile(const std::string& /*title*/, const std::string& /*filter*/) { return {}; }

    // A run.

    /// Seconds left, and the part of the present second left, 0 to 1.
    virtual void showCountdown(int, double) {}
    virtual void hideCountdown() {}

    virtual void flushEvents() {} ///< delivers posted events
};

} // namespace tvw::rgs::core
