/// The ground as a world of Bullet that is asked for rays and never stepped ("Use Fast Ray Cast").
#pragma once

#include "plugins/common/ground_source.h"

#include <memory>
#include <vector>

namespace tvw::rgs {

/// Surfaces stand for the whole run where they stood when they were added. One place, the identity:
/// the world answers for all of them at once.
class GroundBulletWorld final : public GroundSource
{
public:
    static constexpr std::size_t kMostSurfaces = 16384;

    /// surfaces: that will be added, at most kMostSurfaces; the broad phase's tables have their
    /// room from the start.
    explicit GroundBulletWorld(std::size_t surfaces);
    ~GroundBulletWorld() override;

    /// Triangles with a corner that the mesh does not have, or that is no number, are left out.
    void addSurface(const CMesh& mesh, const Matrix4& place);

    /// The plane y = 0, out to 1000 times the length of the body [m].
    void addDefaultGround(double bodyLength);

    /// What is dear to build. A world made while they live takes over those whose surface is the
    /// same.
    std::vector<std::shared_ptr<const void>> shapes() const;

    void castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                 std::span<GroundHit> out) override;

private:
    class triMeshStorage;
    class CollisionObjects;
    class CPhysicsWorld;

    std::unique_ptr<CPhysicsWorld> world_;
};

} // namespace tvw::rgs
