#include "adaptor/stage/mesh_tree.h"

#include <array>
#include <cmath>
#include <limits>
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

/// The nearest float that is less: no ray lies in the plane of a box's face by chance.
float floatBelow(double value)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kLargest = std::numeric_limits<float>::max();
    if (std::abs(value) > static_cast<double>(kLargest))
        return value > 0.0 ? kLargest : -kInfinity;
    const float rounded = static_cast<float>(value);
    return static_cast<double>(rounded) < value ? rounded : std::nextafter(rounded, -kInfinity);
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

    /// Where the ray enters a box; negative when it misses it or enters behind `limit`.
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
    Builder(MeshTree& tree, std::vector<Triangle> source) : tree_(tree), source_(std::move(source))
    {
        items_.reserve(source_.size());
        for (std::uint32_t i = 0; i < source_.size(); ++i) {
            const Box box = boxOf(source_[i]);
            items_.push_back({box, (box.low + box.high) * 0.5, i});
        }
        if (items_.empty())
            return;
        tree_.nodes_.reserve(source_.size() / 6 + 1);
        leaves_.reserve(source_.size() / 2 + 1);
        split(bounded(0, static_cast<std::uint32_t>(items_.size()), 0));
        tree_.nodes_.shrink_to_fit();
        tree_.leaves_.reserve(leaves_.size());
        for (const auto& [first, end] : leaves_)
            addLeaf(first, end);
    }

private:
    static constexpr int kBins = 16;
    static constexpr int kHalvingDepth = 32;

    struct Item
    {
        Box box;
        Vector3d centre;
        std::uint32_t triangle;
    };

    /// Items that go into one child.
    struct Part
    {
        std::uint32_t first, end;
        int depth;
        Box box;
        Box centres;

        [[nodiscard]] bool isLeaf() const { return end - first <= kWide; }
    };

    struct Cut
    {
        double cost = 1e300;
        int axis = -1;
        int bin = 0; ///< the last one on the left
    };

    Part bounded(std::uint32_t first, std::uint32_t end, int depth) const
    {
        Part part{first, end, depth, {}, {}};
        for (std::uint32_t i = first; i < end; ++i) {
            part.box.add(items_[i].box);
            part.centres.add(items_[i].centre);
        }
        return part;
    }

    /// Makes the node of a part and all below it; answers which it is.
    std::uint32_t split(const Part& whole)
    {
        std::array<Part, kWide> parts{whole};
        const int count = divideInto(parts);
        const auto node = static_cast<std::uint32_t>(tree_.nodes_.size());
        tree_.nodes_.push_back(nodeOver({parts.data(), static_cast<std::size_t>(count)}));
        for (int i = 0; i < count; ++i) {
            if (parts[i].isLeaf()) {
                tree_.nodes_[node].child[i] =
                    kLeafMark | static_cast<std::uint32_t>(leaves_.size());
                leaves_.emplace_back(parts[i].first, parts[i].end);
            }
        }
        for (int i = 0; i < count; ++i) {
            if (!parts[i].isLeaf()) {
                const std::uint32_t child = split(parts[i]);
                tree_.nodes_[node].child[i] = child;
            }
        }
        return node;
    }

    /// Halves the first part, then the larger ones of its halves. Answers how many there are.
    int divideInto(std::array<Part, kWide>& parts)
    {
        int count = 1;
        while (count < kWide) {
            int largest = -1;
            for (int i = 0; i < count; ++i) {
                if (!parts[i].isLeaf() &&
                    (largest < 0 || halfArea(parts[i].box) > halfArea(parts[largest].box)))
                    largest = i;
            }
            if (largest < 0)
                break;
            const Part part = parts[largest];
            const std::uint32_t middle = divide(part.first, part.end, part.centres, part.depth);
            parts[largest] = bounded(part.first, middle, part.depth + 1);
            parts[count++] = bounded(middle, part.end, part.depth + 1);
        }
        return count;
    }

    static Node nodeOver(std::span<const Part> parts)
    {
        Node node{};
        for (std::size_t i = 0; i < kWide; ++i) {
            for (int axis = 0; axis < 3; ++axis) {
                constexpr float kNone = std::numeric_limits<float>::infinity();
                node.low[axis][i] = i < parts.size() ? floatBelow(parts[i].box.low[axis]) : kNone;
                node.high[axis][i] =
                    i < parts.size() ? -floatBelow(-parts[i].box.high[axis]) : kNone;
            }
        }
        return node;
    }

    void addLeaf(std::uint32_t first, std::uint32_t end)
    {
        // Beyond all that a mesh holds: a point, which nothing hits.
        constexpr double kOutside = 1e120;
        constexpr Vector3d kCorner{kOutside, kOutside, kOutside};
        Leaf leaf{};
        for (std::uint32_t i = 0; i < kWide; ++i) {
            const Triangle t = first + i < end ? source_[items_[first + i].triangle]
                                               : Triangle{kCorner, kCorner, kCorner, kNoTriangle};
            for (int axis = 0; axis < 3; ++axis) {
                leaf.corner[0][axis][i] = t.a[axis];
                leaf.corner[1][axis][i] = t.b[axis];
                leaf.corner[2][axis][i] = t.c[axis];
            }
            leaf.index[i] = t.index;
        }
        tree_.leaves_.push_back(leaf);
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
    std::vector<std::pair<std::uint32_t, std::uint32_t>> leaves_; ///< the items of each
};

