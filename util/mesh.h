/// Plain triangle meshes: helper shapes, stored ground surfaces, what a snapshot hands out.
///
/// A mesh does not check itself: indices may point outside of its points until `isSound` says that
/// they do not. Whoever draws a mesh or casts rays at it asks first when it comes from outside.
#pragma once

#include "util/matrix4.h"
#include "util/vector3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tvw {

namespace util::xml {
class Element;
}

class CMesh
{
public:
    CMesh() = default;
    CMesh(const CMesh&) = default;
    CMesh(CMesh&&) noexcept = default;
    /// The four arrays become equal to the source's. What tools compiled elsewhere call: the order
    /// of the virtual functions is frozen, this one first.
    virtual CMesh& operator=(const CMesh& other);
    CMesh& operator=(CMesh&&) noexcept = default;
    virtual ~CMesh() = default;

    std::vector<Vector3d> vertex;    ///< points, in the mesh's own space [scene units]
    std::vector<Vector3d> texcoord;  ///< texture coordinates
    std::vector<std::int32_t> face;  ///< three indices into `vertex` for each triangle
    std::vector<std::int32_t> tface; ///< three indices into `texcoord` for each triangle

    [[nodiscard]] std::size_t numVertexes() const noexcept { return vertex.size(); }
    [[nodiscard]] std::size_t numTexCoords() const noexcept { return texcoord.size(); }
    [[nodiscard]] std::size_t numFaces() const noexcept { return face.size() / 3; }   ///< triangles
    [[nodiscard]] std::size_t numTFaces() const noexcept { return tface.size() / 3; } ///< triangles

    void resizeVertexes(std::size_t points) { vertex.resize(points); }
    void resizeTexCoords(std::size_t points) { texcoord.resize(points); }
    void resizeFaces(std::size_t triangles) { face.resize(3 * triangles); }
    void resizeTFaces(std::size_t triangles) { tface.resize(3 * triangles); }

    /// True if `face` holds whole triangles and each of its indices is one of `vertex`.
    [[nodiscard]] bool isSound() const noexcept;

    /// Makes the element a "CMesh" with nothing else in it but, as one Base64 text, a DataChunk,
    /// or, `asElements`, a child for each point and triangle, for files that people edit. Both
    /// forms keep every bit.
    void write(util::xml::Element& element, bool asElements) const;
    /// Reads either form. An element not named "CMesh" changes nothing; of any other the arrays
    /// become what it says, and empty where it says nothing. Counts that the bytes do not hold are
    /// cut to what they hold.
    void read(const util::xml::Element& element);
};

// Inline, so that a tool file needs nothing of ours to hold a mesh.
inline CMesh& CMesh::operator=(const CMesh& other)
{
    if (this != &other) {
        vertex = other.vertex;
        texcoord = other.texcoord;
        face = other.face;
        tface = other.tface;
    }
    return *this;
}

[[nodiscard]] bool operator==(const CMesh& a, const CMesh& b) noexcept;

/// The mesh with M applied to each vertex (transformPoint); all else is equal.
[[nodiscard]] CMesh transformed(const CMesh& mesh, const Matrix4& M);

/// A box round the origin with edges of the given lengths along the axes; no texture coordinates.
class CMesh_Box : public CMesh
{
public:
    CMesh_Box(double x, double y, double z);
    using CMesh::operator=; // else the class's own hides the virtual one
};

/// A closed cylinder round the z axis, from z = -height / 2 to height / 2, of `segments` sides
/// (below 1: an empty mesh).
class CMesh_Cylinder : public CMesh
{
public:
    CMesh_Cylinder(int segments, double radius, double height);
    using CMesh::operator=;
};

} // namespace tvw
