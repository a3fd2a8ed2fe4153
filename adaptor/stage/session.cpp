#include "adaptor/stage/session.h"

#include "adaptor/stage/journal.h"
#include "adaptor/stage/lost_takes.h"
#include "adaptor/stage/scene_file.h"
#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/library_manager.h"
#include "core/paths.h"
#include "core/saved_tool_file.h"
#include "core/tool_record.h"
#include "plugins/tool_table.h"
#include "unidevice/device_hub.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::rgs::stage {

using core::CoreImplementation;
using core::InstanceReference;

namespace {

bool sessionLives = false;

/// Stops a scripted take at its last frame, and lets the script act before each.
class TakeDirector final : public core::RunObserver
{
public:
    TakeDirector(core::RecordManager& records, const Session::Take& take, double start)
        : records_(records), take_(take), start_(start)
    {
        records_.addObserver(this);
    }
    ~TakeDirector() { records_.removeObserver(this); }
    TakeDirector(const TakeDirector&) = delete;
    TakeDirector& operator=(const TakeDirector&) = delete;

    void beforeFrame(double time) override
    {
        if (take_.beforeFrame)
            take_.beforeFrame(time);
    }

    void frameDone(double time, const std::vector<core::Instance*>&) override
    {
        if (take_.progress && take_.seconds > 0.0)
            take_.progress(std::min(1.0, (time - start_) / take_.seconds));
        if (isOver(time))
            records_.stopRecord();
    }

    /// Whether the frame behind this time lies past the end.
    bool isOver(double time) const
    {
        constexpr double kSlack = 0.00001; // [s], as a second pass has it at its end
        return time + adaptorStep() > start_ + take_.seconds + kSlack;
    }

private:
    static double adaptorStep() { return core::adaptor()->getFrameDuration(); }

    core::RecordManager& records_;
    const Session::Take& take_;
    double start_;
};

/// Ends a run that is still on when the block is left, by whatever way.
class RunGuard
{
public:
    explicit RunGuard(core::RecordManager& records) : records_(records) {}
    ~RunGuard()
    {
        records_.finishResimulation();
        records_.stopRecord();
    }
    RunGuard(const RunGuard&) = delete;
    RunGuard& operator=(const RunGuard&) = delete;

private:
    core::RecordManager& records_;
};

} // namespace

/// No windows: what a box would say is kept.
class Session::QuietWindows final : public core::Windows
{
public:
    explicit QuietWindows(Session& session) : session_(session) {}

    std::uint32_t messageBox(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t flags, bool force) override
    {
        session_.say({title, text});
        return core::Windows::messageBox(parent, text, title, flags, force);
    }

private:
    Session& session_;
};

Session::Session() : quietWindows_(std::make_unique<QuietWindows>(*this)) { sessionLives = true; }

Result<std::unique_ptr<Session>> Session::start(const SessionOptions& options)
{
    using Answer = Result<std::unique_ptr<Session>>;
    if (sessionLives)
        return Answer::failure("a session is open already");
    std::unique_ptr<Session> session(new Session);
    if (const Status opened = session->open(options); !opened)
        return Answer::failure(opened.reason());
    return session;
}

Status Session::open(const SessionOptions& options)
{
    core::setUserPath(options.isolated ? core::kNoUserPath : options.userFolder);
    stage_.setFramesPerSecond(options.framesPerSecond);
    stage_.setRange(options.range);
    stage_.setTime(options.range.start);
    stage_.hooks.ownerName = [](CInterface* owner) {
        return static_cast<core::Instance*>(owner)->name();
    };
    stage_.hooks.createTool = [this](const util::xml::Element& record, const std::string& parent,
                                     int childIndex) { makeFromTag(record, parent, childIndex); };
    stage_.hooks.mergeFile = [this](const std::string& path) {
        const auto nodes = importFile(stage_, path);
        if (!nodes)
            say({"Error", nodes.reason()});
        return nodes ? *nodes : std::vector<StageNode*>();
    };
    stage_.hooks.showError = [this](const std::string& text, const std::string& title) {
        say({title, text});
    };
    hasOwnClock_ = options.clock == nullptr;
    core_ = core::startCore({.adaptor = &stage_,
                             .clock = options.clock ? options.clock : &virtualClock_,
                             .windows = options.windows ? options.windows : quietWindows_.get(),
                             .tools = toolTable(),
                             .registerGui = options.registerGui,
                             .startInput = options.startInput});
    if (!core_)
        return Status::failure("the core does not fit this host's interface version");
    stage_.addListener(*this);
    if (options.journalled && !options.isolated)
        journal_ = std::make_unique<Journal>(
            *this, [this](std::string text) { say({"Journal", std::move(text)}); });
    return {};
}

