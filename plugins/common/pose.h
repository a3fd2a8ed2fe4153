/// Poses of nodes as models keep them: scale and mirror image apart, to be put back.
#pragma once

#include "util/avar.h"
#include "util/transform.h"

#include <cmath>

namespace tvw::rgs {

/// The scale of a pose; a length of 1 but for rounding is 1, so that reading what was written gives
/// the same bits.
inline Vector3d keptScale(const Matrix4& pose)
{
    Vector3d scale = scaleOf(pose);
    for (int i = 0; i < 3; ++i) {
        if (std::abs(scale[i] - 1.0) < 1e-9)
            scale[i] = 1.0;
    }
    return scale;
}

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

/// Whether a node stands where a model left it, rounding aside.
inline bool standsAt(const Matrix4& node, const QTransformd& pose)
{
    constexpr double kTolerance = 1e-9;
    const QTransformd now = splitPose(node).transform;
    const double apart = length(now.translation - pose.translation);
    return apart <= kTolerance * (1.0 + length(pose.translation)) &&
           1.0 - std::abs(dot(now.rotation, pose.rotation)) < kTolerance;
}

/// Whether a take that was recorded into `line` goes on at a time [s]: it was recorded there, and
/// the node still stands where it left it.
inline bool continuesAt(const AVar<QTransformd>& line, const Matrix4& node, double time, double dt)
{
    const auto records = line.records();
    return !records.empty() && records.back().time > time - dt / 2 &&
           records.front().time < time + dt / 2 && standsAt(node, line.get(time));
}

} // namespace tvw::rgs
