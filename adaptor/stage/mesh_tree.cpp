#include "adaptor/stage/mesh_tree.h"

#include <array>
#include <cmath>
#include <utility>

namespace tvw::rgs::stage {

namespace {

/// A number, and small enough that areas and centres of boxes stay finite.
bool isUsable(const Vector3d& v)
{
    constexpr double kFarthest = 1e100;
    return std::abs(v.x) <= kFarthest && std::abs(v.y) <= kFarthest && std::abs(v.z) <= kFarthest;
}

double halfArea(const Box& box)
{
    if (box.isEmpty())
        return 0.0;
    const Vector3d d = box.high - box.low;
    return d.x * d.y + d.y * d.z + d.z * d.x;
}

/// A ray prepared for many tests. kz is the axis along which the direction is longest, the others
/// follow so that the shear keeps the handedness.
struct Ray
{
    Ray(const Vector3d& o, const Vector3d& d) : origin(o)
    {
        const Vector3d size{std::abs(d.x), std::abs(d.y), std::abs(d.z)};
        const int kz = size.x > size.y ? (size.x > size.z ? 0 : 2) : (size.y > size.z ? 1 : 2);
        int kx = (kz + 1) % 3;
        int ky = (kx + 1) % 3;
        if (d[kz] < 0.0)
            std::swap(kx, ky);
        across[kx] = 1.0;
        across[kz] = -d[kx] / d[kz];
        up[ky] = 1.0;
        up[kz] = -d[ky] / d[kz];
        along[kz] = 1.0 / d[kz];
        // A component of 0 must not give 0 * infinity at a box that begins in the ray's plane.
        constexpr double kSteepest = 1e300;
        for (int i = 0; i < 3; ++i)
            inverse[i] = std::clamp(1.0 / d[i], -kSteepest, kSteepest);
    }

    /// Where the ray enters the box; negative when it misses it or enters behind `limit`.
    [[nodiscard]] double enters(const Box& box, double limit) const noexcept
    {
        double in = 0.0;
        double out = limit;
        for (int i = 0; i < 3; ++i) {
            const double a = (box.low[i] - origin[i]) * inverse[i];
            const double b = (box.high[i] - origin[i]) * inverse[i];
            in = std::max(in, std::min(a, b));
            out = std::min(out, std::max(a, b));
        }
        // The three roundings on the way to either bound are 1.1e-16 of it each.
        return in <= out * (1.0 + 1e-15) ? in : -1.0;
    }

    /// The ray's parameter at the triangle; negative when it misses.
    [[nodiscard]] double meets(const MeshTree::Triangle& t) const noexcept
    {
        const Vector3d a = t.a - origin;
        const Vector3d b = t.b - origin;
        const Vector3d c = t.c - origin;
        const double ax = dot(across, a);
        const double ay = dot(up, a);
        const double bx = dot(across, b);
        const double by = dot(up, b);
        const double cx = dot(across, c);
        const double cy = dot(up, c);
        const double u = cx * by - cy * bx;
        const double v = ax * cy - ay * cx;
        const double w = bx * ay - by * ax;
        if ((u < 0.0 || v < 0.0 || w < 0.0) && (u > 0.0 || v > 0.0 || w > 0.0))
            return -1.0;
        const double det = u + v + w;
        if (det == 0.0)
            return -1.0;
        return (u * dot(along, a) + v * dot(along, b) + w * dot(along, c)) / det;
    }

    Vector3d origin;
    Vector3d inverse;
    // The shear that lays the ray along an axis, as rows: two across it and one along it. A vertex
    // goes through the same arithmetic in each of its triangles, so that their edges meet exactly.
    Vector3d across, up, along;
};

} // namespace

class MeshTree::Builder
{
public:
    explicit Builder(MeshTree& tree) : tree_(tree), source_(std::move(tree.triangles_))
    {
        items_.reserve(source_.size());
        for (std::uint32_t i = 0; i < source_.size(); ++i) {
            const Box box = boxOf(source_[i]);
            items_.push_back({box, (box.low + box.high) * 0.5, i});
        }
        tree_.triangles_.clear();
        tree_.triangles_.reserve(source_.size());
        tree_.nodes_.reserve(source_.size());
        if (!items_.empty())
            split(0, static_cast<std::uint32_t>(items_.size()), 0);
        tree_.nodes_.shrink_to_fit();
    }

private:
    static constexpr std::uint32_t kLeaf = 4;
    static constexpr int kBins = 16;
    static constexpr int kHalvingDepth = 32;

    struct Item
    {
        Box box;
        Vector3d centre;
        std::uint32_t triangle;
    };

    struct Cut
    {
        double cost = 1e300;
        int axis = -1;
        int bin = 0; ///< the last one on the left
    };

    void split(std::uint32_t first, std::uint32_t end, int depth)
    {
        const auto node = static_cast<std::uint32_t>(tree_.nodes_.size());
        Box box;
        Box centres;
        for (std::uint32_t i = first; i < end; ++i) {
            box.add(items_[i].box);
            centres.add(items_[i].centre);
        }
        tree_.nodes_.push_back({box, 0, 0});
        if (end - first <= kLeaf) {
            makeLeaf(node, first, end);
            return;
        }
        const std::uint32_t middle = divide(first, end, centres, depth);
        split(first, middle, depth + 1);
        tree_.nodes_[node].first = static_cast<std::uint32_t>(tree_.nodes_.size());
        split(middle, end, depth + 1);
    }

