#include "plugins/common/vehicle_meshes.h"

#include <array>
#include <cmath>
#include <numbers>
#include <span>

namespace tvw::rgs::shape {

namespace {

constexpr int kSegments = 24;

void append(CMesh& mesh, const CMesh& part, const Matrix4& place = {})
{
    const auto base = static_cast<std::int32_t>(mesh.vertex.size());
    for (const Vector3d& point : part.vertex)
        mesh.vertex.push_back(transformPoint(place, point));
    for (const std::int32_t index : part.face)
        mesh.face.push_back(base + index);
}

Matrix4 at(double x, double y, double z)
{
    Matrix4 place;
    setTranslation(place, {x, y, z});
    return place;
}

void addQuad(CMesh& mesh, std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d)
{
    for (const std::int32_t index : {a, b, c, c, d, a})
        mesh.face.push_back(index);
}

/// A section is an octagon across Z, seen along +Z: half width, lower and upper edge, where it
/// stands.
struct Section
{
    double z, halfWidth, low, high;
};

/// A hull through rounded sections, closed at both ends.
CMesh hull(std::span<const Section> sections)
{
    constexpr double kRound = 0.03;
    CMesh mesh;
    for (const Section& s : sections) {
        const double x = s.halfWidth;
        const double inner = x - kRound;
        const double rise = std::min(kRound, (s.high - s.low) / 3);
        for (const auto& [px, py] : std::array<std::array<double, 2>, 8>{{{-inner, s.low},
                                                                          {inner, s.low},
                                                                          {x, s.low + rise},
                                                                          {x, s.high - rise},
                                                                          {inner, s.high},
                                                                          {-inner, s.high},
                                                                          {-x, s.high - rise},
                                                                          {-x, s.low + rise}}})
            mesh.vertex.push_back({px, py, s.z});
    }
    constexpr std::int32_t kCorners = 8;
    for (std::int32_t s = 0; s + 1 < static_cast<std::int32_t>(sections.size()); ++s) {
        for (std::int32_t c = 0; c < kCorners; ++c) {
            const std::int32_t next = (c + 1) % kCorners;
            addQuad(mesh, s * kCorners + c, s * kCorners + next, (s + 1) * kCorners + next,
                    (s + 1) * kCorners + c);
        }
    }
    const auto last = static_cast<std::int32_t>(mesh.vertex.size()) - kCorners;
    for (std::int32_t c = 1; c + 1 < kCorners; ++c) {
        for (const std::int32_t index : {0, c + 1, c, last, last + c, last + c + 1})
            mesh.face.push_back(index);
    }
    return mesh;
}

/// A point of a closed profile that is turned round an axis.
struct Profile
{
    double radius, along;
};

/// A ring round the X axis from a closed profile.
CMesh ring(std::span<const Profile> profile)
{
    CMesh mesh;
    const auto count = static_cast<std::int32_t>(profile.size());
    for (int s = 0; s < kSegments; ++s) {
        const double angle = 2 * std::numbers::pi * s / kSegments;
        for (const Profile& point : profile)
            mesh.vertex.push_back(
                {point.along, point.radius * std::cos(angle), point.radius * std::sin(angle)});
    }
    for (std::int32_t s = 0; s < kSegments; ++s) {
        const std::int32_t next = (s + 1) % kSegments;
        for (std::int32_t p = 0; p < count; ++p) {
            const std::int32_t q = (p + 1) % count;
            addQuad(mesh, s * count + p, next * count + p, next * count + q, s * count + q);
        }
    }
    return mesh;
}

/// A bar in the plane x = 0 from the middle outward, turned by `degrees` round X.
void addSpoke(CMesh& mesh, double from, double to, double thick, double width, double degrees)
{
    append(mesh, CMesh_Box(width, to - from, thick),
           rotationMatrix(degrees, 1, 0, 0) * at(0, (from + to) / 2, 0));
}

/// Along +Z, of length 1.
CMesh arrow()
{
    constexpr double kShaft = 0.7;
    CMesh mesh;
    append(mesh, CMesh_Box(0.06, 0.06, kShaft), at(0, 0, kShaft / 2));
    const auto base = static_cast<std::int32_t>(mesh.vertex.size());
    constexpr double kHead = 0.14;
    mesh.vertex.insert(mesh.vertex.end(), {{-kHead, -kHead, kShaft},
                                           {kHead, -kHead, kShaft},
                                           {kHead, kHead, kShaft},
                                           {-kHead, kHead, kShaft},
                                           {0, 0, 1}});
    addQuad(mesh, base + 3, base + 2, base + 1, base);
    for (std::int32_t c = 0; c < 4; ++c) {
        for (const std::int32_t index : {base + c, base + (c + 1) % 4, base + 4})
            mesh.face.push_back(index);
    }
    return mesh;
}

/// X to Z: what was made round the X axis stands round the Z axis.
const Matrix4 kAcross = rotationMatrix(90, 0, 1, 0);

} // namespace

CMesh carBody()
{
    CMesh mesh;
    constexpr std::array lower{Section{-0.5, 0.15, 0.03, 0.11},  Section{-0.46, 0.18, 0.02, 0.14},
                               Section{-0.2, 0.193, 0.02, 0.17}, Section{0.3, 0.193, 0.02, 0.18},
                               Section{0.46, 0.18, 0.02, 0.17},  Section{0.5, 0.16, 0.04, 0.14}};
    constexpr std::array cabin{Section{-0.2, 0.16, 0.13, 0.16}, Section{-0.06, 0.15, 0.15, 0.275},
                               Section{0.2, 0.15, 0.15, 0.284}, Section{0.38, 0.16, 0.13, 0.175}};
    append(mesh, hull(lower));
    append(mesh, hull(cabin));
    return mesh;
}

CMesh wheel()
{
    CMesh mesh;
    constexpr std::array tyre{Profile{0.72, -0.5}, Profile{0.93, -0.5}, Profile{1.0, -0.32},
                              Profile{1.0, 0.32},  Profile{0.93, 0.5},  Profile{0.72, 0.5}};
    constexpr std::array hub{Profile{0.05, -0.46}, Profile{0.2, -0.46}, Profile{0.2, 0.2},
                             Profile{0.05, 0.2}};
    append(mesh, ring(tyre));
    append(mesh, ring(hub));
    constexpr int kSpokes = 5;
    for (int i = 0; i < kSpokes; ++i)
        addSpoke(mesh, 0.15, 0.75, 0.12, 0.3, 360.0 / kSpokes * i);
    return mesh;
}

CMesh wheelRelocator()
{
    CMesh mesh;
    constexpr std::array rim{Profile{1.02, -0.52}, Profile{1.08, -0.52}, Profile{1.08, 0.52},
                             Profile{1.02, 0.52}};
    append(mesh, ring(rim));
    append(mesh, CMesh_Box(1.3, 0.05, 0.05));
    addSpoke(mesh, 0.0, 1.3, 0.05, 0.05, 0);
    return mesh;
}

CMesh wheelCentre()
{
    CMesh mesh;
    append(mesh, CMesh_Box(0.5, 0.04, 0.04));
    append(mesh, CMesh_Box(0.04, 0.04, 0.5));
    append(mesh, CMesh_Box(0.12, 0.12, 0.12));
    return mesh;
}

CMesh wheelSuspension()
{
    CMesh mesh;
    append(mesh, arrow(), rotationMatrix(-90, 1, 0, 0));
    return transformed(mesh, scaled({}, {0.4, 0.4, 0.4}));
}

CMesh attachPlate()
{
    CMesh mesh;
    for (const double side : {-1.0, 1.0}) {
        append(mesh, CMesh_Box(0.02, 0.02, 0.6), at(0.17 * side, 0, 0));
        append(mesh, CMesh_Box(0.34, 0.02, 0.02), at(0, 0, 0.3 * side));
    }
    append(mesh, CMesh_Box(0.34, 0.02, 0.02));
    return mesh;
}

CMesh gravityArrow()
{
    return transformed(arrow(), rotationMatrix(90, 1, 0, 0));
}

CMesh forceArrow()
{
    return arrow();
}

CMesh steeringWheel()
{
    CMesh mesh;
    constexpr std::array rim{Profile{0.9, -0.06}, Profile{1.0, -0.06}, Profile{1.0, 0.06},
                             Profile{0.9, 0.06}};
    append(mesh, ring(rim));
    for (const double degrees : {90.0, 180.0, 270.0})
        addSpoke(mesh, 0.0, 0.92, 0.12, 0.05, degrees);
    return transformed(mesh, kAcross);
}

CMesh turnBase()
{
    CMesh mesh;
    append(mesh, CMesh_Box(0.8, 0.03, 0.03));
    append(mesh, CMesh_Box(0.03, 0.03, 0.8));
    append(mesh, CMesh_Box(0.03, 0.5, 0.03), at(0, 0.25, 0));
    return mesh;
}

CMesh basePlane()
{
    CMesh mesh;
    append(mesh, CMesh_Box(0.386, 0.004, 1.0));
    append(mesh, CMesh_Box(0.02, 0.008, 0.2), at(0, 0, -0.55));
    return mesh;
}

} // namespace tvw::rgs::shape
