#include "plugins/release/raycaster/raycaster_CRayCasterObject.h"

#include "plugins/common/ground_source.h"
#include "plugins/common/ground_surfaces.h"
#include "plugins/common/pose.h"
#include "plugins/common/world_normal.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon {

using namespace raycaster;

namespace {

constexpr double kFarAway = 100000000.0; ///< where a ray without an end stops that hits nothing

/// A ray that sinks less per unit is level: an angle in degrees rarely gives an exact zero.
constexpr double kLevel = 1e-9;

/// The orientation with its third axis turned onto the normal, the short way, and not beyond a
/// right angle.
Quatd alignedTo(const Vector3d& normal, const Quatd& rotation)
{
    const Vector3d axis = cross(rotate(rotation, {0, 0, 1}), normal);
    const double angle = std::asin(std::min(length(axis), 1.0));
    return rotation * fromRotationVector(normalise(axis) * angle);
}

} // namespace

CRayCasterObject::CRayCasterObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "RayCasterDataChunk")
{
    StateStore& saved = state().nested("RayCasterutil::DataChunk");
    saved.packed("sDataChunkSaveStruct", 11)
        .field(settings.hideHelpers)
        .field(settings.hideDuringRecording)
        .field(settings.wireframe)
        .field(settings.maximumRayDistance);
    saved.stored("bAlingRayHitNodeToNormal", settings.bAlingRayHitNodeToNormal);
}

void CRayCasterObject::itemActed(std::string_view label)
{
    if (label != kInitialize)
        return;
    const double now = runtime().getTime();
    placeHit(now, now);
    runtime().updateConfiguration();
}

void CRayCasterObject::placeHit(double time, double scaleTime)
{
    Matrix4 origin;
    if (!node(kRayOrigin).readGlobal(time, origin))
        return;
    PoseParts placed = splitPose(node(kRayHit).global(scaleTime));
    const Quatd rotation = splitPose(origin).transform.rotation;
    const Ray ray{translationOf(origin), -normalise(origin.axis(2))};
    const std::optional<Hit> hit = cast(ray, time);
    if (!hit)
        return;
    const bool aligns = settings.bAlingRayHitNodeToNormal && !hit->missed;
    placed.transform = {hit->position, aligns ? alignedTo(hit->normal, rotation) : rotation};
    node(kRayHit).setGlobal(time, joinPose(placed));
}

std::optional<CRayCasterObject::Hit> CRayCasterObject::cast(const Ray& ray, double time) const
{
    const SceneNode& child = node(kHitSurfaceChild);
    CNode* const surface = child.exists() ? child.handle()->getParent() : nullptr;
    if (!surface)
        return castOnPlane(ray);
    const std::optional<Hit> hit = castOnSurface(ray, *surface, time);
    child.handle()->release(surface);
    return hit;
}

/// The plane is met behind the origin too.
CRayCasterObject::Hit CRayCasterObject::castOnPlane(const Ray& ray) const
{
    const bool isLevel = std::abs(ray.direction.y) < kLevel;
    double distance = isLevel ? 0.0 : -ray.origin.y / ray.direction.y;
    if (settings.maximumRayDistance != 0.0)
        distance = std::min(distance, settings.maximumRayDistance);
    return {ray.origin + ray.direction * distance};
}

std::optional<CRayCasterObject::Hit> CRayCasterObject::castOnSurface(const Ray& ray, CNode& surface,
                                                                     double time) const
{
    Matrix4 toWorld;
    CSnapshot_Mesh* const mesh = readPlace(runtime(), surface, time, toWorld)
                                     ? runtime().getMeshSnapshot(&surface, time)
                                     : nullptr;
    if (!mesh)
        return std::nullopt;
    const Matrix4 toSurface = inverse(toWorld);
    const SurfaceRay local({ray.origin, ray.direction}, toSurface);
    double distance = -1.0;
    Vector3d normal;
    const bool isHit =
        local.scale > 0.0 && mesh->rayCast(local.origin, local.direction, &distance, &normal);
    runtime().releaseMeshSnapshot(mesh);
    if (!isHit)
        return miss(ray);
    distance *= local.scale;
    if (settings.maximumRayDistance != 0.0)
        distance = std::min(distance, settings.maximumRayDistance);
    return Hit{ray.origin + ray.direction * distance, worldNormal(toSurface, normal)};
}

CRayCasterObject::Hit CRayCasterObject::miss(const Ray& ray) const
{
    const double reach =
        settings.maximumRayDistance != 0.0 ? settings.maximumRayDistance : kFarAway;
    return {.position = ray.origin + ray.direction * reach, .missed = true};
}

} // namespace tvw::rgs::addon
