#include "core/record_manager.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_manager.h"
#include "unidevice/device_hub.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tvw::rgs::core {

namespace {

constexpr double kSlack = 1e-6; ///< [frames]: 29 / 25 s is a hair less than 29 steps of 1 / 25 s

} // namespace

using unidevice::DeviceHub;

RecordManager::RecordManager(CoreImplementation* core, Clock& clock)
    : CoreSubSystem(core), clock_(clock)
{
    keyHook_.setCallback([this](std::int32_t pressed, bool isDown, unsigned modifiers) {
        onKey(pressed, isDown, modifiers);
    });
}

RecordManager::~RecordManager()
{
    clock_.killTimer(*this, kRunTimer);
}

std::int32_t RecordManager::timeToFrame(double time, double step)
{
    return static_cast<std::int32_t>(std::floor(time / step + kSlack));
}

/// Runs count times in steps: what the last take left at a frame must stand at the very start of a
/// run from there.
double RecordManager::inSteps(double time, double step)
{
    const double counted = timeToFrame(time, step) * step;
    return std::abs(time - counted) < kSlack * step ? counted : time;
}

double RecordManager::frameTime() const
{
    return frame_ * adaptor()->getFrameDuration();
}

int RecordManager::framesBehind() const
{
    if (!running_ || resimulating_)
        return 0;
    return std::max(0, timeToFrame(currentTime_, adaptor()->getFrameDuration()) + 1 - frame_);
}

// Recording.

int RecordManager::startRecord(int countdown)
{
    if (running_)
        return kAlreadyRunning;
    for (RunObserver* const observer : observers_)
        observer->runComing();
    AdaptorInterface& host = *adaptor();
    CoreImplementation& core = CoreImplementation::instance();
    if (core.windows().lowPolyOnRecord()) {
        lowPoly_.note();
        lowPoly_.setUp(*core.instances().root());
    }
    host.beginUndo("Record");
    running_ = true;
    TimeRange range;
    host.getRange(range);
    start_ = inSteps(host.getTime(), host.getFrameDuration());
    end_ = range.end;
    frame_ = timeToFrame(start_, host.getFrameDuration());
    keyHook_.setActive(true);
    collectInstances();
    prepareDevices();
    for (Instance* const instance : instances_)
        instance->startRun(start_);
    for (RunObserver* const observer : observers_)
        observer->runStarted(start_, instances_);

    if (countdown < 0)
        countdown = core.getSettings().startCountdown;
    firstTick_ = true;
    countedDown_ = countdown > 0;
    currentTime_ = start_ - countdown;
    host.setTimeScale(static_cast<std::int32_t>(std::min(speed_, 1e9)));
    if (countdown > 0)
        core.windows().showCountdown(countdown, 0.0);
    clock_.startTimer(*this, kRunTimer, host.getFrameDuration());
    core.windows().refreshRunState();
    return 0;
}

void RecordManager::collectInstances()
{
    const std::vector<Instance*> checked = CoreImplementation::instance().instances().collect(true);
    std::vector<CInterface*> running(checked.begin(), checked.end());
    adaptor()->beginRun(running);
    instances_.clear();
    for (CInterface* const instance : running)
        instances_.push_back(static_cast<Instance*>(instance));
}

/// The devices are read once, so that the tools' first look at their inputs sees the hand's
/// position and not that of the last run.
void RecordManager::prepareDevices()
{
    DeviceHub& hub = DeviceHub::instance();
    hub.setWindow(CoreImplementation::instance().windows().mainWindowHandle());
    hub.acquireAll();
    hub.updateAll();
}

void RecordManager::onTimer(std::int32_t id, std::int64_t elapsedMs)
{
    if (id != kRunTimer || !running_)
        return;
    AdaptorInterface& host = *adaptor();
    if (firstTick_) {
        firstTick_ = false;
        lastClock_ = elapsedMs;
    }
    clock_.killTimer(*this, kRunTimer);
    const std::int64_t began = clock_.elapsedMs();
    currentTime_ += static_cast<double>(elapsedMs - lastClock_) * 0.001 / speed_;
    lastClock_ = elapsedMs;
    if (currentTime_ > start_)
        CoreImplementation::instance().windows().hideCountdown();
    if (!runDueFrames(host.getFrameDuration()))
        return;
    if (start_ > currentTime_)
        showCountdown();
    host.setTime(currentTime_);
    const double taken = static_cast<double>(clock_.elapsedMs() - began) * 0.001;
    clock_.processEvents(); // may stop the run
    if (running_ && !resimulating_)
        clock_.startTimer(*this, kRunTimer, std::max(0.001, host.getFrameDuration() - taken));
}

