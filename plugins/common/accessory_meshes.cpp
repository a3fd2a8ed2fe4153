#include "plugins/common/accessory_meshes.h"

#include "plugins/common/mesh_parts.h"
#include "plugins/common/vehicle_meshes.h"

#include <cmath>
#include <numbers>

namespace tvw::rgs::shape {

namespace {

const Matrix4 kXToY = rotationMatrix(90, 0, 0, 1);
const Matrix4 kXToZ = rotationMatrix(-90, 0, 1, 0);

/// The part along the X axis, and its copies along Y and Z.
void addAlongAxes(CMesh& mesh, const CMesh& part, const Matrix4& place = {})
{
    for (const Matrix4& turn : {Matrix4{}, kXToY, kXToZ})
        addPart(mesh, part, turn * place);
}

/// A hoop of square bars round the Z axis.
CMesh hoop(double radius, double thick)
{
    constexpr int kBars = 32;
    const double side = 2 * radius * std::tan(std::numbers::pi / kBars);
    CMesh mesh;
    for (int i = 0; i < kBars; ++i)
        addPart(mesh, CMesh_Box(thick, side, thick),
                rotationMatrix(360.0 / kBars * i, 0, 0, 1) * movedBy(radius, 0, 0));
    return mesh;
}

} // namespace

CMesh boxClearance()
{
    constexpr double kBar = 0.03;
    CMesh mesh;
    for (const double a : {-1.0, 1.0}) {
        for (const double b : {-1.0, 1.0})
            addAlongAxes(mesh, CMesh_Box(2 + kBar, kBar, kBar), movedBy(0, a, b));
    }
    return mesh;
}

CMesh sphereClearance()
{
    CMesh mesh;
    const CMesh ring = hoop(1.0, 0.03);
    addPart(mesh, ring);
    addPart(mesh, ring, rotationMatrix(90, 1, 0, 0));
    addPart(mesh, ring, rotationMatrix(90, 0, 1, 0));
    return mesh;
}

CMesh coneClearance()
{
    CMesh mesh;
    const double edge = std::sqrt(0.5); // of a slope of length 1
    addPart(mesh, hoop(edge, 0.03), movedBy(0, 0, -edge));
    for (int i = 0; i < 4; ++i)
        addPart(mesh, CMesh_Box(0.03, 0.03, 1.0),
                rotationMatrix(90.0 * i, 0, 0, 1) * rotationMatrix(45, 1, 0, 0) *
                    movedBy(0, 0, -0.5));
    return mesh;
}

CMesh slider()
{
    CMesh mesh;
    addPart(mesh, CMesh_Box(0.2, 0.2, 0.2));
    addAlongAxes(mesh, CMesh_Box(0.36, 0.05, 0.05));
    return mesh;
}

CMesh pointer()
{
    CMesh mesh;
    addPart(mesh, CMesh_Box(0.16, 0.16, 0.16));
    addPart(mesh, CMesh_Box(0.06, 0.06, 0.9), movedBy(0, 0, -0.45));
    addPart(mesh, CMesh_Box(0.12, 0.12, 0.12), movedBy(0, 0, -0.94));
    return mesh;
}

CMesh measuringPoint()
{
    CMesh mesh;
    addPart(mesh, CMesh_Box(0.1, 0.1, 0.1));
    addAlongAxes(mesh, CMesh_Box(0.6, 0.02, 0.02));
    return mesh;
}

CMesh gauge()
{
    CMesh mesh;
    addAlongAxes(mesh, CMesh_Box(1.0, 0.03, 0.03), movedBy(0.5, 0, 0));
    addAlongAxes(mesh, CMesh_Box(0.1, 0.1, 0.1), movedBy(1.0, 0, 0));
    return mesh;
}

CMesh rayOrigin()
{
    CMesh mesh;
    addPart(mesh, CMesh_Box(0.5, 0.5, 0.02));
    addPart(mesh, forceArrow(), rotationMatrix(180, 0, 1, 0));
    return mesh;
}

CMesh rayHit()
{
    CMesh mesh;
    addPart(mesh, CMesh_Box(0.5, 0.5, 0.02));
    addPart(mesh, CMesh_Box(0.04, 0.04, 0.3), movedBy(0, 0, 0.15));
    return mesh;
}

CMesh surfaceMark()
{
    constexpr double kSize = 1.2;
    return transformed(gravityArrow(), scaled({}, {kSize, kSize, kSize}));
}

} // namespace tvw::rgs::shape
