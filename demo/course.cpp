#include "demo/course.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tvw::rgs::demo {

namespace {

constexpr int kSections = 480;
constexpr double kRoadHalf = 3.6;      // [m]
constexpr double kKerbWidth = 0.4;     // [m]
constexpr double kKerbHeight = 0.1;    // [m]
constexpr double kRoadLift = 0.05;     // over the terrain, so that the two don't mingle [m]
constexpr double kTerrainHalf = 150.0; // [m]
constexpr double kCell = 2.0;          // [m]

/// The hills before a road was built.
double hills(double x, double z)
{
    return 3.2 * std::sin(0.031 * x + 0.6) * std::cos(0.027 * z) +
           1.6 * std::sin(0.061 * x - 0.044 * z) +
           0.35 * std::sin(0.19 * x) * std::sin(0.17 * z + 1.0);
}

/// Broad ones only: what the road follows.
double roadHeight(double x, double z)
{
    return 2.2 * std::sin(0.021 * x + 0.6) * std::cos(0.019 * z);
}

std::vector<Vector3d> corners()
{
    static constexpr std::array<std::array<double, 2>, 11> kPlan{{{0, 60},
                                                                  {0, 10},
                                                                  {0, -45},
                                                                  {-22, -88},
                                                                  {-66, -92},
                                                                  {-90, -58},
                                                                  {-66, -22},
                                                                  {-84, 22},
                                                                  {-70, 72},
                                                                  {-34, 104},
                                                                  {-6, 96}}};
    std::vector<Vector3d> out;
    for (const auto& [x, z] : kPlan)
        out.push_back({x, roadHeight(x, z), z});
    return out;
}

double smoothStep(double from, double to, double at)
{
    const double t = std::clamp((at - from) / (to - from), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

void addQuad(CMesh& mesh, const Vector3d& a, const Vector3d& b, const Vector3d& c,
             const Vector3d& d)
{
    const auto first = static_cast<std::int32_t>(mesh.vertex.size());
    mesh.vertex.insert(mesh.vertex.end(), {a, b, c, d});
    for (const std::int32_t i : {0, 1, 2, 0, 2, 3})
        mesh.face.push_back(first + i);
}

/// A ribbon along the sections from..to through the points that `across` gives for each.
template <class Across>
void addRibbon(CMesh& mesh, int from, int to, Across&& across)
{
    const auto first = static_cast<std::int32_t>(mesh.vertex.size());
    std::int32_t width = 0;
    for (int i = from; i <= to; ++i) {
        const std::vector<Vector3d> row = across(i);
        width = static_cast<std::int32_t>(row.size());
        mesh.vertex.insert(mesh.vertex.end(), row.begin(), row.end());
    }
    for (std::int32_t row = 0; row < to - from; ++row) {
        for (std::int32_t k = 0; k + 1 < width; ++k) {
            const std::int32_t a = first + row * width + k;
            for (const std::int32_t i : {a, a + 1, a + width, a + 1, a + width + 1, a + width})
                mesh.face.push_back(i);
        }
    }
}

} // namespace

Course::Course() : line_(corners(), true)
{
    for (int i = 0; i < kSections; ++i) {
        const double u = static_cast<double>(i) / kSections;
        const Vector3d ahead = line_.tangentAt(u);
        const Vector3d level = normalise(Vector3d{ahead.x, 0.0, ahead.z});
        Vector3d middle = line_.pointAt(u);
        middle.y = roadHeight(middle.x, middle.z) + kRoadLift;
        sections_.push_back({middle, {-level.z, 0.0, level.x}, 0.0});
    }
    const double step = line_.length() / kSections;
    for (int i = 0; i < kSections; ++i) {
        const Vector3d turn = cross(sectionAt(i + kSections - 1).right, sectionAt(i + 1).right);
        sections_[static_cast<std::size_t>(i)].bend = turn.y / (2.0 * step);
    }
}

double Course::nearest(const Vector3d& place) const
{
    int best = 0;
    double least = 1e300;
    for (int i = 0; i < kSections; ++i) {
        const double away =
            std::hypot(place.x - sectionAt(i).middle.x, place.z - sectionAt(i).middle.z);
        if (away < least) {
            least = away;
            best = i;
        }
    }
    return static_cast<double>(best) / kSections;
}

double Course::heightAt(double x, double z) const
{
    const auto section = static_cast<int>(std::lround(nearest({x, 0.0, z}) * kSections));
    const Vector3d& middle = sectionAt(section).middle;
    const double away = std::hypot(x - middle.x, z - middle.z);
    // Under the road and its edge the terrain keeps below it, whatever its own cells make of the bends.
    constexpr double kSunk = 0.08; // [m]
    const double road = roadHeight(x, z) - kSunk * (1.0 - smoothStep(kRoadHalf + 0.4, kRoadHalf + 2.5, away));
    constexpr double kVerge = 5.0;  // beside the road the ground is as level as it [m]
    constexpr double kBlend = 26.0; // [m]
    const double wild = smoothStep(kVerge, kBlend, away);
    const double rim = 9.0 * smoothStep(0.75 * kTerrainHalf, 1.1 * kTerrainHalf, std::hypot(x, z));
    return road + (hills(x, z) + rim - road) * wild;
}

CMesh Course::terrain() const
{
    CMesh mesh;
    const int side = static_cast<int>(2 * kTerrainHalf / kCell);
    for (int row = 0; row <= side; ++row) {
        for (int column = 0; column <= side; ++column) {
            const double x = -kTerrainHalf - 40.0 + column * kCell;
            const double z = -kTerrainHalf + row * kCell;
            mesh.vertex.push_back({x, heightAt(x, z), z});
            if (row == side || column == side)
                continue;
            const std::int32_t a = row * (side + 1) + column;
            const std::int32_t c = a + side + 1;
            for (const std::int32_t i : {a, c, a + 1, a + 1, c, c + 1})
                mesh.face.push_back(i);
        }
    }
    return mesh;
}

CMesh Course::road() const
{
    CMesh mesh;
    addRibbon(mesh, 0, kSections, [&](int i) {
        const Section& s = sectionAt(i);
        constexpr double kSkirt = 0.35; // [m], so that no gap shows beside it
        const Vector3d down{0.0, -kSkirt, 0.0};
        return std::vector<Vector3d>{s.middle - s.right * (kRoadHalf + kSkirt) + down,
                                     s.middle - s.right * kRoadHalf, s.middle,
                                     s.middle + s.right * kRoadHalf,
                                     s.middle + s.right * (kRoadHalf + kSkirt) + down};
    });
    return mesh;
}

CMesh Course::kerbs() const
{
    CMesh mesh;
    constexpr double kTight = 1.0 / 90.0; // [1/m]
    for (const double side : {-1.0, 1.0}) {
        for (int i = 0; i < kSections; ++i) {
            if (std::abs(sectionAt(i).bend) < kTight)
                continue;
            addRibbon(mesh, i, i + 1, [&](int k) {
                const Section& s = sectionAt(k);
                const Vector3d inner = s.middle + s.right * (side * (kRoadHalf - kKerbWidth));
                const Vector3d outer = s.middle + s.right * (side * kRoadHalf);
                const Vector3d up{0.0, kKerbHeight, 0.0};
                std::vector<Vector3d> row{inner, inner + up, outer + up, outer - up * 3.0};
                if (side < 0)
                    std::reverse(row.begin(), row.end());
                return row;
            });
        }
    }
    return mesh;
}

CMesh Course::ramps() const
{
    CMesh mesh;
    struct Ramp
    {
        double u, length, height; ///< height at the far end [m]
    };
    const double loop = line_.length();
    constexpr double kHalf = 2.2;
    const Ramp both[] = {{46.0 / loop, 9.0, 0.9}, {66.0 / loop, -11.0, 0.9}};
    for (const Ramp& ramp : both) {
        const Matrix4 pose = poseAt(ramp.u);
        const double far = -std::abs(ramp.length);
        const double nearHeight = ramp.length > 0.0 ? 0.0 : ramp.height;
        const double farHeight = ramp.length > 0.0 ? ramp.height : 0.0;
        const auto at = [&](double x, double y, double z) {
            return transformPoint(pose, {x, y, z});
        };
        const Vector3d a = at(-kHalf, nearHeight, 0.0), b = at(kHalf, nearHeight, 0.0);
        const Vector3d c = at(kHalf, farHeight, far), d = at(-kHalf, farHeight, far);
        constexpr double kFoot = -0.3;
        const Vector3d e = at(-kHalf, kFoot, 0.0), f = at(kHalf, kFoot, 0.0);
        const Vector3d g = at(kHalf, kFoot, far), h = at(-kHalf, kFoot, far);
        addQuad(mesh, a, b, c, d);
        addQuad(mesh, b, f, g, c);
        addQuad(mesh, e, a, d, h);
        addQuad(mesh, d, c, g, h);
        addQuad(mesh, e, f, b, a);
    }
    return mesh;
}

CMesh Course::posts() const
{
    CMesh mesh;
    constexpr int kEvery = 12;
    constexpr double kHalf = 0.07, kTall = 0.9;
    for (int i = 0; i < kSections; i += kEvery) {
        for (const double side : {-1.0, 1.0}) {
            const Section& s = sectionAt(i);
            const Vector3d foot = s.middle + s.right * (side * (kRoadHalf + 1.2));
            const CMesh box = CMesh_Box(2 * kHalf, kTall, 2 * kHalf);
            const auto first = static_cast<std::int32_t>(mesh.vertex.size());
            for (const Vector3d& corner : box.vertex)
                mesh.vertex.push_back(corner + foot + Vector3d{0.0, kTall / 2 - 0.15, 0.0});
            for (const std::int32_t corner : box.face)
                mesh.face.push_back(first + corner);
        }
    }
    return mesh;
}

Matrix4 Course::poseAt(double u) const
{
    const auto i = static_cast<int>(std::lround((u - std::floor(u)) * kSections));
    const Section& s = sectionAt(i);
    const Vector3d ahead = normalise(sectionAt(i + 1).middle - sectionAt(i + kSections - 1).middle);
    Matrix4 pose;
    pose.setAxis(0, s.right);
    pose.setAxis(1, normalise(cross(s.right, ahead)));
    pose.setAxis(2, ahead * -1.0);
    setTranslation(pose, s.middle);
    return pose;
}

} // namespace tvw::rgs::demo
