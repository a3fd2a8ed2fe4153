#include "plugins/common/follow_camera.h"

#include "util/filters.h"

namespace tvw::rgs {

namespace {

void step(QTransformd& state, const QTransformd& target, const FollowCameraSettings& settings,
          double dt)
{
    response(state.rotation, target.rotation, settings.rotationResponse, dt);
    response(state.translation, target.translation, settings.positionResponse, dt);
}

} // namespace

void FollowCamera::follow(const QTransformd& target, const FollowCameraSettings& settings,
                          double dt)
{
    step(first, target, settings, dt);
    step(second, first, settings, dt);
}

} // namespace tvw::rgs
