// What one frame of each type of tool costs, alone and among a hundred of its kind.
#include "adaptor/stage/session.h"
#include "bench/compare.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "plugins/tool_table.h"
#include "unidevice/scripted_device.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <string>

namespace {

using namespace tvw;
using namespace tvw::rgs;

constexpr double kSeconds = 8.0;

/// Every input of the tool on an axis of the pad, as far as it has some.
void bind(core::Instance& tool, unidevice::ScriptedDevice& pad)
{
    auto& inputs = tool.properties();
    for (int i = 0; i < inputs.count(); ++i) {
        if (!inputs.propertyAt(i)->name().starts_with("Spinner: "))
            inputs.propertyAt(i)->bind(pad.controlAt(i % pad.controlCount()));
    }
}

/// Tools of one type whose inputs swing, with a take behind them.
class Crowd
{
public:
    Crowd(const std::string& type, std::int64_t count)
        : session_(*stage::Session::start({.range = {0.0, kSeconds}, .isolated = true}))
    {
        // The memory of old takes comes back at once, for one tool as for a hundred: else one's
        // would after 200 takes, and a hundred's never within the measurement.
        session_->stage().undoStack().setLimit(1);
        constexpr int kAxes = 16;
        unidevice::ScriptedDevice& pad = session_->addDevice("Pad", {.axes = kAxes});
        for (std::int64_t i = 0; i < count; ++i)
            bind((*session_->create(type))->instance(), pad);
        (void)session_->record({.seconds = kSeconds, .beforeFrame = [&](double t) {
                                    for (int i = 0; i < kAxes; ++i)
                                        pad.set("Axis", i, std::sin((0.7 + 0.31 * i) * t));
                                }});
    }
    void resimulate() { (void)session_->resimulate(0.0, kSeconds); }

private:
    std::unique_ptr<stage::Session> session_;
};

/// Resimulated frames of n tools. The time is that of one tool in one frame.
void toolsPerFrame(benchmark::State& state, const std::string& type)
{
    Crowd crowd(type, state.range(0));
    constexpr auto kFrames = static_cast<benchmark::IterationCount>(kSeconds * 25.0);
    while (state.KeepRunningBatch(kFrames * state.range(0)))
        crowd.resimulate();
}

/// A tool among a hundred of its kind against one alone; it should cost the same.
void amongAHundred(benchmark::State& state, const std::string& type)
{
    tvw::bench::compareAmong(
        state, 100, [&](int count) { return std::make_unique<Crowd>(type, count); });
}

const bool kRegistered = [] {
    for (const MakePlugin make : toolTable()) {
        CCameraPlugin* const plugin = make();
        const std::string id = plugin->getId();
        plugin->destroy();
        benchmark::RegisterBenchmark(("tools_per_frame/" + id).c_str(),
                                     [id](benchmark::State& state) { toolsPerFrame(state, id); })
            ->Arg(1)
            ->Arg(100)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("tool_among_100_vs_one/" + id).c_str(),
                                     [id](benchmark::State& state) { amongAHundred(state, id); })
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

} // namespace
