/// The internal caster of rays at a stored copy of the ground: an octree of triangles.
#pragma once

#include "util/mesh.h"

#include <vector>

namespace tvw::rgs {

/// In the mesh's own space. A node is split into the halves of its box along the axes that divide
/// the triangles well; a triangle goes to every child that it touches.
class CGroundTriangleTree
{
public:
    CGroundTriangleTree() = default;

    /// A triangle with a corner that the mesh does not have, or that is no number, is left out.
    explicit CGroundTriangleTree(const CMesh& mesh);

    /// The first hit in the order of the tree, which on ground without overhangs is the only one.
    /// direction: of unit length; distance along it; normal of unit length by the corners' order.
    bool castRay(const Vector3d& origin, const Vector3d& direction, double maxDistance,
                 double& distance, Vector3d& normal) const;

    [[nodiscard]] std::size_t nodeCount() const { return nodeCount(root_); }
    [[nodiscard]] std::size_t triangleCount() const { return triangleCount_; } ///< of the mesh

    struct Triangle
    {
        Vector3d a, b, c;
    };
    struct Node
    {
        Vector3d low, high;
        std::vector<Node> children;
        std::vector<Triangle> triangles; ///< none in a node with children
    };

private:
    static void split(Node& node);
    static std::size_t nodeCount(const Node& node);

    Node root_;
    std::size_t triangleCount_ = 0;
};

/// Whether any point of the triangle lies in the box, its faces included.
[[nodiscard]] bool touches(const CGroundTriangleTree::Triangle& triangle, const Vector3d& low,
                           const Vector3d& high);

} // namespace tvw::rgs