Session::~Session()
{
    if (core_) {
        stage_.clear();
        stage_.removeListener(*this);
        journal_.reset();
    }
    core::shutdownCore();
    core::setUserPath({});
    sessionLives = false;
}

void Session::say(Message message)
{
    messages_.push_back(std::move(message));
    if (onMessage)
        onMessage(messages_.back());
}

CoreImplementation& Session::core() { return CoreImplementation::instance(); }

InstanceReference& Session::root() { return *core().instances().root(); }

InstanceReference* Session::tool(const std::string& name) { return core().instances().find(name); }

void Session::clear() { stage_.clear(); }

// Tools.

Result<InstanceReference*> Session::create(const std::string& type, const std::string& name,
                                           InstanceReference* parent)
{
    using Answer = Result<InstanceReference*>;
    if (!core::LibraryManager::instance().findTool(type))
        return Answer::failure("there is no tool type \"" + type + "\"");
    InstanceReference* const made = core().instances().create(type, name, parent);
    if (!made)
        return Answer::failure("a tool of type \"" + type + "\" can't be made here");
    return made;
}

Result<InstanceReference*> Session::createFromXml(const std::string& text, InstanceReference* parent)
{
    util::xml::Element record;
    if (record.parse(text) != 0)
        return Result<InstanceReference*>::failure("the text is no whole XML");
    return core().instances().createFromXml(record, parent);
}

Status Session::savePrm(const std::string& path)
{
    util::xml::Element record;
    core::writeRecord(root(), core::recordflag::plain, record);
    return record.save(path);
}

Status Session::loadPrm(const std::string& path, InstanceReference* parent)
{
    return core().instances().loadFile(path, parent);
}

void Session::makeFromTag(const util::xml::Element& record, const std::string& parent, int childIndex)
{
    InstanceReference* const above = parent.empty() ? nullptr : tool(parent);
    InstanceReference* const made = core().instances().createFromXml(record, above);
    if (made)
        (above ? above : &root())->attach(made, childIndex);
}

// Runs.

Status Session::record(const Take& take)
{
    if (!std::isfinite(take.seconds) || take.seconds < 0.0)
        return Status::failure("the length of a take must be a number of seconds, 0 or more");
    if (!hasOwnClock_)
        return Status::failure("a take at machine speed needs the session's own clock, and this session "
                               "runs by another");
    core::RecordManager& records = core().records();
    if (records.isRunning())
        return Status::failure("a run is on");
    const double start = stage_.getTime();
    {
        const RunGuard guard(records);
        TakeDirector director(records, take, start);
        records.startRecord(take.countdown);
        while (records.isRunning() && !director.isOver(records.frameTime()))
            virtualClock_.fireNext();
        records.stopRecord();
    }
    stage_.setTime(std::max(start, records.frameTime()));
    return {};
}

Status Session::resimulate(double from, double to, const Progress& progress)
{
    if (!std::isfinite(from) || !std::isfinite(to))
        return Status::failure("the stretch to resimulate must be given in seconds");
    core::RecordManager& records = core().records();
    if (records.startResimulation(from, to) != 0)
        return Status::failure("a run is on");
    const RunGuard guard(records);
    // The virtual clock stands still in a pass: its slices are so many frames.
    constexpr double kSlices = 100.0;
    constexpr double kLeast = 16.0, kMost = 1e6; // [frames]
    const double slice =
        progress ? std::clamp((to - from) * stage_.getFramesPerSecond() / kSlices, kLeast, kMost)
                 : kMost;
    while (!records.resimulateFrames(static_cast<std::int32_t>(slice))) {
        if (progress)
            progress(records.progress().fraction);
    }
    if (progress)
        progress(1.0);
    return {};
}

std::vector<LostTake> Session::lostTakes() const { return findLostTakes(); }

Status Session::recover(const LostTake& take, const Progress& progress)
{
    return recoverLostTake(*this, take, progress);
}

// Devices.

unidevice::ScriptedDevice& Session::addDevice(const std::string& name,
                                              const unidevice::ScriptedLayout& layout)
{
    return *new unidevice::ScriptedDevice(name, layout); // the hub ends it
}

void Session::removeDevice(unidevice::Device& device) { device.destroy(); }

// The stage's notifications.

void Session::timeChanged(double time) { core_->timeChanged(time); }

void Session::sceneClosing()
{
    scenePath_.clear();
    core().records().finishResimulation();
    core_->stopRecord();
    core_->deleteAllInstances();
}

void Session::sceneOpened() { stage_.gatherTools(); }

void Session::beforeSave()
{
    for (core::Instance* const instance : core().instances().collect(false))
        stage_.saveNodeTags(instance);
}

void Session::nodesAboutToBeDeleted(const std::vector<StageNode*>&)
{
    core().records().finishResimulation();
    core_->stopRecord();
}

} // namespace tvw::rgs::stage
