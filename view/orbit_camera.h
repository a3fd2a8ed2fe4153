/// The eye that a user turns round what he looks at.
#pragma once

#include "view/lens.h"

namespace tvw::rgs::view {

/// A box along the world's axes; empty while `low` is above `high`.
struct Box
{
    Vector3d low{1e300, 1e300, 1e300};
    Vector3d high{-1e300, -1e300, -1e300};

    [[nodiscard]] bool isEmpty() const { return low.x > high.x; }
    void add(const Vector3d& point);
};

/// The box of a node's shape at a time, of its place alone when it has none.
void addNode(Box& box, const stage::StageNode& node, double time);

class OrbitCamera
{
public:
    [[nodiscard]] Lens lens() const;

    /// By fractions of the view's height: a drag over all of it turns by 180 degrees.
    void orbit(double right, double up);
    void pan(double right, double up);
    void zoom(double steps);    ///< of a wheel; positive comes nearer
    void frame(const Box& box); ///< all of it in view, from the present direction
    void follow(const Vector3d& moved) { target_ += moved; }

    /// Takes over what a lens sees, to go on from there by hand; the target lies `distance` [m]
    /// ahead.
    void takeOver(const Lens& lens, double distance);

    [[nodiscard]] const Vector3d& target() const { return target_; }
    [[nodiscard]] double distance() const { return distance_; }

private:
    Vector3d target_{0.0, 0.5, 0.0};
    double distance_ = 12.0;             ///< [m]
    double heading_ = 0.6;               ///< [rad], 0 looks along -Z, positive stands to the right
    double elevation_ = 0.35;            ///< [rad], above the target
    static constexpr double kFov = 40.0; ///< [degrees], of the height
};

} // namespace tvw::rgs::view
