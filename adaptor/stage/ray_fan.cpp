#include "adaptor/stage/ray_fan.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <immintrin.h>
#include <utility>

// The vectors below never leave this file.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace tvw::rgs::stage {

/// What of a tree a fan walks through.
class FanTree
{
public:
    using Node = MeshTree::Node;
    using Leaf = MeshTree::Leaf;

    explicit FanTree(const MeshTree& tree) : nodes(tree.nodes_.data()), leaves(tree.leaves_.data())
    {
    }

    const Node* nodes;
    const Leaf* leaves;

    static constexpr int kStack = MeshTree::kStack;

    static bool isLeaf(std::uint32_t child) { return (child & MeshTree::kLeafMark) != 0; }
    const Leaf& leaf(std::uint32_t child) const { return leaves[child & ~MeshTree::kLeafMark]; }

    /// Of a leaf's triangles.
    static std::uint32_t firstSlot(std::uint32_t child)
    {
        return 4 * (child & ~MeshTree::kLeafMark);
    }

    /// Asks for a child: the way down costs what the memory takes to answer.
    void fetch(std::uint32_t child) const
    {
        const bool ends = isLeaf(child);
        const char* const start = ends ? reinterpret_cast<const char*>(&leaf(child))
                                       : reinterpret_cast<const char*>(&nodes[child]);
        __builtin_prefetch(start);
        __builtin_prefetch(start + 64);
        if (ends) {
            __builtin_prefetch(start + 128);
            __builtin_prefetch(start + 192);
            __builtin_prefetch(start + 256);
        }
    }
};

namespace {

using FanNode = FanTree::Node;
using FanLeaf = FanTree::Leaf;

constexpr double kFarthest = 1e300;
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
    explicit FanAxes(int axis) : mainAxis(axis), isDown(axis % 2 != 0)
    {
        k[2] = axis / 2;
        k[0] = (k[2] + 1) % 3;
        k[1] = (k[0] + 1) % 3;
        if (isDown)
            std::swap(k[0], k[1]);
    }

    int k[3];
    int mainAxis; ///< as the function answers it
    bool isDown;
};

typedef double Lanes __attribute__((vector_size(32)));
typedef long long Marks __attribute__((vector_size(32)));
typedef double Pair __attribute__((vector_size(16)));
typedef float Floats __attribute__((vector_size(16)));

constexpr Marks kNone{kNoTriangle, kNoTriangle, kNoTriangle, kNoTriangle};

/// Normals of triangles that were hit: many rays share few of them.
class HitNormals
{
public:
    const Vector3d& of(const FanTree& tree, long long treeSlot)
    {
        const auto slot = static_cast<std::uint32_t>(treeSlot);
        Known& known = known_[slot % kMost];
        if (known.slot != slot) {
            const FanLeaf& leaf = tree.leaves[slot / 4];
            const auto lane = static_cast<int>(slot % 4);
            const Vector3d a = leaf.at(0, lane);
            known = {normalise(cross(leaf.at(1, lane) - a, leaf.at(2, lane) - a)), slot};
        }
        return known.normal;
    }

private:
    static constexpr std::size_t kMost = 32; ///< each at the place that its slot gives

    struct Known
    {
        Vector3d normal;
        std::uint32_t slot = ~0U;
    };
    Known known_[kMost];
};

namespace baseline {
#include "adaptor/stage/ray_fan_lanes.inc"
} // namespace baseline

#pragma GCC push_options
#pragma GCC target("avx2")
#define RIGSTAGE_AVX2
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
