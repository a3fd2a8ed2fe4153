/// A node's pose apart: position, orientation and scale, and together again.
#pragma once

#include "plugins/common/pose.h"

namespace tvw::rgs {

struct PoseParts
{
    QTransformd transform;
    Vector3d scale{1, 1, 1}; ///< x is negative where the pose mirrors
};

inline PoseParts splitPose(Matrix4 pose)
{
    Vector3d scale = keptScale(pose);
    if (dot(cross(pose.axis(0), pose.axis(1)), pose.axis(2)) < 0.0) {
        pose.setAxis(0, -pose.axis(0)); // a quaternion can't hold the mirror image
        scale.x = -scale.x;
    }
    return {toTransform(pose), scale};
}

inline Matrix4 joinPose(const PoseParts& parts)
{
    return scaled(toMatrix(parts.transform), parts.scale);
}

} // namespace tvw::rgs
