#include "plugins/common/ground_triangle_tree.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tvw::rgs {

namespace {

using Triangle = CGroundTriangleTree::Triangle;
using Node = CGroundTriangleTree::Node;

constexpr std::size_t kSplitFrom = 30; ///< triangles in a node that is split
constexpr std::size_t kLeastHalf = 3;  ///< triangles in each half
constexpr double kMostShared = 1.1;    ///< triangles in both halves for each of the node's

struct Bounds
{
    Vector3d low, high;
};

/// Half 0 or 1 of the box along an axis.
Bounds halfOf(const Bounds& box, int axis, int half)
{
    const double middle = 0.5 * box.low[axis] + 0.5 * box.high[axis];
    Bounds out = box;
    (half == 0 ? out.high : out.low)[axis] = middle;
    return out;
}

bool isFinite(const Vector3d& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// Whether the triangle and the box lie apart along a direction. All from the box's centre.
bool areApart(const Vector3d& along, const Vector3d& a, const Vector3d& b, const Vector3d& c,
              const Vector3d& half)
{
    const double pa = dot(along, a);
    const double pb = dot(along, b);
    const double pc = dot(along, c);
    const double reach =
        half.x * std::abs(along.x) + half.y * std::abs(along.y) + half.z * std::abs(along.z);
    // What just touches belongs to both sides: a margin for the roundings of the products.
    const double margin = 1e-13 * (reach + std::abs(pa) + std::abs(pb) + std::abs(pc));
    return std::min({pa, pb, pc}) > reach + margin || std::max({pa, pb, pc}) < -reach - margin;
}

std::size_t countTouching(const std::vector<Triangle>& triangles, const Bounds& box)
{
    return static_cast<std::size_t>(
        std::count_if(triangles.begin(), triangles.end(),
                      [&](const Triangle& t) { return touches(t, box.low, box.high); }));
}

/// Whether halving along the axis keeps the halves apart well enough.
bool dividesWell(const Node& node, int axis)
{
    const Bounds box{node.low, node.high};
    const std::size_t first = countTouching(node.triangles, halfOf(box, axis, 0));
    const std::size_t second = countTouching(node.triangles, halfOf(box, axis, 1));
    return first >= kLeastHalf && second >= kLeastHalf &&
           static_cast<double>(first + second) <=
               kMostShared * static_cast<double>(node.triangles.size());
}

/// Whether and where the ray passes the box; from its faces or from inside.
bool passes(const Node& node, const Vector3d& origin, const Vector3d& direction, double maxDistance)
{
    double in = 0.0;
    double out = maxDistance;
    for (int i = 0; i < 3; ++i) {
        if (direction[i] == 0.0) {
            if (origin[i] < node.low[i] || origin[i] > node.high[i])
                return false;
            continue;
        }
        const double a = (node.low[i] - origin[i]) / direction[i];
        const double b = (node.high[i] - origin[i]) / direction[i];
        in = std::max(in, std::min(a, b));
        out = std::min(out, std::max(a, b));
    }
    return in <= out * (1.0 + 1e-14) + 1e-300;
}

/// The plane's (u, v, t) by Cramer's rule on (edge 1, edge 2, -direction).
bool meets(const Triangle& triangle, const Vector3d& origin, const Vector3d& direction,
           double maxDistance, double& distance, Vector3d& normal)
{
    const Vector3d e1 = triangle.b - triangle.a;
    const Vector3d e2 = triangle.c - triangle.a;
    const Vector3d across = cross(direction, e2);
    const double det = dot(e1, across);
    if (det == 0.0)
        return false;
    const Vector3d s = origin - triangle.a;
    const double u = dot(s, across) / det;
    const Vector3d q = cross(s, e1);
    const double v = dot(direction, q) / det;
    if (!(u >= 0.0 && v >= 0.0 && u + v < 1.0))
        return false;
    const double t = dot(e2, q) / det;
    if (!(t >= 0.0 && t <= maxDistance))
        return false;
    distance = t;
    normal = normalise(cross(e1, e2));
    return true;
}

bool castAt(const Node& node, const Vector3d& origin, const Vector3d& direction, double maxDistance,
            double& distance, Vector3d& normal)
{
    if (!passes(node, origin, direction, maxDistance))
        return false;
    const auto hitsChild = [&](const Node& child) {
        return castAt(child, origin, direction, maxDistance, distance, normal);
    };
    const auto hitsTriangle = [&](const Triangle& triangle) {
        return meets(triangle, origin, direction, maxDistance, distance, normal);
    };
    return std::any_of(node.children.begin(), node.children.end(), hitsChild) ||
           std::any_of(node.triangles.begin(), node.triangles.end(), hitsTriangle);
}

} // namespace

bool touches(const Triangle& t, const Vector3d& low, const Vector3d& high)
{
    for (int i = 0; i < 3; ++i) {
        if (std::max({t.a[i], t.b[i], t.c[i]}) < low[i] ||
            std::min({t.a[i], t.b[i], t.c[i]}) > high[i])
            return false;
    }
    // The other axes that can part a triangle and a box: its normal, and its edges across the
    // box's.
    const Vector3d centre = low * 0.5 + high * 0.5;
    const Vector3d half = (high - low) * 0.5;
    const Vector3d a = t.a - centre;
    const Vector3d b = t.b - centre;
    const Vector3d c = t.c - centre;
    if (areApart(cross(b - a, c - a), a, b, c, half))
        return false;
    for (const Vector3d& e : {b - a, c - b, a - c}) {
        for (const Vector3d& axis :
             {Vector3d{0, -e.z, e.y}, Vector3d{e.z, 0, -e.x}, Vector3d{-e.y, e.x, 0}}) {
            if (areApart(axis, a, b, c, half))
                return false;
        }
    }
    return true;
}

CGroundTriangleTree::CGroundTriangleTree(const CMesh& mesh)
{
    const auto isKnown = [&](std::int32_t i) {
        return i >= 0 && static_cast<std::size_t>(i) < mesh.vertex.size() &&
               isFinite(mesh.vertex[i]);
    };
    for (std::size_t i = 0; i + 2 < mesh.face.size(); i += 3) {
        const std::int32_t* const corner = &mesh.face[i];
        if (isKnown(corner[0]) && isKnown(corner[1]) && isKnown(corner[2])) {
            root_.triangles.push_back(
                {mesh.vertex[corner[0]], mesh.vertex[corner[1]], mesh.vertex[corner[2]]});
        }
    }
    triangleCount_ = root_.triangles.size();
    if (triangleCount_ == 0)
        return;
    root_.low = root_.high = root_.triangles[0].a;
    for (const Triangle& t : root_.triangles) {
        for (int i = 0; i < 3; ++i) {
            root_.low[i] = std::min({root_.low[i], t.a[i], t.b[i], t.c[i]});
            root_.high[i] = std::max({root_.high[i], t.a[i], t.b[i], t.c[i]});
        }
    }
    split(root_);
}

void CGroundTriangleTree::split(Node& node)
{
    if (node.triangles.size() < kSplitFrom)
        return;
    std::vector<Bounds> boxes{{node.low, node.high}};
    for (int axis = 0; axis < 3; ++axis) {
        if (!dividesWell(node, axis))
            continue;
        std::vector<Bounds> halves;
        for (const Bounds& box : boxes) {
            halves.push_back(halfOf(box, axis, 0));
            halves.push_back(halfOf(box, axis, 1));
        }
        boxes = std::move(halves);
    }
    std::vector<Node> children;
    for (const Bounds& box : boxes) {
        Node child{box.low, box.high, {}, {}};
        std::copy_if(node.triangles.begin(), node.triangles.end(),
                     std::back_inserter(child.triangles),
                     [&](const Triangle& t) { return touches(t, box.low, box.high); });
        if (child.triangles.size() >= node.triangles.size())
            return;
        if (!child.triangles.empty())
            children.push_back(std::move(child));
    }
    node.triangles = {};
    node.children = std::move(children);
    for (Node& child : node.children) {
        child.triangles.shrink_to_fit();
        split(child);
    }
}

bool CGroundTriangleTree::castRay(const Vector3d& origin, const Vector3d& direction,
                                  double maxDistance, double& distance, Vector3d& normal) const
{
    return triangleCount_ != 0 && castAt(root_, origin, direction, maxDistance, distance, normal);
}

std::size_t CGroundTriangleTree::nodeCount(const Node& node)
{
    std::size_t count = 1;
    for (const Node& child : node.children)
        count += nodeCount(child);
    return count;
}

} // namespace tvw::rgs
