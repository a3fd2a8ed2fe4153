#include "plugins/common/flying_camera.h"

namespace tvw::rgs {

Matrix4 besideCamera(const Quatd& camera, double scale)
{
    constexpr double kEyes = 1.63;  // above the feet [m]
    constexpr double kBeside = 0.8; // out of the picture [m]
    const Quatd heading = yawOnly(camera);
    const Vector3d feet = rotate(heading, {kBeside, -kEyes, 0.0}) * scale;
    const Quatd back = conjugate(camera);
    return scaled(toMatrix(QTransformd{rotate(back, feet), heading * back}), {scale, scale, scale});
}

} // namespace tvw::rgs
