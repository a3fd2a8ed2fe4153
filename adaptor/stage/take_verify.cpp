#include "adaptor/stage/take_verify.h"

#include "core/core_implementation.h"
#include "core/instance.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace tvw::rgs::stage {

namespace {

void widen(std::optional<TakeExtent>& all, const TakeExtent& by)
{
    all = all ? TakeExtent{std::min(all->start, by.start), std::max(all->end, by.end)} : by;
}

/// A take lays a key at its start and at each frame: one key alone is none.
template <class T>
void widen(std::optional<TakeExtent>& all, const KeyTrack<T>& keys)
{
    if (keys.size() > 1)
        widen(all, {toSeconds(keys.key(0).time), toSeconds(keys.lastTime())});
}

} // namespace

std::optional<TakeExtent> takeExtent(Session& session, core::Instance& tool)
{
    TakeExtent recorded;
    if (tool.recordedInputs().extent(recorded.start, recorded.end))
        return recorded;
    std::optional<TakeExtent> keyed;
    if (tool.properties().count() > 0)
        return keyed;
    session.stage().forEachNode([&](const StageNode& node) {
        if (session.stage().ownerOf(node) != &tool)
            return;
        widen(keyed, node.poseKeys());
        widen(keyed, node.fovKeys());
    });
    return keyed;
}

std::optional<TakeExtent> takeExtent(Session& session)
{
    std::optional<TakeExtent> all;
    for (core::Instance* const tool : session.core().instances().collect(true)) {
        if (const auto one = takeExtent(session, *tool))
            widen(all, *one);
    }
    return all;
}

namespace {

template <class T>
using Keys = std::vector<TrackKey<T>>;

template <class T>
Keys<T> keysOf(const KeyTrack<T>& track)
{
    Keys<T> keys;
    keys.reserve(track.size());
    track.forEach([&](const TrackKey<T>& key) { keys.push_back(key); });
    return keys;
}

struct NodeKeys
{
    const StageNode* node;
    std::string name;
    Keys<Matrix4> pose;
    Keys<double> fov, targetDistance;
};

NodeKeys keysOf(const StageNode& node)
{
    return {&node, node.name(), keysOf(node.poseKeys()), keysOf(node.fovKeys()),
            keysOf(node.targetDistanceKeys())};
}

bool sameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

std::string poseValueName(int element)
{
    constexpr const char* kPositions[] = {"position x", "position y", "position z"};
    const bool isPosition = element >= 12 && element <= 14;
    return isPosition ? kPositions[element - 12]
                      : "element " + std::to_string(element) + " of the pose";
}

/// Keeps the earliest difference of those that it is told.
class FirstDifference
{
public:
    void compare(const std::string& node, const Keys<Matrix4>& taken, const Keys<Matrix4>& now)
    {
        walk(node, "pose", taken, now, [&](Flicks time, const Matrix4& a, const Matrix4& b) {
            for (int i = 0; i < 16; ++i) {
                if (!sameBits(a[i], b[i]))
                    return tell(time, node, poseValueName(i), a[i], b[i]);
            }
        });
    }

    void compare(const std::string& node, const char* value, const Keys<double>& taken,
                 const Keys<double>& now)
    {
        walk(node, value, taken, now, [&](Flicks time, double a, double b) {
            if (!sameBits(a, b))
                tell(time, node, value, a, b);
        });
    }

    [[nodiscard]] const std::optional<TakeDifference>& found() const { return found_; }

private:
    template <class T, class F>
    void walk(const std::string& node, const char* value, const Keys<T>& taken, const Keys<T>& now,
              F&& compareValues)
    {
        std::size_t a = 0;
        std::size_t b = 0;
        while (a < taken.size() || b < now.size()) {
            const bool hasTaken =
                a < taken.size() && (b == now.size() || taken[a].time <= now[b].time);
            const bool hasNow =
                b < now.size() && (a == taken.size() || now[b].time <= taken[a].time);
            const Flicks time = hasTaken ? taken[a].time : now[b].time;
            if (hasTaken && hasNow)
                compareValues(time, taken[a].value, now[b].value);
            else
                tell(time, node, value, firstOf(hasTaken, taken, a), firstOf(hasNow, now, b));
            a += hasTaken ? 1 : 0;
            b += hasNow ? 1 : 0;
        }
    }

    static double numberOf(const Matrix4& pose) { return pose[12]; }
    static double numberOf(double value) { return value; }
    template <class T>
    static std::optional<double> firstOf(bool has, const Keys<T>& keys, std::size_t i)
    {
        return has ? std::optional(numberOf(keys[i].value)) : std::nullopt;
    }

    void tell(Flicks time, const std::string& node, const std::string& value,
              std::optional<double> taken, std::optional<double> now)
    {
        if (found_ && time >= at_)
            return;
        at_ = time;
        found_ = TakeDifference{toSeconds(time), node, value, taken, now};
    }

    Flicks at_ = 0;
    std::optional<TakeDifference> found_;
};

} // namespace

Result<TakeComparison> verifyTake(Session& session, const Progress& progress)
{
    using Answer = Result<TakeComparison>;
    const std::optional<TakeExtent> extent = takeExtent(session);
    if (!extent)
        return Answer::failure(
            "the scene has no take: no tool that takes part in a run has recorded input or keys");
    Stage& stage = session.stage();
    std::vector<NodeKeys> taken;
    stage.forEachNode([&](const StageNode& node) { taken.push_back(keysOf(node)); });
    if (const Status done = session.resimulate(extent->start, extent->end, progress); !done)
        return Answer::failure(done.reason());
    TakeComparison comparison{*extent, 0, {}};
    FirstDifference first;
    for (const NodeKeys& before : taken) {
        const NodeKeys now = keysOf(*before.node);
        first.compare(before.name, before.pose, now.pose);
        first.compare(before.name, "field of view", before.fov, now.fov);
        first.compare(before.name, "target distance", before.targetDistance, now.targetDistance);
        comparison.keys += before.pose.size() + before.fov.size() + before.targetDistance.size();
    }
    comparison.difference = first.found();
    stage.hostUndo();
    return comparison;
}

} // namespace tvw::rgs::stage
