#include "plugins/common/ground_sensor.h"

#include "plugins/common/ground_bullet_world.h"
#include "plugins/common/ground_host.h"
#include "plugins/common/ground_stored.h"
#include "plugins/common/ground_surfaces.h"

#include <algorithm>
#include <new>
#include <utility>

namespace tvw::rgs {

namespace {

const CGroundTriangleTree kNoTree;

/// Null when one of the surfaces is no mesh with vertices, or they are too many.
std::unique_ptr<GroundBulletWorld> worldOf(CInterface& runtime, const std::vector<CNode*>& surfaces,
                                           double time)
{
    if (surfaces.size() > GroundBulletWorld::kMostSurfaces)
        return nullptr;
    auto world = std::make_unique<GroundBulletWorld>(surfaces.size());
    for (CNode* const surface : surfaces) {
        Matrix4 place;
        const CMesh mesh = readMesh(runtime, *surface, time);
        if (mesh.numVertexes() == 0 || !readPlace(runtime, *surface, time, place))
            return nullptr;
        world->addSurface(mesh, place);
    }
    return world;
}

std::unique_ptr<GroundBulletWorld> makeWorld(CInterface& runtime, CNode* gravityNode,
                                             const GroundSettings& settings, double time,
                                             double bodyLength, CNode* ownBody)
{
    if (settings.storedMesh.numFaces() != 0) {
        auto world = std::make_unique<GroundBulletWorld>(1);
        world->addSurface(settings.storedMesh, settings.storedMatrix);
        return world;
    }
    std::vector<CNode*> surfaces;
    collectSurfaces(gravityNode, ownBody, surfaces);
    auto world = worldOf(runtime, surfaces, time);
    if (surfaces.empty())
        world->addDefaultGround(bodyLength);
    releaseSurfaces(gravityNode, surfaces);
    return world;
}

} // namespace

GroundSensor::GroundSensor() = default;
GroundSensor::~GroundSensor() = default;

GroundSensor::Problem GroundSensor::beginRun(CInterface& runtime, CNode* gravityNode,
                                             const GroundSettings& settings, double time,
                                             double bodyLength, CNode* ownBody)
{
    endRun();
    if (settings.storedMesh.numFaces() == 0) {
        tree_.reset();
        treeMesh_ = CMesh();
    }
    Problem problem = Problem::None;
    if (settings.useStaticMesh) {
        try {
            auto world = makeWorld(runtime, gravityNode, settings, time, bodyLength, ownBody);
            problem = world ? Problem::None : Problem::UnsupportedSurface;
            shapes_ = world ? world->shapes() : decltype(shapes_){};
            source_ = std::move(world);
        } catch (const std::bad_alloc&) {
            source_ = std::make_unique<GroundStored>(kNoTree, Matrix4());
            problem = Problem::NoWorld;
        }
    } else if (settings.storedMesh.numFaces() != 0) {
        source_ =
            std::make_unique<GroundStored>(treeOf(settings.storedMesh), settings.storedMatrix);
    }
    if (!source_)
        source_ = std::make_unique<GroundHost>(runtime, gravityNode, ownBody);
    return problem;
}

const CGroundTriangleTree& GroundSensor::treeOf(const CMesh& mesh)
{
    if (!tree_ || !(treeMesh_ == mesh)) {
        tree_ = std::make_unique<CGroundTriangleTree>(mesh);
        treeMesh_ = mesh;
    }
    return *tree_;
}

void GroundSensor::endRun()
{
    source_.reset();
}

void GroundSensor::beginTick(double time)
{
    if (source_)
        source_->beginTick(time);
}

void GroundSensor::endTick()
{
    if (source_)
        source_->endTick();
}

std::size_t GroundSensor::surfaceCount() const
{
    return source_ ? source_->mParentMesh.size() : 0;
}

bool GroundSensor::isPlane() const
{
    return surfaceCount() == 0;
}

void GroundSensor::castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                           std::span<GroundHit> out)
{
    if (surface < surfaceCount())
        source_->castFan(surface, rays, maxLength, out);
    else
        std::fill(out.begin(), out.end(), GroundHit{});
}

bool GroundSensor::castGroundRay(std::size_t surface, const GroundRay& ray, double maxLength,
                                 double* distance, Vector3d* normal)
{
    GroundHit hit;
    castFan(surface, {&ray, 1}, maxLength, {&hit, 1});
    if (!hit.hit)
        return false;
    if (distance)
        *distance = hit.distance;
    if (normal)
        *normal = hit.normal;
    return true;
}

namespace {

/// Empty when the surface's copy is taken.
std::string copySurface(CInterface& runtime, CNode* gravityNode, double time,
                        GroundSettings& settings)
{
    CNode* const surface =
        gravityNode && !gravityNode->isDeleted() ? gravityNode->getParent() : nullptr;
    if (!surface)
        return "No ground mesh available";
    std::string problem;
    CSnapshot_Mesh* const snapshot = runtime.getMeshSnapshot(surface, time);
    if (!snapshot || !readPlace(runtime, *surface, time, settings.storedMatrix)) {
        problem = "Surface not a mesh";
    } else {
        settings.storedMesh = snapshot->getMesh();
        if (settings.storedMesh.numFaces() == 0 || !settings.storedMesh.isSound())
            problem = "Mesh Invalid";
    }
    if (snapshot)
        runtime.releaseMeshSnapshot(snapshot);
    gravityNode->release(surface);
    return problem;
}

} // namespace

std::string GroundSensor::storeMesh(CInterface& runtime, CNode* gravityNode, double time,
                                    GroundSettings& settings)
{
    std::string problem = copySurface(runtime, gravityNode, time, settings);
    settings.storeMeshData = problem.empty();
    if (!problem.empty()) {
        // A ray asks whatever copy there is: one that the flag denies must not be there.
        settings.storedMesh = CMesh();
        settings.storedMatrix = Matrix4();
    }
    return problem;
}

} // namespace tvw::rgs
