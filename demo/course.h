/// A road through hills, with kerbs and a jump: the ground of the demo scene.
#pragma once

#include "adaptor/stage/spline_curve.h"
#include "util/mesh.h"

#include <vector>

namespace tvw::rgs::demo {

/// Metres, +Y up. The road is a closed loop that is driven anticlockwise as seen from above.
class Course
{
public:
    Course();

    [[nodiscard]] CMesh terrain() const;
    [[nodiscard]] CMesh road() const;
    [[nodiscard]] CMesh kerbs() const; ///< 0.1 m high, along the bends
    [[nodiscard]] CMesh ramps() const; ///< a jump and its landing, on the straight
    [[nodiscard]] CMesh posts() const; ///< small boxes beside the road that show speed

    /// A pose on the road, a share u of the loop from its start: -Z along it, +Y up.
    [[nodiscard]] Matrix4 poseAt(double u) const;
    [[nodiscard]] double length() const { return line_.length(); }

    /// Where on the loop a place is nearest to its middle, 0 to 1.
    [[nodiscard]] double nearest(const Vector3d& place) const;

private:
    struct Section
    {
        Vector3d middle; ///< on the road's surface
        Vector3d right;  ///< level, of unit length
        double bend;     ///< of the line, 1 / radius [1/m]
    };

    [[nodiscard]] const Section& sectionAt(int i) const
    {
        return sections_[static_cast<std::size_t>(i) % sections_.size()];
    }
    [[nodiscard]] double heightAt(double x, double z) const; ///< of the terrain

    stage::SplineCurve line_;
    std::vector<Section> sections_; ///< evenly along the loop
};

} // namespace tvw::rgs::demo
