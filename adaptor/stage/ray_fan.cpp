#include "adaptor/stage/ray_fan.h"

#include <cmath>
#include <utility>

// The vectors below never leave this file.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace tvw::rgs::stage {

/// What of a tree a fan walks through.
class FanTree
{
public:
    using Node = MeshTree::Node;

    explicit FanTree(const MeshTree& tree) : nodes(tree.nodes_), triangles(tree.triangles_) {}

    std::span<const Node> nodes;
    std::span<const MeshTree::Triangle> triangles;

    static constexpr int kDepth = MeshTree::kDepth;

    /// Asks for what lies below a node: the way down costs what the memory takes to answer.
    void fetch(const Node& node) const
    {
        if (node.count != 0) {
            __builtin_prefetch(&triangles[node.first]);
            __builtin_prefetch(&triangles[node.first + node.count - 1]);
        } else {
            __builtin_prefetch(&nodes[node.first]);
        }
    }

    static Box boxOf(const MeshTree::Triangle& triangle) { return MeshTree::boxOf(triangle); }
};

namespace {

using FanNode = FanTree::Node;

constexpr int kTreeDepth = FanTree::kDepth;
constexpr double kSteepest = 1e300; ///< of 1 / direction: 0 * infinity is no number
constexpr double kFarthest = 1e300;
constexpr double kNever = 1e301;
constexpr long long kNoTriangle = 1LL << 40; ///< greater than any index

bool isUsable(const Vector3d& v)
{
    constexpr double kLimit = 1e100;
    return std::abs(v.x) <= kLimit && std::abs(v.y) <= kLimit && std::abs(v.z) <= kLimit;
}

/// The axis along which a direction is longest, doubled; odd where the direction runs down it.
int mainAxis(const Vector3d& d)
{
    const double x = std::abs(d.x);
    const double y = std::abs(d.y);
    const double z = std::abs(d.z);
    if (x > y && x > z)
        return d.x < 0.0 ? 1 : 0;
    if (y > z && !(x > y))
        return d.y < 0.0 ? 3 : 2;
    return d.z < 0.0 ? 5 : 4;
}

/// The axes of the world in the order of the ray test: last the main one, the others so that the
/// shear along it keeps the handedness.
struct FanAxes
{
    explicit FanAxes(int mainAxis)
    {
        k[2] = mainAxis / 2;
        k[0] = (k[2] + 1) % 3;
        k[1] = (k[0] + 1) % 3;
        if (mainAxis % 2 != 0)
            std::swap(k[0], k[1]);
    }

    int k[3];
};

/// A triangle along those axes.
struct Corners
{
    Corners(const MeshTree::Triangle& t, const FanAxes& axes)
    {
        const double flat[9] = {t.a.x, t.a.y, t.a.z, t.b.x, t.b.y, t.b.z, t.c.x, t.c.y, t.c.z};
        for (int i = 0; i < 3; ++i) {
            a[i] = flat[axes.k[i]];
            b[i] = flat[3 + axes.k[i]];
            c[i] = flat[6 + axes.k[i]];
        }
    }

    double a[3], b[3], c[3];
};

/// Bounds of some rays.
struct Reach
{
    Box origins;
    Box directions;

    void add(const Reach& other)
    {
        origins.add(other.origins);
        directions.add(other.directions);
    }
};

/// The space through which rays within a reach pass: after the distance t each of their coordinates
/// lies between low + t * slow and high + t * fast.
class Bundle
{
public:
    Bundle(const Reach& reach, double maxDistance)
        : low_(reach.origins.low), high_(reach.origins.high), limit_(maxDistance)
    {
        for (int i = 0; i < 3; ++i) {
            // A little wider than the rays, by far more than the roundings of the test.
            const double margin = 1e-12 * (std::abs(low_[i]) + std::abs(high_[i])) + 1e-300;
            low_[i] -= margin;
            high_[i] += margin;
            slow_[i] = std::clamp(1.0 / (reach.directions.low[i] - 1e-12), -kSteepest, kSteepest);
            fast_[i] = std::clamp(1.0 / (reach.directions.high[i] + 1e-12), -kSteepest, kSteepest);
        }
    }

    [[nodiscard]] bool touches(const Box& box) const
    {
        double in = 0.0;
        double out = limit_;
        for (int i = 0; i < 3; ++i) {
            const double below = (box.high[i] - low_[i]) * slow_[i];
            const double above = (box.low[i] - high_[i]) * fast_[i];
            if (slow_[i] > 0.0)
                out = std::min(out, below);
            else
                in = std::max(in, below);
            if (fast_[i] > 0.0)
                in = std::max(in, above);
            else
                out = std::min(out, above);
        }
        return in <= out;
    }

private:
    Vector3d low_, high_;
    Vector3d slow_, fast_; ///< 1 / speed
    double limit_;
};

/// The triangles that a bundle touches while they are few.
struct FanTriangles
{
    /// Beyond so many a walk by fours is taken to be cheaper than testing all rays against each: an
    /// estimate, not tuned.
    static constexpr int kMost = 25;

    std::uint32_t slot[kMost];
    int count = 0;

    /// False when the leaf's would be too many.
    bool add(const FanTree& tree, const FanNode& leaf, const Bundle& bundle)
    {
        for (std::uint32_t i = leaf.first; i < leaf.first + leaf.count; ++i) {
            if (!bundle.touches(FanTree::boxOf(tree.triangles[i])))
                continue;
            if (count == kMost)
                return false;
            slot[count++] = i;
        }
        return true;
    }
};

/// False when more triangles than that lie under the bundle. Moves `start` down to the node below
/// which all of them are.
bool gather(const FanTree& tree, const Bundle& bundle, std::uint32_t& start, FanTriangles& out)
{
    std::uint32_t stack[kTreeDepth];
    int open = 0;
    bool branched = false;
    if (bundle.touches(tree.nodes[start].box))
        stack[open++] = start;
    while (open != 0) {
        const std::uint32_t index = stack[--open];
        const FanNode& node = tree.nodes[index];
        if (!branched)
            start = index;
        if (node.count != 0) {
            if (!out.add(tree, node, bundle))
                return false;
            continue;
        }
        const bool left = bundle.touches(tree.nodes[index + 1].box);
        const bool right = bundle.touches(tree.nodes[node.first].box);
        if (right) {
            stack[open++] = node.first;
            tree.fetch(tree.nodes[node.first]);
        }
        if (left) {
            stack[open++] = index + 1;
            tree.fetch(tree.nodes[index + 1]);
        }
        branched = branched || (left && right);
    }
    return true;
}

namespace baseline {
#include "adaptor/stage/ray_fan_lanes.inc"
} // namespace baseline

#pragma GCC push_options
#pragma GCC target("avx2")
namespace avx2 {
#include "adaptor/stage/ray_fan_lanes.inc"
} // namespace avx2
#pragma GCC pop_options

} // namespace

void castRayFan(const MeshTree& tree, const MeshRayFan& fan) noexcept
{
    static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0;
    const FanTree parts(tree);
    if (hasAvx2)
        avx2::castAll(parts, fan);
    else
        baseline::castAll(parts, fan);
}

void castRayFanBaseline(const MeshTree& tree, const MeshRayFan& fan) noexcept
{
    baseline::castAll(FanTree(tree), fan);
}

} // namespace tvw::rgs::stage