    void makeLeaf(std::uint32_t node, std::uint32_t first, std::uint32_t end)
    {
        tree_.nodes_[node].first = static_cast<std::uint32_t>(tree_.triangles_.size());
        tree_.nodes_[node].count = end - first;
        for (std::uint32_t i = first; i < end; ++i)
            tree_.triangles_.push_back(source_[items_[i].triangle]);
    }

    /// Puts the items of the left child first and answers where the right one begins.
    std::uint32_t divide(std::uint32_t first, std::uint32_t end, const Box& centres, int depth)
    {
        const Cut cut = depth < kHalvingDepth ? bestCut(first, end, centres) : Cut{};
        if (cut.axis >= 0) {
            const auto middle =
                std::partition(items_.begin() + first, items_.begin() + end, [&](const Item& item) {
                    return binOf(item, centres, cut.axis) <= cut.bin;
                });
            return static_cast<std::uint32_t>(middle - items_.begin());
        }
        const Vector3d size = centres.high - centres.low;
        const int axis = size.x > size.y ? (size.x > size.z ? 0 : 2) : (size.y > size.z ? 1 : 2);
        const std::uint32_t middle = first + (end - first) / 2;
        std::nth_element(items_.begin() + first, items_.begin() + middle, items_.begin() + end,
                         [axis](const Item& a, const Item& b) {
                             return std::pair(a.centre[axis], a.triangle) <
                                    std::pair(b.centre[axis], b.triangle);
                         });
        return middle;
    }

    static int binOf(const Item& item, const Box& centres, int axis)
    {
        const double size = centres.high[axis] - centres.low[axis];
        const double f = (item.centre[axis] - centres.low[axis]) / size;
        return std::clamp(static_cast<int>(f * kBins), 0, kBins - 1);
    }

    /// The cut with the least expected cost; none when the centres coincide.
    Cut bestCut(std::uint32_t first, std::uint32_t end, const Box& centres) const
    {
        Cut best;
        for (int axis = 0; axis < 3; ++axis) {
            if (centres.high[axis] - centres.low[axis] > 0.0)
                cutAlong(axis, first, end, centres, best);
        }
        return best;
    }

    void cutAlong(int axis, std::uint32_t first, std::uint32_t end, const Box& centres,
                  Cut& best) const
    {
        std::array<Box, kBins> boxes;
        std::array<std::uint32_t, kBins> counts{};
        for (std::uint32_t i = first; i < end; ++i) {
            const int bin = binOf(items_[i], centres, axis);
            boxes[bin].add(items_[i].box);
            ++counts[bin];
        }
        std::array<double, kBins> rightCost{};
        Box right;
        std::uint32_t rightCount = 0;
        for (int bin = kBins - 1; bin > 0; --bin) {
            right.add(boxes[bin]);
            rightCount += counts[bin];
            rightCost[bin] = halfArea(right) * rightCount;
        }
        Box left;
        std::uint32_t leftCount = 0;
        for (int bin = 0; bin + 1 < kBins; ++bin) {
            left.add(boxes[bin]);
            leftCount += counts[bin];
            const double cost = halfArea(left) * leftCount + rightCost[bin + 1];
            if (leftCount != 0 && leftCount != end - first && cost < best.cost)
                best = {cost, axis, bin};
        }
    }

    MeshTree& tree_;
    std::vector<Triangle> source_;
    std::vector<Item> items_;
};

MeshTree::MeshTree(std::span<const Vector3d> vertices, std::span<const std::int32_t> indices)
{
    const auto known = [&](std::int32_t i) {
        return i >= 0 && static_cast<std::size_t>(i) < vertices.size() && isUsable(vertices[i]);
    };
    triangles_.reserve(indices.size() / 3);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        if (!known(indices[i]) || !known(indices[i + 1]) || !known(indices[i + 2]))
            continue;
        triangles_.push_back({vertices[indices[i]], vertices[indices[i + 1]],
                              vertices[indices[i + 2]], static_cast<std::uint32_t>(i / 3)});
        box_.add(boxOf(triangles_.back()));
    }
    Builder build(*this);
}

std::optional<RayHit> MeshTree::rayCast(const Vector3d& origin,
                                        const Vector3d& direction) const noexcept
{
    const Vector3d unit = unitDirection(direction);
    if (nodes_.empty() || unit == Vector3d{} || !isUsable(origin))
        return std::nullopt;
    const Ray ray(origin, unit);
    const Triangle* hit = nullptr;
    double nearest = 1e300;
    std::uint32_t stack[kDepth];
    int open = 0;
    if (ray.enters(nodes_[0].box, nearest) >= 0.0)
        stack[open++] = 0;
    while (open != 0) {
        const std::uint32_t index = stack[--open];
        const Node& node = nodes_[index];
        if (node.count != 0) {
            for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
                const double t = ray.meets(triangles_[i]);
                if (t >= 0.0 &&
                    (t < nearest || (t == nearest && hit && triangles_[i].index < hit->index))) {
                    nearest = t;
                    hit = &triangles_[i];
                }
            }
            continue;
        }
        const double left = ray.enters(nodes_[index + 1].box, nearest);
        const double right = ray.enters(nodes_[node.first].box, nearest);
        // The nearer child is opened first, so that it can rule out the farther one.
        const bool leftFirst = left >= 0.0 && (right < 0.0 || left <= right);
        if (left >= 0.0 && !leftFirst)
            stack[open++] = index + 1;
        if (right >= 0.0)
            stack[open++] = node.first;
        if (leftFirst)
            stack[open++] = index + 1;
    }
    if (!hit)
        return std::nullopt;
    return RayHit{nearest, normalise(cross(hit->b - hit->a, hit->c - hit->a)), hit->index};
}

} // namespace tvw::rgs::stage