MeshTree::MeshTree(std::span<const Vector3d> vertices, std::span<const std::int32_t> indices)
{
    const auto known = [&](std::int32_t i) {
        return i >= 0 && static_cast<std::size_t>(i) < vertices.size() && isUsable(vertices[i]);
    };
    std::vector<Triangle> triangles;
    triangles.reserve(indices.size() / 3);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        if (!known(indices[i]) || !known(indices[i + 1]) || !known(indices[i + 2]))
            continue;
        triangles.push_back({vertices[indices[i]], vertices[indices[i + 1]],
                             vertices[indices[i + 2]], static_cast<std::uint32_t>(i / 3)});
        box_.add(boxOf(triangles.back()));
    }
    triangleCount_ = triangles.size();
    Builder build(*this, std::move(triangles));
}

std::optional<RayHit> MeshTree::rayCast(const Vector3d& origin,
                                        const Vector3d& direction) const noexcept
{
    const Vector3d unit = unitDirection(direction);
    if (nodes_.empty() || unit == Vector3d{} || !isUsable(origin))
        return std::nullopt;
    const Ray ray(origin, unit);
    std::uint32_t hit = kNoTriangle;
    Vector3d normal;
    double nearest = 1e300;
    const auto meetLeaf = [&](const Leaf& leaf) {
        for (int i = 0; i < kWide; ++i) {
            const Triangle triangle = leaf.triangle(i);
            const double t = ray.meets(triangle);
            if (t >= 0.0 && (t < nearest || (t == nearest && triangle.index < hit))) {
                nearest = t;
                hit = triangle.index;
                normal = cross(triangle.b - triangle.a, triangle.c - triangle.a);
            }
        }
    };
    struct Open
    {
        std::uint32_t child;
        double enters;
    };
    Open stack[kStack];
    int open = 0;
    stack[open++] = {0, 0.0};
    while (open != 0) {
        const Open next = stack[--open];
        if (next.enters > nearest * (1.0 + 1e-15))
            continue;
        if ((next.child & kLeafMark) != 0) {
            meetLeaf(leaves_[next.child & ~kLeafMark]);
            continue;
        }
        const Node& node = nodes_[next.child];
        const int base = open;
        for (int i = 0; i < kWide; ++i) {
            const double enters = ray.enters(node.box(i), nearest);
            if (enters < 0.0)
                continue;
            // The nearest child is opened first, so that it can rule out the farther ones.
            int place = open++;
            for (; place > base && stack[place - 1].enters < enters; --place)
                stack[place] = stack[place - 1];
            stack[place] = {node.child[i], enters};
        }
    }
    if (hit == kNoTriangle)
        return std::nullopt;
    return RayHit{nearest, normalise(normal), hit};
}

} // namespace tvw::rgs::stage
