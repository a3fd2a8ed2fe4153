#include "adaptor/stage/snapshots.h"

#include "adaptor/stage/ray_fan.h"
#include "adaptor/stage/stage.h"

#include <algorithm>

namespace tvw::rgs::stage {

void PoseSnapshot::setLocal(const Matrix4& transform)
{
    node_->setLocal(transform, time_, node_->stage().keyMode());
}

void PoseSnapshot::getLocal(Matrix4& out)
{
    out = node_->local(time_);
}

void PoseSnapshot::getGlobal(Matrix4& out)
{
    out = node_->worldAt(toFlicks(time_));
}

void PoseSnapshot::setGlobal(const Matrix4& transform)
{
    node_->setWorld(transform, time_, node_->stage().keyMode());
}

void HelperSnapshot::setMesh(const CMesh& mesh)
{
    node_->setMesh(mesh);
}

void HelperSnapshot::setColor(float red, float green, float blue)
{
    node_->setColor(red, green, blue);
}

void HelperSnapshot::setWireframe(bool on)
{
    node_->setWireframe(on);
}

void HelperSnapshot::setAlwaysOnTop(bool on)
{
    node_->setAlwaysOnTop(on);
}

void MeshSnapshot::setMesh(const CMesh& mesh)
{
    node_->setMesh(mesh);
}

CMesh MeshSnapshot::getMesh()
{
    return node_->mesh() ? node_->mesh()->mesh() : CMesh{};
}

std::intptr_t MeshSnapshot::call(std::int32_t code, void* argument)
{
    const auto* const fan = static_cast<const MeshRayFan*>(argument);
    if (code != code::castRayFan || !fan || fan->directions.size() != fan->origins.size() ||
        fan->distances.size() != fan->origins.size() || fan->normals.size() != fan->origins.size())
        return 0;
    if (const StageMesh* const mesh = node_->mesh().get())
        castRayFan(mesh->tree(), *fan);
    else
        std::fill(fan->distances.begin(), fan->distances.end(), -1.0);
    return 1;
}

bool MeshSnapshot::rayCast(const Vector3<double>& origin, const Vector3<double>& direction,
                           double* distance, Vector3<double>* normal)
{
    const StageMesh* const mesh = node_->mesh().get();
    const std::optional<RayHit> hit = mesh ? mesh->tree().rayCast(origin, direction) : std::nullopt;
    if (!hit)
        return false;
    if (distance)
        *distance = hit->distance;
    if (normal)
        *normal = hit->normal;
    return true;
}

void LensSnapshot::setFieldOfView(double degrees)
{
    node_->setFov(degrees, time_, node_->stage().keyMode());
}

double LensSnapshot::getFieldOfView()
{
    return node_->fov(time_);
}

int LensSnapshot::getFieldOfViewType()
{
    return static_cast<int>(node_->state().viewAngle);
}

void LensSnapshot::setFieldOfViewType(int type)
{
    node_->setViewAngle(static_cast<ViewAngle>(std::clamp(type, 0, 2)));
}

void LensSnapshot::setTargetDistance(double distance)
{
    node_->setTargetDistance(distance, time_, node_->stage().keyMode());
}

double LensSnapshot::getTargetDistance()
{
    return node_->targetDistance(time_);
}

double ShapeSnapshot::curveLength()
{
    return node_->spline() ? node_->spline()->length() : 0.0;
}

void ShapeSnapshot::pointAt(Vector3<double>& out, double u)
{
    out = node_->spline() ? node_->spline()->pointAt(u) : Vector3d{};
}

void ShapeSnapshot::tangentAt(Vector3<double>& out, double u)
{
    out = node_->spline() ? node_->spline()->tangentAt(u) : Vector3d{0.0, 1.0, 0.0};
}

} // namespace tvw::rgs::stage
