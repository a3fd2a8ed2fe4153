#include "plugins/common/helper_meshes.h"

#include <array>
#include <span>

namespace tvw::rgs::shape {

namespace {

/// Adds a mesh, moved by an offset.
void append(CMesh& mesh, const CMesh& part, const Vector3d& offset)
{
    const auto base = static_cast<std::int32_t>(mesh.vertex.size());
    for (const Vector3d& point : part.vertex)
        mesh.vertex.push_back(point + offset);
    for (const std::int32_t index : part.face)
        mesh.face.push_back(base + index);
}

/// A pyramid without a base, from four corners of a square of side `width` at z = from to a square of
/// side `end` at z = to.
CMesh hood(double width, double end, double from, double to)
{
    CMesh mesh;
    const std::array<Vector3d, 4> corners{{{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}}};
    for (const Vector3d& c : corners)
        mesh.vertex.push_back({c.x * width / 2, c.y * width / 2, from});
    for (const Vector3d& c : corners)
        mesh.vertex.push_back({c.x * end / 2, c.y * end / 2, to});
    for (std::int32_t i = 0; i < 4; ++i) {
        const std::int32_t j = (i + 1) % 4;
        const std::array<std::int32_t, 6> quad{i, 4 + i, 4 + j, 4 + j, j, i};
        mesh.face.insert(mesh.face.end(), quad.begin(), quad.end());
    }
    return mesh;
}

} // namespace

CMesh relativeCage()
{
    constexpr double kSide = 2.0;
    constexpr double kBar = 0.04;
    constexpr double kHalf = kSide / 2;
    CMesh cage;
    for (const double a : {-kHalf, kHalf}) {
        for (const double b : {-kHalf, kHalf}) {
            append(cage, CMesh_Box(kSide + kBar, kBar, kBar), {0, a, b});
            append(cage, CMesh_Box(kBar, kSide + kBar, kBar), {a, 0, b});
            append(cage, CMesh_Box(kBar, kBar, kSide + kBar), {a, b, 0});
        }
    }
    return cage;
}

CMesh target()
{
    constexpr double kRadius = 0.3;
    CMesh mesh;
    mesh.vertex = {{kRadius, 0, 0}, {-kRadius, 0, 0}, {0, kRadius, 0},
                   {0, -kRadius, 0}, {0, 0, kRadius}, {0, 0, -kRadius}};
    mesh.face = {0, 2, 4, 2, 1, 4, 1, 3, 4, 3, 0, 4, 2, 0, 5, 1, 2, 5, 3, 1, 5, 0, 3, 5};
    return mesh;
}

CMesh actuator()
{
    CMesh mesh;
    append(mesh, CMesh_Box(0.4, 0.4, 0.4), {});
    append(mesh, CMesh_Box(0.12, 0.12, 0.4), {0, 0, -0.4});
    append(mesh, hood(0.36, 0.0, -0.6, -0.95), {});
    return mesh;
}

CMesh camera()
{
    CMesh mesh;
    append(mesh, CMesh_Box(0.3, 0.36, 0.6), {0, 0, 0.3});
    append(mesh, CMesh_Box(0.1, 0.26, 0.26), {0, 0.3, 0.15});
    append(mesh, CMesh_Box(0.1, 0.26, 0.26), {0, 0.3, 0.45});
    append(mesh, hood(0.16, 0.36, 0.0, -0.3), {});
    return mesh;
}

CMesh humanoid()
{
    CMesh mesh;
    for (const double side : {-1.0, 1.0}) {
        append(mesh, CMesh_Box(0.14, 0.82, 0.16), {side * 0.1, 0.41, 0});
        append(mesh, CMesh_Box(0.1, 0.06, 0.26), {side * 0.1, 0.03, -0.06}); // toes: where it faces
        append(mesh, CMesh_Box(0.09, 0.62, 0.11), {side * 0.26, 1.1, 0});
    }
    append(mesh, CMesh_Box(0.42, 0.6, 0.22), {0, 1.12, 0});
    append(mesh, CMesh_Box(0.1, 0.08, 0.1), {0, 1.46, 0});
    append(mesh, CMesh_Box(0.18, 0.25, 0.2), {0, 1.625, 0});
    return mesh;
}

} // namespace tvw::rgs::shape
