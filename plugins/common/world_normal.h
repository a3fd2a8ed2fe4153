/// Normals of surfaces in spaces that are scaled.
#pragma once

#include "util/matrix4.h"

namespace tvw::rgs {

/// A surface's normal in the world, of unit length. toSurface: from the world into the surface's
/// space. By the transpose of that inverse, so that it stands upright on a surface whose scale
/// differs from axis to axis.
inline Vector3d worldNormal(const Matrix4& toSurface, const Vector3d& normal)
{
    return normalise(Vector3d{dot(toSurface.axis(0), normal), dot(toSurface.axis(1), normal),
                              dot(toSurface.axis(2), normal)});
}

} // namespace tvw::rgs
