/// A bounding volume hierarchy over the triangles of one mesh, in the mesh's own space.
///
/// Built once: moving the node that shows the mesh costs nothing. Queries allocate nothing and may
/// run on several threads. The ray test is in double precision and watertight: a ray that passes
/// through an edge or a vertex that triangles share can't slip between them.
///
/// A node holds the boxes of four children in float, rounded outward, so that a step of the way
/// down reads two lines of the cache; a leaf holds four triangles side by side, ready for vector
/// lanes.
///
/// Ray test: Woop, Benthin, Wald, "Watertight Ray/Triangle Intersection", JCGT 2(1), 2013. Build:
/// surface area heuristic over 16 bins (Wald, "On fast Construction of SAH-based Bounding Volume
/// Hierarchies", 2007).
#pragma once

#include "util/huge_pages.h"
#include "util/vector3.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tvw::rgs::stage {

/// Axis-parallel. An empty box has low > high.
struct Box
{
    Vector3d low{1e300, 1e300, 1e300};
    Vector3d high{-1e300, -1e300, -1e300};

    void add(const Vector3d& p) noexcept
    {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    void add(const Box& box) noexcept
    {
        low = {std::min(low.x, box.low.x), std::min(low.y, box.low.y), std::min(low.z, box.low.z)};
        high = {std::max(high.x, box.high.x), std::max(high.y, box.high.y),
                std::max(high.z, box.high.z)};
    }
    [[nodiscard]] bool isEmpty() const noexcept { return low.x > high.x; }
};

/// The direction of a ray at length 1; one that is so but for a rounding stays as it is, and is not
/// paid for. (0, 0, 0) when it has no length, or is no number.
[[nodiscard]] inline Vector3d unitDirection(const Vector3d& direction) noexcept
{
    const double square = lengthSquared(direction);
    if (std::abs(square - 1.0) <= 1e-15)
        return direction;
    const double size = std::sqrt(square);
    return size > 0.0 && std::isfinite(size) ? direction / size : Vector3d{};
}

struct RayHit
{
    double distance = 0.0; ///< from the origin, in units of the mesh's space
    Vector3d normal;       ///< of unit length, by the right hand round the corners' order
    std::uint32_t triangle = 0;
};

class MeshTree
{
public:
    struct Triangle
    {
        Vector3d a, b, c;
        std::uint32_t index; ///< in the mesh
    };

    MeshTree() = default;

    /// vertices: points; indices: three for each triangle. A triangle with an index out of range or
    /// a coordinate that is no number, or beyond 1e100, is left out; one without area is kept and
    /// never hit.
    MeshTree(std::span<const Vector3d> vertices, std::span<const std::int32_t> indices);

    /// The nearest hit at or in front of the origin, from either side; of hits at one distance the
    /// triangle that comes first in the mesh. direction need not be of unit length; one of length
    /// 0, or one that is no number, hits nothing.
    [[nodiscard]] std::optional<RayHit> rayCast(const Vector3d& origin,
                                                const Vector3d& direction) const noexcept;

    [[nodiscard]] const Box& box() const noexcept { return box_; }
    [[nodiscard]] std::size_t triangleCount() const noexcept { return triangleCount_; }

private:
    friend class FanTree;

    static constexpr int kWide = 4;
    static constexpr std::uint32_t kLeafMark = 1U << 31;
    static constexpr std::uint32_t kNoTriangle = ~0U;

    struct Node
    {
        float low[3][kWide]; ///< of the children's boxes, by axis; no child: at infinity
        float high[3][kWide];
        std::uint32_t child[kWide]; ///< a node, or kLeafMark | a leaf
        std::uint32_t unused[kWide];

        [[nodiscard]] Box box(int i) const noexcept
        {
            return {{low[0][i], low[1][i], low[2][i]}, {high[0][i], high[1][i], high[2][i]}};
        }
    };
    static_assert(sizeof(Node) == 128, "two lines of the cache");

    struct Leaf
    {
        double corner[3][3][kWide]; ///< by corner, axis and triangle; far out where there is none
        std::uint32_t index[kWide]; ///< in the mesh; kNoTriangle from where there is none on
        std::uint32_t unused[kWide];

        [[nodiscard]] Vector3d at(int c, int i) const noexcept
        {
            return {corner[c][0][i], corner[c][1][i], corner[c][2][i]};
        }
        [[nodiscard]] Triangle triangle(int i) const noexcept
        {
            return {at(0, i), at(1, i), at(2, i), index[i]};
        }
    };
    static_assert(sizeof(Leaf) == 320, "five lines of the cache");

    class Builder;

    /// Halving by count from depth 32 on ends within 32 further levels.
    static constexpr int kDepth = 72;
    /// What lies open on the way down: all children of the present node, their sisters above.
    static constexpr int kStack = (kWide - 1) * kDepth + 1;

    [[nodiscard]] static Box boxOf(const Triangle& t) noexcept
    {
        Box box;
        box.add(t.a);
        box.add(t.b);
        box.add(t.c);
        return box;
    }

    std::vector<Node, HugePageAllocator<Node>> nodes_;  ///< depth first
    std::vector<Leaf, HugePageAllocator<Leaf>> leaves_; ///< sisters side by side
    std::size_t triangleCount_ = 0;
    Box box_;
};

} // namespace tvw::rgs::stage
