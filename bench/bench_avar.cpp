/// AVar against what one would write by hand: a vector of records and std::lower_bound.
#include "bench/compare.h"
#include "util/avar.h"
#include "util/random.h"

#include <algorithm>
#include <vector>

namespace {

using tvw::AVar_Linear;
using Line = AVar_Linear<double>;
using Record = Line::Record;

constexpr double kStep = 1.0 / 50.0;

/// One take: records laid on fresh storage, as many as the argument says.
void appendAgainstVector(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    double peerSum = 0.0;
    double oursSum = 0.0;
    const auto peer = [&] {
        std::vector<Record> records;
        for (int i = 0; i < count; ++i) {
            records.push_back({i * kStep, i * 0.5});
        }
        benchmark::DoNotOptimize(records.data());
        peerSum = records.back().time + records.back().value;
    };
    const auto ours = [&] {
        Line line;
        for (int i = 0; i < count; ++i) {
            line.set(i * kStep, i * 0.5);
        }
        benchmark::DoNotOptimize(line.records().data());
        oursSum = line.records().back().time + line.records().back().value;
    };
    peer();
    ours();
    if (peerSum != oursSum) {
        state.SkipWithError("the last records differ");
        return;
    }
    tvw::bench::compare(state, peer, ours);
}
BENCHMARK(appendAgainstVector)->Name("avar_append_vs_vector")->Arg(500)->Arg(15000)->Arg(1000000);

/// A retake: the records laid again on storage that was cut.
void retakeAgainstVector(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    std::vector<Record> records;
    Line line;
    const auto peer = [&] {
        records.clear();
        for (int i = 0; i < count; ++i) {
            records.push_back({i * kStep, i * 0.5});
        }
        benchmark::DoNotOptimize(records.data());
    };
    const auto ours = [&] {
        line.cutFrom(0.0);
        for (int i = 0; i < count; ++i) {
            line.set(i * kStep, i * 0.5);
        }
        benchmark::DoNotOptimize(line.records().data());
    };
    peer();
    ours();
    if (records.size() != line.size() || records.back().value != line.records().back().value) {
        state.SkipWithError("the records differ");
        return;
    }
    tvw::bench::compare(state, peer, ours);
}
BENCHMARK(retakeAgainstVector)->Name("avar_retake_vs_push_back")->Arg(15000);

enum Order { kForward, kBackward, kRandom };
enum Spacing { kEven, kUneven };

std::vector<double> recordTimes(int count, Spacing spacing)
{
    tvw::Random random(7);
    std::vector<double> times;
    double t = 0.0;
    for (int i = 0; i < count; ++i) {
        times.push_back(spacing == kEven ? i * kStep : t);
        const double share = random.next01(); // gaps of 1 to 10,000: no spacing to guess from
        t += kStep * (share * share * share * share * 10000.0 + 1.0);
    }
    return times;
}

std::vector<double> lookupTimes(double end, int count, Order order)
{
    tvw::Random random(11);
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        times.push_back(order == kRandom ? random.next01() * end : end * (i + 0.3) / count);
    }
    if (order == kBackward) {
        std::reverse(times.begin(), times.end());
    }
    return times;
}

/// The linear reading, with the same arithmetic, over std::lower_bound.
double peerGet(const std::vector<Record>& records, double t)
{
    const auto at = std::lower_bound(records.begin(), records.end(), t,
                                     [](const Record& r, double time) { return r.time < time; });
    if (at == records.end()) {
        return records.back().value;
    }
    if (at->time == t || at == records.begin()) {
        return at->value;
    }
    const Record& a = at[-1];
    return a.value + (at->value - a.value) * (t - a.time) / (at->time - a.time);
}

void lookupAgainstLowerBound(benchmark::State& state, Order order, Spacing spacing)
{
    const auto count = static_cast<int>(state.range(0));
    std::vector<Record> records;
    Line line;
    for (const double t : recordTimes(count, spacing)) {
        records.push_back({t, t * 0.25 + 1.0});
        line.set(t, t * 0.25 + 1.0);
    }
    const std::vector<double> times = lookupTimes(records.back().time, 4096, order);
    double peerSum = 0.0;
    double oursSum = 0.0;
    const auto peer = [&] {
        peerSum = 0.0;
        for (const double t : times) {
            peerSum += peerGet(records, t);
        }
        benchmark::DoNotOptimize(peerSum);
    };
    const auto ours = [&] {
        oursSum = 0.0;
        for (const double t : times) {
            oursSum += line.get(t);
        }
        benchmark::DoNotOptimize(oursSum);
    };
    peer();
    ours();
    if (peerSum != oursSum) {
        state.SkipWithError("the values read differ");
        return;
    }
    tvw::bench::compare(state, peer, ours);
}

#define LOOKUP(name, order, spacing)                                                               \
    BENCHMARK_CAPTURE(lookupAgainstLowerBound, name, order, spacing)                               \
        ->Name("avar_lookup_vs_lower_bound/" #name)                                                \
        ->Arg(500)                                                                                 \
        ->Arg(15000)
LOOKUP(forward, kForward, kEven);
LOOKUP(backward, kBackward, kEven);
LOOKUP(random, kRandom, kEven);
LOOKUP(forward_uneven, kForward, kUneven);
LOOKUP(random_uneven, kRandom, kUneven);

} // namespace
