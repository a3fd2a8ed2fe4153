/// How a comparison with a peer is measured.
///
/// Each iteration runs the peer and ours in turn, and they take turns who goes first, on the
/// thread's own processor time. So both see the same state of caches, clock and neighbours, and
/// the ratio holds far better than either time. Counters: `peer_ns`, `ours_ns` (mean of one run)
/// and `ratio` = ours / peer; below 1 ours is faster.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <ctime>
#include <utility>

namespace tvw::bench {

/// Processor time of this thread [ns].
inline std::int64_t threadNanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

template <class F>
std::int64_t nanosecondsOf(F&& run)
{
    const std::int64_t begin = threadNanoseconds();
    std::forward<F>(run)();
    return threadNanoseconds() - begin;
}

/// Runs `peer` and `ours` in turn for as long as the benchmark lasts and sets the counters.
/// Compare their answers before the call, and skip the entry with an error where they differ.
template <class Peer, class Ours>
void compare(benchmark::State& state, Peer&& peer, Ours&& ours)
{
    std::int64_t peerTotal = 0;
    std::int64_t oursTotal = 0;
    bool peerFirst = true;
    for ([[maybe_unused]] auto _ : state) {
        if (peerFirst) {
            peerTotal += nanosecondsOf(peer);
            oursTotal += nanosecondsOf(ours);
        } else {
            oursTotal += nanosecondsOf(ours);
            peerTotal += nanosecondsOf(peer);
        }
        peerFirst = !peerFirst;
    }
    const auto n = static_cast<double>(state.iterations());
    state.counters["peer_ns"] = static_cast<double>(peerTotal) / n;
    state.counters["ours_ns"] = static_cast<double>(oursTotal) / n;
    state.counters["ratio"] = static_cast<double>(oursTotal) / static_cast<double>(peerTotal);
}

/// One of a crowd of `count` against one alone, where only one session can stand at a time: each is
/// made anew by `make(count)`, a pointer to something with `resimulate`. peer_ns, ours_ns: of one
/// member in one pass.
template <class Make>
void compareAmong(benchmark::State& state, int count, Make&& make)
{
    const auto costOfOne = [&](int members, int passes) {
        const auto crowd = make(members);
        crowd->resimulate(); // its memory is where it will be
        const std::int64_t taken = nanosecondsOf([&] {
            for (int i = 0; i < passes; ++i)
                crowd->resimulate();
        });
        return static_cast<double>(taken) / passes / members;
    };
    double alone = 0.0;
    double among = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        alone += costOfOne(1, 2 * count);
        among += costOfOne(count, 2);
    }
    const auto n = static_cast<double>(state.iterations());
    state.counters["peer_ns"] = alone / n;
    state.counters["ours_ns"] = among / n;
    state.counters["ratio"] = among / alone;
}

} // namespace tvw::bench
