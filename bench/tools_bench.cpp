// What one frame of each type of tool costs, alone and among a hundred of its kind.
#include "adaptor/stage/session.h"
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

/// Resimulated frames of n tools of one type whose inputs swing. The time is that of one tool in
/// one frame; it should be the same for 1 and for 100.
void tools_per_frame(benchmark::State& state, const std::string& type)
{
    const auto session = *stage::Session::start({.range = {0.0, kSeconds}, .isolated = true});
    // The memory of old takes comes back at once, for one tool as for a hundred: else one's would
    // after 200 takes, and a hundred's never within the measurement.
    session->stage().undoStack().setLimit(1);
    constexpr int kAxes = 16;
    unidevice::ScriptedDevice& pad = session->addDevice("Pad", {.axes = kAxes});
    for (int i = 0; i < state.range(0); ++i)
        bind((*session->create(type))->instance(), pad);
    (void)session->record({.seconds = kSeconds, .beforeFrame = [&](double t) {
                               for (int i = 0; i < kAxes; ++i)
                                   pad.set("Axis", i, std::sin((0.7 + 0.31 * i) * t));
                           }});
    constexpr auto kFrames = static_cast<benchmark::IterationCount>(kSeconds * 25.0);
    while (state.KeepRunningBatch(kFrames * state.range(0)))
        (void)session->resimulate(0.0, kSeconds);
}

const bool kRegistered = [] {
    for (const MakePlugin make : toolTable()) {
        CCameraPlugin* const plugin = make();
        const std::string id = plugin->getId();
        plugin->destroy();
        benchmark::RegisterBenchmark(("tools_per_frame/" + id).c_str(),
                                     [id](benchmark::State& state) { tools_per_frame(state, id); })
            ->Arg(1)
            ->Arg(100)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

} // namespace