/// At most a few frames an event: a late event catches up over the next ones, and none is left out.
/// False when the run has ended.
bool RecordManager::runDueFrames(double step)
{
    const std::int32_t target = timeToFrame(currentTime_, step) + 1;
    for (int pass = 0; pass < kMostFramesPerEvent && frame_ < target; ++pass) {
        ++frame_;
        if (currentTime_ >= end_ && !growRange())
            return false;
        // Without a countdown the clock stands at the start for its first event, which ticks
        // nothing.
        if (countedDown_ || currentTime_ > start_)
            simulateFrame(frame_ * step);
        if (!running_)
            return false;
    }
    return true;
}

bool RecordManager::growRange()
{
    if (!CoreImplementation::instance().windows().autoExpandTimeline()) {
        stopRecord();
        return false;
    }
    TimeRange range;
    adaptor()->getRange(range);
    constexpr double kLeastEnd = 1.0; // [s]: twice nothing would never come to an end
    end_ = std::max(end_ + end_, kLeastEnd);
    adaptor()->setRange({range.start, end_});
    return true;
}

void RecordManager::simulateFrame(double time)
{
    for (RunObserver* const observer : observers_)
        observer->beforeFrame(time);
    DeviceHub::instance().updateAll();
    for (Instance* const instance : instances_)
        instance->tick(time);
    for (RunObserver* const observer : observers_)
        observer->frameDone(time, instances_);
}

void RecordManager::showCountdown()
{
    const double remaining = start_ - currentTime_;
    const int seconds = static_cast<int>(remaining + 0.999);
    const bool over = seconds < 1;
    CoreImplementation::instance().windows().showCountdown(over ? 1 : seconds,
                                                           over ? 0.0 : std::fmod(remaining, 1.0));
}

void RecordManager::stopInstances()
{
    for (Instance* const instance : instances_)
        instance->stopRun();
    instances_.clear();
}

void RecordManager::stopRecord()
{
    if (!running_ || resimulating_)
        return;
    AdaptorInterface& host = *adaptor();
    Windows& windows = CoreImplementation::instance().windows();
    windows.hideCountdown();
    clock_.killTimer(*this, kRunTimer);
    currentTime_ = std::max(currentTime_, start_);
    stopInstances();
    for (RunObserver* const observer : observers_)
        observer->runEnded();
    DeviceHub::instance().releaseAll();
    host.setTimeScale(1);
    running_ = false;
    windows.refreshRunState();
    host.endRun();
    keyHook_.setActive(false);
    if (windows.lowPolyOnRecord())
        lowPoly_.putBack();
    host.endUndo();
}

bool RecordManager::onKey(std::int32_t pressed, bool isDown, unsigned modifiers)
{
    if (isDown || !running_ || resimulating_)
        return false;
    if (pressed == key::space || pressed == key::escape) {
        stopRecord();
        return true;
    }
    if (pressed == key::z && modifiers == modifier::ctrl) {
        stopRecord();
        if (adaptor()->hostUndo())
            startRecord();
        return true;
    }
    return false;
}

// Resimulation.

namespace {

/// Puts the host's time back where the user had it.
class TimeUndo final : public CUndo
{
public:
    TimeUndo() : time_(adaptor()->getTime()) {}
    void restore(bool) override { exchange(); }
    void redo() override { exchange(); }

private:
    void exchange()
    {
        const double present = adaptor()->getTime();
        adaptor()->setTime(time_);
        time_ = present;
    }
    double time_;
};

} // namespace

int RecordManager::startResimulation(double from, double to)
{
    if (running_)
        return kAlreadyRunning;
    AdaptorInterface& host = *adaptor();
    host.beginUndo("Resimulating");
    running_ = true;
    resimulating_ = true;
    const double step = host.getFrameDuration();
    start_ = inSteps(from, step);
    end_ = to;
    savedSpeed_ = std::exchange(speed_, 1.0);
    CoreImplementation::instance().windows().refreshRunState();
    host.pushUndo(new TimeUndo);
    host.setTime(start_); // the poses that are laid as the start are those of the start
    collectInstances();
    for (Instance* const instance : instances_)
        instance->startRun(start_);
    frame_ = firstFrameBehind(start_, step);
    progress_ = {start_, to, frame_ * step, 0.0};
    blockFrames_ = 1;
    if (view_)
        view_->opened(progress_);
    return 0;
}

