#include "plugins/common/ground_sensor.h"

#include "plugins/common/ground_host.h"
#include "plugins/common/ground_surfaces.h"

#include <algorithm>

namespace tvw::rgs {

GroundSensor::GroundSensor() = default;
GroundSensor::~GroundSensor() = default;

GroundSensor::Problem GroundSensor::beginRun(CInterface& runtime, CNode* gravityNode,
                                             const GroundSettings&, double, double, CNode* ownBody)
{
    endRun();
    source_ = std::make_unique<GroundHost>(runtime, gravityNode, ownBody);
    return Problem::None;
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
