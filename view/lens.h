/// What a picture is taken through: a pose that looks along its -Z, and an angle of view.
#pragma once

#include "adaptor/stage/stage_node.h"
#include "util/matrix4.h"

namespace tvw::rgs::view {

struct Lens
{
    Matrix4 world;            ///< of the eye; a scale in it is dropped
    double fovDegrees = 45.0; ///< measured as `angle` says
    stage::ViewAngle angle = stage::ViewAngle::Vertical;
};

/// Of the whole height [degrees]. aspect: width / height of the picture.
[[nodiscard]] double verticalFov(const Lens& lens, double aspect);

/// Into clip space (OpenGL's, z from -1 to 1). nearest, farthest: of the planes [m].
[[nodiscard]] Matrix4 perspective(double verticalDegrees, double aspect, double nearest,
                                  double farthest);

/// The lens of a camera node at a time [s].
[[nodiscard]] Lens lensOf(const stage::StageNode& camera, double time);

/// The direction in the world from the eye through a place in the picture; x and y from -1 (left,
/// bottom) to 1.
[[nodiscard]] Vector3d rayThrough(const Lens& lens, double aspect, double x, double y);

} // namespace tvw::rgs::view