/// The next frame; or, where a take that began without a countdown has its first frame later, that.
std::int32_t RecordManager::firstFrameBehind(double from, double step) const
{
    const std::int32_t next = timeToFrame(from, step) + 1;
    double first = 0.0;
    bool any = false;
    for (Instance* const instance : instances_) {
        for (const auto& line : instance->recordedInputs().lines()) {
            const auto records = line.records();
            const auto behind =
                std::find_if(records.begin(), records.end(),
                             [&](const auto& record) { return record.time > from; });
            const bool beginsHere = behind != records.begin() && std::prev(behind)->time == from;
            if (behind == records.end() || !beginsHere)
                continue;
            first = any ? std::min(first, behind->time) : behind->time;
            any = true;
        }
    }
    const double second = (next + 1) * step;
    return any && std::abs(first - second) < step / 2 ? next + 1 : next;
}

bool RecordManager::resimulateSlice(std::int64_t budgetMs)
{
    const std::int64_t began = clock_.elapsedMs();
    return resimulateUntil([&] { return clock_.elapsedMs() > began + budgetMs; },
                           std::numeric_limits<std::int32_t>::max());
}

bool RecordManager::resimulateFrames(std::int32_t count)
{
    const std::int32_t stop = frame_ + count;
    blockFrames_ = kMostInBlock;
    return resimulateUntil([&] { return frame_ >= stop; }, stop);
}

/// stop: a frame before which it rests.
template <class F>
bool RecordManager::resimulateUntil(F&& isEnough, std::int32_t stop)
{
    if (!resimulating_)
        return true;
    const double step = adaptor()->getFrameDuration();
    order_.arrange(instances_); // between two slices the user may do what he likes
    while (resimulating_ && isBeforeEnd(progress_.time)) { // a tool's act may end it
        progress_.fraction = (progress_.time - start_) / (end_ - start_);
        if (isEnough())
            return false;
        resimulateBlock(stop, step);
    }
    progress_.fraction = 1.0;
    finishResimulation();
    return true;
}

bool RecordManager::isBeforeEnd(double time) const
{
    constexpr double kEndSlack = 0.00001; // [s]
    return end_ + kEndSlack > time;
}

/// As many frames as pay, and as few as keep a slice near its budget.
void RecordManager::resimulateBlock(std::int32_t stop, double step)
{
    constexpr std::int64_t kLong = 20; // [ms]
    std::int32_t count = 1;
    while (count < blockFrames_ && frame_ + count < stop && isBeforeEnd((frame_ + count) * step))
        ++count;
    const std::int64_t began = clock_.elapsedMs();
    order_.tick(frame_, count, step);
    const std::int64_t taken = clock_.elapsedMs() - began;
    if (taken < kLong / 2)
        blockFrames_ = std::min(4 * blockFrames_, kMostInBlock);
    else if (taken > kLong)
        blockFrames_ = std::max(blockFrames_ / 2, 1);
    frame_ += count;
    progress_.time = frame_ * step;
}

void RecordManager::finishResimulation()
{
    if (!resimulating_)
        return;
    AdaptorInterface& host = *adaptor();
    stopInstances();
    speed_ = savedSpeed_;
    running_ = false;
    resimulating_ = false;
    CoreImplementation::instance().windows().refreshRunState();
    DeviceHub::instance().releaseAll();
    host.endRun();
    host.setTime(start_);
    host.endUndo();
    if (view_)
        view_->closed();
}

// Speed and time.

int RecordManager::getTimeScale() const
{
    return static_cast<int>(std::log(speed_) / std::log(2.0) + 0.001) + 1;
}

void RecordManager::setTimeScale(int n)
{
    constexpr int kLargest = 1000; // 2^(n-1) stays a finite number
    speed_ = std::exp2(std::clamp(n, 1, kLargest) - 1);
    if (running_ && !resimulating_)
        adaptor()->setTimeScale(static_cast<std::int32_t>(std::min(speed_, 1e9)));
}

void RecordManager::timeChanged(double time)
{
    if (running_) {
        for (Instance* const instance : instances_)
            instance->timeChanged(time);
        return;
    }
    for (Instance* const instance : CoreImplementation::instance().instances().collect(false))
        instance->timeChanged(time);
}

} // namespace tvw::rgs::core
