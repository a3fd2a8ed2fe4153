/// A scene with its tools: the stage and the core, joined. Scripts, command line and studio reach both
/// through this and through nothing else.
///
/// One session lives at a time in a process; ending it shuts the core down, and another may follow.
/// Times are seconds. Main thread only. Nothing throws but std::bad_alloc and what a caller's own
/// functions throw, which a run passes on after it has been stopped.
#pragma once

#include "adaptor/stage/stage.h"
#include "core/startup.h"
#include "core/timer.h"
#include "unidevice/scripted_device.h"
#include "util/result.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tvw::rgs::core {
class CoreImplementation;
class Instance;
class InstanceReference;
class RecordManager;
}

namespace tvw::rgs::stage {

class Journal;
struct LostTake;

struct SessionOptions
{
    double framesPerSecond = 25.0;
    core::TimeRange range{0.0, 10.0};

    /// Where profiles and settings are read and written; empty: the user's own folder.
    std::string userFolder{};

    /// Neither reads nor writes anything of the user's: a farm's run depends on its files alone.
    bool isolated = false;

    /// A take in progress is journalled in the user folder (lost_takes.h), unless isolated.
    bool journalled = true;

    // What the studio brings along; null: a virtual clock, no windows.
    core::Clock* clock = nullptr;
    core::Windows* windows = nullptr;
    std::function<void()> registerGui{};
    std::function<void()> startInput{};
};

using Progress = std::function<void(double fraction)>;

class Session final : private StageListener
{
public:
    /// Starts the core. The reason when a session lives already or the core does not start.
    static Result<std::unique_ptr<Session>> start(const SessionOptions& options);
    ~Session();

    Stage& stage() { return stage_; }
    core::CoreImplementation& core();

    /// The core's tree: its root, and a living tool by name; null when there is none.
    core::InstanceReference& root();
    core::InstanceReference* tool(const std::string& name);

    /// An empty scene; undo is emptied.
    void clear();

    /// A new tool; the reason when the type is unknown or its making fails.
    Result<core::InstanceReference*> create(const std::string& type, const std::string& name = {},
                                            core::InstanceReference* parent = nullptr);
    /// The first of the tools of a record; null when it holds none. The reason for a text that is no XML.
    Result<core::InstanceReference*> createFromXml(const std::string& text,
                                                   core::InstanceReference* parent = nullptr);

    /// All top-level tools as a saved tool file; the tools of one.
    Status savePrm(const std::string& path);
    Status loadPrm(const std::string& path, core::InstanceReference* parent = nullptr);

    struct Take
    {
        double seconds = 0.0; ///< after the start, which is the stage's present time
        std::function<void(double time)> beforeFrame{};
        int countdown = 1; ///< [s], whole
        Progress progress{};
    };
    /// A take at machine speed: real start-up, countdown, run loop and stop. The stage stands at the
    /// last frame afterwards. The reason when a run is on, when the length is no number or below 0, or
    /// when the options brought a clock: machine speed needs the session's own.
    Status record(const Take& take);

    /// A whole second pass. The reason when a run is on.
    Status resimulate(double from, double to, const Progress& progress = {});

    /// Takes that a crash or a kill cut off, oldest first: lost_takes.h. Offer them after the start.
    std::vector<LostTake> lostTakes() const;
    Status recover(const LostTake& take, const Progress& progress = {});

    /// The file that the scene came from or was saved to; whoever opens or saves says it. It names the
    /// journal of a take.
    const std::string& scenePath() const { return scenePath_; }
    void setScenePath(std::string path) { scenePath_ = std::move(path); }

    /// A device that a script moves, listed in the hub until it is removed.
    unidevice::ScriptedDevice& addDevice(const std::string& name, const unidevice::ScriptedLayout& layout);
    void removeDevice(unidevice::Device& device);

    /// What message boxes would have shown. A hook hears each as it comes.
    struct Message
    {
        std::string title;
        std::string text;
    };
    const std::vector<Message>& messages() const { return messages_; }
    void clearMessages() { messages_.clear(); }
    std::function<void(const Message&)> onMessage;

private:
    class QuietWindows;

    Session();
    Status open(const SessionOptions& options);
    void say(Message message);
    void makeFromTag(const util::xml::Element& record, const std::string& parent, int childIndex);

    // StageListener.
    void timeChanged(double time) override;
    void sceneClosing() override;
    void sceneOpened() override;
    void beforeSave() override;
    void nodesAboutToBeDeleted(const std::vector<StageNode*>& nodes) override;

    Stage stage_;
    core::VirtualClock virtualClock_;
    std::unique_ptr<QuietWindows> quietWindows_;
    std::vector<Message> messages_;
    core::CoreInterface* core_ = nullptr;
    bool hasOwnClock_ = true;
    std::string scenePath_;
    std::unique_ptr<Journal> journal_; ///< null: takes are not journalled
};

} // namespace tvw::rgs::stage
