/// A terrain, and Bullet's own world on it as one would write it down: the peer of ground and car.
#pragma once

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wdouble-promotion"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#include <btBulletDynamicsCommon.h>
#pragma GCC diagnostic pop

#include "util/mesh.h"

#include <cmath>
#include <memory>

namespace tvw::bench {

/// Rolling ground with bumps, `side` by `side` quads of `cell` [m] round the origin.
inline CMesh terrain(int side, double cell)
{
    CMesh mesh;
    for (int z = 0; z <= side; ++z) {
        for (int x = 0; x <= side; ++x) {
            const double px = (x - side / 2) * cell;
            const double pz = (z - side / 2) * cell;
            const double height = 2.0 * std::sin(0.11 * px) * std::cos(0.07 * pz) +
                                  0.03 * std::sin(1.7 * px + 0.4 * pz);
            mesh.vertex.push_back({px, height, pz});
            if (x == side || z == side)
                continue;
            const int a = z * (side + 1) + x;
            const int c = a + side + 1;
            for (const int i : {a, c, a + 1, a + 1, c, c + 1})
                mesh.face.push_back(i);
        }
    }
    return mesh;
}

/// A world of Bullet as one would write it down.
struct BareBullet
{
    explicit BareBullet(const CMesh& mesh)
    {
        btIndexedMesh part;
        part.m_numTriangles = static_cast<int>(mesh.numFaces());
        part.m_triangleIndexBase = reinterpret_cast<const unsigned char*>(mesh.face.data());
        part.m_triangleIndexStride = 12;
        part.m_numVertices = static_cast<int>(mesh.numVertexes());
        part.m_vertexBase = reinterpret_cast<const unsigned char*>(mesh.vertex.data());
        part.m_vertexStride = sizeof(Vector3d);
        triangles.addIndexedMesh(part, PHY_INTEGER);
        shape = std::make_unique<btBvhTriangleMeshShape>(&triangles, true, true);
        body = std::make_unique<btRigidBody>(0.0, nullptr, shape.get());
        world.addRigidBody(body.get());
    }
    ~BareBullet() { world.removeRigidBody(body.get()); }

    /// The distance along the ray, or -1.
    double cast(const Vector3d& origin, const Vector3d& direction, double maxLength)
    {
        const Vector3d end = origin + direction * maxLength;
        btVehicleRaycaster::btVehicleRaycasterResult result;
        return caster.castRay(btVector3(origin.x, origin.y, origin.z),
                              btVector3(end.x, end.y, end.z), result)
                   ? result.m_distFraction * maxLength
                   : -1.0;
    }

    btDefaultCollisionConfiguration configuration;
    btCollisionDispatcher dispatcher{&configuration};
    btAxisSweep3 broadphase{{-1000, -1000, -1000}, {1000, 1000, 1000}, 16384};
    btSequentialImpulseConstraintSolver solver;
    btDiscreteDynamicsWorld world{&dispatcher, &broadphase, &solver, &configuration};
    btDefaultVehicleRaycaster caster{&world};
    btTriangleIndexVertexArray triangles;
    std::unique_ptr<btBvhTriangleMeshShape> shape;
    std::unique_ptr<btRigidBody> body;
};

} // namespace tvw::bench
