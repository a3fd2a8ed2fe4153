/// Meshes to cast rays at, and what every triangle in turn answers.
#pragma once

#include "util/matrix4.h"
#include "util/mesh.h"

#include <cmath>
#include <optional>
#include <random>

namespace tvw::rgs::tests {

class Random
{
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double number(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    Vector3d point(double size)
    {
        return {number(-size, size), number(-size, size), number(-size, size)};
    }

private:
    std::mt19937 engine_;
};

inline Matrix4 at(double x, double y, double z)
{
    Matrix4 out;
    setTranslation(out, {x, y, z});
    return out;
}

/// A square of two triangles in the plane y = 0 that face up, from -edge to edge.
inline CMesh square(double edge = 5.0)
{
    CMesh mesh;
    mesh.vertex = {{-edge, 0, -edge}, {edge, 0, -edge}, {edge, 0, edge}, {-edge, 0, edge}};
    mesh.face = {0, 2, 1, 0, 3, 2};
    return mesh;
}

/// Quads of `cell` round the origin that face up.
inline CMesh hills(int cells, double cell)
{
    CMesh mesh;
    for (int z = 0; z <= cells; ++z) {
        for (int x = 0; x <= cells; ++x) {
            const double px = (x - cells / 2) * cell;
            const double pz = (z - cells / 2) * cell;
            mesh.vertex.push_back({px, std::sin(0.5 * px) * std::cos(0.4 * pz), pz});
            if (x == cells || z == cells)
                continue;
            const int a = z * (cells + 1) + x;
            const int c = a + cells + 1;
            for (const int i : {a, c, a + 1, a + 1, c, c + 1})
                mesh.face.push_back(i);
        }
    }
    return mesh;
}

/// Another triangle, with vertices of its own.
inline void add(CMesh& mesh, const Vector3d& a, const Vector3d& b, const Vector3d& c)
{
    for (const Vector3d& v : {a, b, c}) {
        mesh.face.push_back(static_cast<std::int32_t>(mesh.vertex.size()));
        mesh.vertex.push_back(v);
    }
}

/// Triangles anywhere within 10 of the origin; slivers: some have no area.
inline CMesh soup(unsigned seed, int triangles, double size, bool withSlivers = false)
{
    Random random(seed);
    CMesh mesh;
    for (int i = 0; i < triangles; ++i) {
        const Vector3d a = random.point(10);
        add(mesh, a, a + random.point(size), a + random.point(size));
        if (withSlivers && i % 5 == 0) {
            const Vector3d d = random.point(size);
            add(mesh, a, a + d, a + d * 2.0); // no area
            add(mesh, a, a, a);               // no length
        }
    }
    return mesh;
}

/// By the divergence theorem: positive only if the triangles face outward, and exact only if the
/// surface is closed.
inline double volume(const CMesh& mesh)
{
    double six = 0;
    for (std::size_t i = 0; i + 2 < mesh.face.size(); i += 3) {
        six += dot(mesh.vertex[mesh.face[i]],
                   cross(mesh.vertex[mesh.face[i + 1]], mesh.vertex[mesh.face[i + 2]]));
    }
    return six / 6;
}

struct Nearest
{
    double distance;
    Vector3d normal;
};

/// Every triangle in turn by Cramer's rule (Moller and Trumbore): another way than the trees'.
inline std::optional<Nearest> nearestByHand(const CMesh& mesh, const Vector3d& origin,
                                            Vector3d direction)
{
    direction = normalise(direction);
    std::optional<Nearest> nearest;
    for (std::size_t i = 0; i < mesh.face.size(); i += 3) {
        const Vector3d a = mesh.vertex[mesh.face[i]];
        const Vector3d e1 = mesh.vertex[mesh.face[i + 1]] - a;
        const Vector3d e2 = mesh.vertex[mesh.face[i + 2]] - a;
        const Vector3d p = cross(direction, e2);
        const double det = dot(e1, p);
        if (std::abs(det) < 1e-14)
            continue;
        const Vector3d s = origin - a;
        const double u = dot(s, p) / det;
        const Vector3d q = cross(s, e1);
        const double v = dot(direction, q) / det;
        const double t = dot(e2, q) / det;
        if (u >= 0 && v >= 0 && u + v <= 1 && t >= 0 && (!nearest || t < nearest->distance))
            nearest = {t, normalise(cross(e1, e2))};
    }
    return nearest;
}

} // namespace tvw::rgs::tests
