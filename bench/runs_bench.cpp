// What a run costs beside the tools' own arithmetic.
#include "adaptor/stage/session.h"
#include "core/instance.h"
#include "core/instance_reference.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using namespace tvw;
using namespace tvw::rgs;

std::unique_ptr<stage::Session> openSession()
{
    return *stage::Session::start({.range = {0.0, 40.0}, .isolated = true});
}

/// Resimulated frames of n Sinusoids; `ns_per_tool_frame` should stay flat.
void sinusoid_scaling(benchmark::State& state)
{
    const auto session = openSession();
    for (int i = 0; i < state.range(0); ++i)
        (void)session->create("Sinusoid");
    constexpr double seconds = 40.0;
    (void)session->record({.seconds = seconds});
    for ([[maybe_unused]] auto _ : state)
        (void)session->resimulate(0.0, seconds);
    const double frames = seconds * 25.0 * static_cast<double>(state.iterations());
    state.counters["frames_per_s"] = benchmark::Counter(frames, benchmark::Counter::kIsRate);
    state.counters["s_per_tool_frame"] =
        benchmark::Counter(frames * static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(sinusoid_scaling)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// One look at a node and one write, as every tool does in every frame.
void snapshot_cycle(benchmark::State& state)
{
    const auto session = openSession();
    core::Instance& tool = (*session->create("Sinusoid"))->instance();
    CNode* const node = tool.getNode("SinusNode");
    session->stage().setKeyMode(true);
    double time = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        time = time < 40.0 ? time + 0.04 : 0.0;
        Matrix4 pose;
        CSnapshot* const snapshot = tool.getSnapshot(node, time);
        snapshot->getGlobal(pose);
        snapshot->setGlobal(pose);
        tool.releaseSnapshot(snapshot);
    }
}
BENCHMARK(snapshot_cycle);

/// From nothing to a ready core, and down again.
void core_start(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(openSession());
}
BENCHMARK(core_start)->Unit(benchmark::kMillisecond);

} // namespace
