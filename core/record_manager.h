/// Runs: recording against the clock, resimulation as fast as the tools go.
#pragma once

#include "core/core_subsystem.h"
#include "core/key_hook.h"
#include "core/low_poly_view.h"
#include "core/tick_order.h"
#include "core/timer.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tvw::rgs::core {

class Instance;

/// Hears a run's frames: the journal of the take, whoever moves scripted devices. Times are seconds.
class RunObserver
{
public:
    virtual void runComing() {} ///< before a take begins: the scene is still as the user left it
    virtual void runStarted(double /*start*/, const std::vector<Instance*>& /*running*/) {}
    virtual void beforeFrame(double /*time*/) {} ///< before the devices are read
    virtual void frameDone(double /*time*/, const std::vector<Instance*>& /*running*/) {}
    virtual void runEnded() {}

protected:
    ~RunObserver() = default;
};

/// How far a resimulation has come.
struct ResimulationProgress
{
    double start = 0.0, end = 0.0; ///< [s]
    double time = 0.0;             ///< of the next frame [s]
    double fraction = 0.0;         ///< 0 to 1
};

/// Shows a resimulation; without one it is driven by whoever started it.
class ResimulationView
{
public:
    virtual void opened(const ResimulationProgress& progress) = 0;
    virtual void closed() = 0;

protected:
    ~ResimulationView() = default;
};

class RecordManager final : public CoreSubSystem, public TimerTarget
{
public:
    RecordManager(CoreImplementation* core, Clock& clock);
    ~RecordManager() override;

    /// 0, or kAlreadyRunning. countdown [s]: below 0 that of the settings.
    int startRecord(int countdown = -1);
    void stopRecord();
    bool isRunning() const { return running_; }

    bool isResimulating() const { return resimulating_; }
    /// From the frame behind `from` to the last at or before `to` [s].
    int startResimulation(double from, double to);

    /// Frames until they are done (true, and the resimulation is over) or `budgetMs` have gone.
    bool resimulateSlice(std::int64_t budgetMs);

    /// As many frames, for whoever has no clock that runs: true when it is over.
    bool resimulateFrames(std::int32_t count);

    /// Ends it where it is: the keys so far stand.
    void finishResimulation();
    const ResimulationProgress& progress() const { return progress_; }
    void setView(ResimulationView* view) { view_ = view; } ///< null: none

    int getTimeScale() const;
    void setTimeScale(int n);

    void timeChanged(double time);

    KeyHook& keyHook() { return keyHook_; }
    Clock& clock() { return clock_; }

    void addObserver(RunObserver* observer) { observers_.push_back(observer); }
    void removeObserver(RunObserver* observer) { std::erase(observers_, observer); }

    /// Where the run has come: the time of the last frame that was simulated [s].
    double frameTime() const;
    const std::vector<Instance*>& running() const { return instances_; }
    /// How many frames the clock is ahead of the run: they are caught up over the next events.
    int framesBehind() const;

    void onTimer(std::int32_t id, std::int64_t elapsedMs) override;

    /// The number of the frame at or before a time. step [s].
    static std::int32_t timeToFrame(double time, double step);

private:
    static double inSteps(double time, double step);
    void collectInstances();
    void prepareDevices();
    void simulateFrame(double time);
    bool runDueFrames(double step);
    bool growRange();
    void showCountdown();
    std::int32_t firstFrameBehind(double from, double step) const;
    template <class F>
    bool resimulateUntil(F&& isEnough, std::int32_t stop);
    void resimulateBlock(std::int32_t stop, double step);
    bool isBeforeEnd(double time) const;
    bool onKey(std::int32_t key, bool isDown, unsigned modifiers);
    void stopInstances();

    static constexpr std::int32_t kRunTimer = 123;
    static constexpr int kMostFramesPerEvent = 3;
    static constexpr std::int32_t kMostInBlock = 256; ///< [frames]; more gain nothing

    Clock& clock_;
    KeyHook keyHook_;
    LowPolyView lowPoly_;
    ResimulationView* view_ = nullptr;
    std::vector<RunObserver*> observers_;

    bool firstTick_ = false;
    bool countedDown_ = false;
    double speed_ = 1.0; ///< 2^(n-1): how much slower than life
    double start_ = 0.0;
    double end_ = 0.0;
    std::vector<Instance*> instances_;
    std::int64_t lastClock_ = 0; ///< [ms]
    std::int32_t frame_ = 0;
    double currentTime_ = 0.0; ///< below start_ in the countdown
    bool running_ = false;

    bool resimulating_ = false;
    double savedSpeed_ = 1.0;
    ResimulationProgress progress_;
    TickOrder order_;
    std::int32_t blockFrames_ = 1; ///< how many frames the tools that see no other tick on end
};

} // namespace tvw::rgs::core
