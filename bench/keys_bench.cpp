/// Key tracks against a bare vector of the same records, and the undo of a take.
#include "adaptor/stage/stage.h"
#include "bench/compare.h"

#include <algorithm>
#include <vector>

namespace {

using tvw::Matrix4;
using namespace tvw::rgs::stage;

using Track = KeyTrack<Matrix4>;
using Key = TrackKey<Matrix4>;

constexpr int kFrames = 100'000;
constexpr Flicks kFrame = kFlicksPerSecond / 25;

/// The pose of a frame: three of its numbers move, as those of a node on its way do.
Matrix4 poseAt(int frame)
{
    Matrix4 pose;
    tvw::setTranslation(pose, {frame * 0.1, 0.5, frame * -0.25});
    return pose;
}

void fill(Track& track)
{
    for (int i = 0; i < kFrames; ++i)
        track.write(i * kFrame, poseAt(i));
}

void fill(std::vector<Key>& keys)
{
    for (int i = 0; i < kFrames; ++i)
        keys.push_back({i * kFrame, poseAt(i)});
}

bool areEqual(const Track& track, const std::vector<Key>& keys)
{
    std::size_t i = 0;
    bool equal = track.size() == keys.size();
    track.forEach([&](const Key& key) {
        equal = equal && key.time == keys[i].time && key.value == keys[i].value;
        ++i;
    });
    return equal;
}

bool answersAgree(benchmark::State& state)
{
    Track track;
    std::vector<Key> keys;
    fill(track);
    fill(keys);
    const bool agree = areEqual(track, keys);
    if (!agree)
        state.SkipWithError("the keys differ");
    return agree;
}

void freshVector()
{
    std::vector<Key> keys;
    fill(keys);
    benchmark::DoNotOptimize(keys.data());
}

/// A first take: no storage is at hand on either side, and both give theirs back.
void appendAgainstVector(benchmark::State& state)
{
    if (!answersAgree(state))
        return;
    Track::trimBlocks();
    tvw::bench::compare(state, freshVector, [] {
        {
            Track track;
            fill(track);
            benchmark::DoNotOptimize(track.lastTime());
        }
        Track::trimBlocks();
    });
}
BENCHMARK(appendAgainstVector)->Name("key_append_vs_vector");

/// A further take of the same node, against a vector made for it: ours lies on the last one's
/// storage.
void retakeAgainstVector(benchmark::State& state)
{
    if (!answersAgree(state))
        return;
    Track track;
    fill(track);
    tvw::bench::compare(state, freshVector, [&] {
        track.cutBehind(0);
        fill(track);
        benchmark::DoNotOptimize(track.lastTime());
    });
}
BENCHMARK(retakeAgainstVector)->Name("key_retake_vs_vector");

/// One undo and one redo of a whole take of one node, at the seam. Fails where the mean is 1 ms or
/// more.
void takeUndo(benchmark::State& state)
{
    Stage stage;
    StageNode& node = stage.addEmpty("node");
    stage.beginUndo("Record");
    for (int i = 0; i < kFrames; ++i)
        node.setLocal(poseAt(i), i * 0.04, true);
    stage.endUndo();
    stage.hostUndo();
    const bool gone = node.poseKeys().empty();
    stage.hostRedo();
    if (!gone || node.poseKeys().size() != kFrames) {
        state.SkipWithError("the take is not undone and redone");
        return;
    }
    std::int64_t total = 0;
    std::int64_t worst = 0;
    for ([[maybe_unused]] auto _ : state) {
        const std::int64_t once = tvw::bench::nanosecondsOf([&] {
            stage.hostUndo();
            stage.hostRedo();
        });
        total += once;
        worst = std::max(worst, once);
    }
    const double mean = static_cast<double>(total) / static_cast<double>(state.iterations());
    state.counters["ours_ns"] = mean;
    state.counters["worst_ns"] = static_cast<double>(worst);
    constexpr double kLimit = 1e6;
    if (mean >= kLimit)
        state.SkipWithError("undo and redo of a take take a millisecond or more");
}
BENCHMARK(takeUndo)->Name("take_undo");

} // namespace
