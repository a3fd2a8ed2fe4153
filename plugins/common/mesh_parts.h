/// Shapes put together from parts.
#pragma once

#include "util/mesh.h"

namespace tvw::rgs::shape {

inline void addPart(CMesh& mesh, const CMesh& part, const Matrix4& place = {})
{
    const auto base = static_cast<std::int32_t>(mesh.vertex.size());
    for (const Vector3d& point : part.vertex)
        mesh.vertex.push_back(transformPoint(place, point));
    for (const std::int32_t index : part.face)
        mesh.face.push_back(base + index);
}

inline Matrix4 movedBy(double x, double y, double z)
{
    Matrix4 place;
    setTranslation(place, {x, y, z});
    return place;
}

} // namespace tvw::rgs::shape
