#include "view/lens.h"

#include <cmath>

namespace tvw::rgs::view {

namespace {

constexpr double kDegree = 0.017453292519943295;

} // namespace

double verticalFov(const Lens& lens, double aspect)
{
    const double half = std::tan(lens.fovDegrees * kDegree / 2);
    double vertical = half;
    if (lens.angle == stage::ViewAngle::Horizontal)
        vertical = half / aspect;
    else if (lens.angle == stage::ViewAngle::Diagonal)
        vertical = half / std::hypot(1.0, aspect);
    return 2 * std::atan(vertical) / kDegree;
}

Matrix4 perspective(double verticalDegrees, double aspect, double nearest, double farthest)
{
    const double f = 1.0 / std::tan(verticalDegrees * kDegree / 2);
    Matrix4 out;
    out.m[0] = f / aspect;
    out.m[5] = f;
    out.m[10] = (farthest + nearest) / (nearest - farthest);
    out.m[11] = -1.0;
    out.m[14] = 2 * farthest * nearest / (nearest - farthest);
    out.m[15] = 0.0;
    return out;
}

Lens lensOf(const stage::StageNode& camera, double time)
{
    return {orthonormalise(camera.world(time)), camera.fov(time), camera.state().viewAngle};
}

Vector3d rayThrough(const Lens& lens, double aspect, double x, double y)
{
    const double tangent = std::tan(verticalFov(lens, aspect) * kDegree / 2);
    const Vector3d local{x * tangent * aspect, y * tangent, -1.0};
    return normalise(transformDirection(orthonormalise(lens.world), local));
}

} // namespace tvw::rgs::view
