/// A smooth curve through points, asked by fraction of its arc length.
///
/// Between two points it is a cubic of the centripetal Catmull-Rom family (Yuksel, Schaefer,
/// Keyser, "Parameterization and Applications of Catmull-Rom Curves", 2011): it passes through
/// every point, and makes no loop or cusp within a segment whatever the spacing. An open curve's
/// ends are extended straight. A point that repeats its predecessor is passed over.
#pragma once

#include "util/vector3.h"

#include <vector>

namespace tvw::rgs::stage {

class SplineCurve
{
public:
    SplineCurve() = default;

    /// points: in the node's space; one that is no number is left out. closed: runs on from the
    /// last point to the first.
    explicit SplineCurve(std::vector<Vector3d> points, bool closed = false);

    [[nodiscard]] const std::vector<Vector3d>& points() const noexcept { return points_; }
    [[nodiscard]] bool closed() const noexcept { return closed_; }
    [[nodiscard]] double length() const noexcept { return ends_.empty() ? 0.0 : ends_.back(); }

    /// u: fraction of the length. An open curve holds it to 0 .. 1, a closed one takes it round.
    /// With one point that point, without any the origin.
    [[nodiscard]] Vector3d pointAt(double u) const noexcept;

    /// The unit direction of a forward difference over 1e-5 of the length that ends at or before 1.
    [[nodiscard]] Vector3d tangentAt(double u) const noexcept;

private:
    /// ((c3 t + c2) t + c1) t + c0, t from 0 to 1.
    struct Segment
    {
        Vector3d c0, c1, c2, c3;
        [[nodiscard]] Vector3d at(double t) const noexcept;
        [[nodiscard]] double speed(double t) const noexcept;
        [[nodiscard]] double lengthBetween(double t0, double t1) const noexcept;
    };

    static constexpr int kPieces = 16; ///< of a segment, each measured on its own

    [[nodiscard]] static Segment segmentThrough(const Vector3d& p0, const Vector3d& p1,
                                                const Vector3d& p2, const Vector3d& p3);
    void measure();

    std::vector<Vector3d> points_;
    std::vector<Segment> segments_;
    std::vector<double> ends_; ///< arc length at the end of each piece, kPieces for each segment
    bool closed_ = false;
};

} // namespace tvw::rgs::stage
