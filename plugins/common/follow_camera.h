/// A camera that is carried along on a soft line: two filters in cascade on rotation and on
/// position.
#pragma once

#include "util/transform.h"

namespace tvw::rgs {

/// Shares of the way per 0.04 s.
struct FollowCameraSettings
{
    double rotationResponse = 0.7;
    double positionResponse = 0.6;
};

struct FollowCamera
{
    QTransformd first;  ///< after the first filter
    QTransformd second; ///< after both: where the camera is

    /// There at once.
    void place(const QTransformd& target) { first = second = target; }

    /// dt: step [s].
    void follow(const QTransformd& target, const FollowCameraSettings& settings, double dt);
};

} // namespace tvw::rgs
