/// The scene that the studio opens with, and a driver for those who only watch.
#pragma once

#include "adaptor/stage/session.h"
#include "demo/course.h"

namespace tvw::rgs::demo {

/// Fills an empty session: the course, a car on it whose ground it is, the follow camera ready. The
/// reason when a tool can't be made.
Status build(stage::Session& session);

inline constexpr const char* kCar = "Car";
inline constexpr double kTakeSeconds = 24.0;

/// Records a take in which a script drives the car along the course: over the jump, through the
/// bends and the hills. The scene is that of `build`.
Status driveAlong(stage::Session& session, const stage::Progress& progress = {});

} // namespace tvw::rgs::demo
