#include "util/mesh.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tvw {

bool CMesh::isSound() const noexcept
{
    return face.size() % 3 == 0 && std::all_of(face.begin(), face.end(), [this](std::int32_t i) {
               return i >= 0 && static_cast<std::size_t>(i) < vertex.size();
           });
}

bool operator==(const CMesh& a, const CMesh& b) noexcept
{
    return a.vertex == b.vertex && a.texcoord == b.texcoord && a.face == b.face &&
           a.tface == b.tface;
}

CMesh transformed(const CMesh& mesh, const Matrix4& M)
{
    CMesh out = mesh;
    for (Vector3d& v : out.vertex) {
        v = transformPoint(M, v);
    }
    return out;
}

CMesh_Box::CMesh_Box(double x, double y, double z)
{
    for (const double dz : {-0.5, 0.5}) {
        for (const double dy : {-0.5, 0.5}) {
            for (const double dx : {-0.5, 0.5}) {
                vertex.push_back({dx * x, dy * y, dz * z});
            }
        }
    }
    face = {0, 2, 3, 3, 1, 0, 4, 5, 7, 7, 6, 4, 0, 1, 5, 5, 4, 0,
            1, 3, 7, 7, 5, 1, 3, 2, 6, 6, 7, 3, 2, 0, 4, 4, 6, 2};
    tface.assign(face.size(), 0);
}

CMesh_Cylinder::CMesh_Cylinder(int segments, double radius, double height)
{
    if (segments < 1) {
        return;
    }
    constexpr double kTurn = 6.28318; // six digits, not 2 pi: files hold meshes made with it
    const double step = kTurn / segments;
    for (const double z : {height / 2, -height / 2}) {
        for (int i = 0; i < segments; ++i) {
            vertex.push_back({radius * std::cos(i * step), radius * std::sin(i * step), z});
        }
        vertex.push_back({0, 0, z});
    }
    for (const Vector3d& v : vertex) {
        texcoord.push_back({std::cos(0.1 * v.z) + v.x, std::sin(0.1 * v.z) + v.y, v.z});
    }
    // Top i and its centre, bottom i and its centre, and the two halves of each side.
    const std::int32_t n = segments;
    const auto eachSide = [this, n](auto triangle) {
        for (std::int32_t i = 0; i < n; ++i) {
            const std::array<std::int32_t, 3> indices = triangle(i, (i + 1) % n);
            face.insert(face.end(), indices.begin(), indices.end());
        }
    };
    using Triangle = std::array<std::int32_t, 3>;
    eachSide([n](std::int32_t i, std::int32_t j) { return Triangle{i, j, n}; });
    eachSide([n](std::int32_t i, std::int32_t j) {
        return Triangle{n + 1 + i, 2 * n + 1, n + 1 + j};
    });
    eachSide([n](std::int32_t i, std::int32_t j) { return Triangle{i, n + 1 + i, n + 1 + j}; });
    eachSide([n](std::int32_t i, std::int32_t j) { return Triangle{i, n + 1 + j, j}; });
    tface = face;
}

} // namespace tvw
