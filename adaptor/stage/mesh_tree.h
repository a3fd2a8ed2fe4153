/// A bounding volume hierarchy over the triangles of one mesh, in the mesh's own space.
///
/// Built once: moving the node that shows the mesh costs nothing. Queries allocate nothing and may
/// run on several threads. The ray test is in double precision and watertight: a ray that passes
/// through an edge or a vertex that triangles share can't slip between them.
///
/// Ray test: Woop, Benthin, Wald, "Watertight Ray/Triangle Intersection", JCGT 2(1), 2013. Build:
/// surface area heuristic over 16 bins (Wald, "On fast Construction of SAH-based Bounding Volume
/// Hierarchies", 2007).
#pragma once

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
    [[nodiscard]] bool touches(const Box& b) const noexcept
    {
        return low.x <= b.high.x && b.low.x <= high.x && low.y <= b.high.y && b.low.y <= high.y &&
               low.z <= b.high.z && b.low.z <= high.z;
    }
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

    /// Calls f(triangle) for every triangle whose own box touches `box`, in an order that hangs on
    /// the mesh alone.
    template <class F>
    void gather(const Box& box, F&& f) const
    {
        if (nodes_.empty())
            return;
        std::uint32_t stack[kDepth];
        int open = 0;
        stack[open++] = 0;
        while (open != 0) {
            const std::uint32_t index = stack[--open];
            const Node& node = nodes_[index];
            if (!node.box.touches(box))
                continue;
            if (node.count == 0) {
                stack[open++] = node.first;
                stack[open++] = index + 1;
                continue;
            }
            for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
                if (boxOf(triangles_[i]).touches(box))
                    f(triangles_[i]);
            }
        }
    }

    [[nodiscard]] const Box& box() const noexcept { return box_; }
    [[nodiscard]] std::size_t triangleCount() const noexcept { return triangles_.size(); }

private:
    friend class FanTree;

    struct Node
    {
        Box box;
        std::uint32_t
            first; ///< a leaf: of its triangles; else the right child (the left one is next)
        std::uint32_t count; ///< a leaf: its triangles; else 0
    };

    class Builder;

    /// Halving by count from depth 32 on ends within 32 further levels.
    static constexpr int kDepth = 72;

    [[nodiscard]] static Box boxOf(const Triangle& t) noexcept
    {
        Box box;
        box.add(t.a);
        box.add(t.b);
        box.add(t.c);
        return box;
    }

    std::vector<Node> nodes_; ///< depth first
    std::vector<Triangle> triangles_;
    Box box_;
};

} // namespace tvw::rgs::stage
