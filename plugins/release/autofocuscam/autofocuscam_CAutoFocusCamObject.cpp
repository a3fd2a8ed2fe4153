#include "plugins/release/autofocuscam/autofocuscam_CAutoFocusCamObject.h"

#include "plugins/common/lens.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::addon {

using namespace autofocuscam;

CAutoFocusCamObject::CAutoFocusCamObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "AutoFocusDataChunk")
{
    StateStore& saved = state();
    int number = 0;
    for (ActuatorChannel* const channel : {&focus_, &zoom_})
        channel->keepIn(saved, number++);
    saved.stored("cDILpcInputbIsTrinaryStateValue0", settings.focus.keepState);
    saved.stored("cDILpcInputbIsIntegratedValue0", settings.focus.integrate);
    saved.stored("cDILpcInputbIsTrinaryStateValue1", settings.zoom.keepState);
    saved.stored("cDILpcInputbIsIntegratedValue1", settings.zoom.integrate);
    saved.stored("cCameraNode.maxFOV", settings.maxFOV);
    saved.stored("cCameraNode.minFOV", settings.minFOV);
    saved.stored("cCameraNode.integrationSpeedExponent", settings.integrationSpeedExponent);
    saved.stored("cCameraNode.bUseSpherical", settings.bUseSpherical);
    fovLine_ = &saved.nearest("cCameraNode.currentFov", fov_);
    saved.nearest("cCameraNode.prevFov", prevFov_);
    saved.nearest("ancAutoFocusCamSeededExponent", seededExponent_);
    saved.latest("ancAutoFocusCamSeededIntegral", seededIntegral_);
}

bool CAutoFocusCamObject::nodesCreated()
{
    applyHiding(NodeGroup::First, settings.hideCamera);
    return withLens(runtime(), node(kCamera), runtime().getTime(),
                    [&](CSnapshot_Lens& lens) { lens.setFieldOfView(settings.currentFov); });
}

/// A take goes on while the lens is as it left it.
bool CAutoFocusCamObject::startsAnew(double time)
{
    constexpr double kTolerance = 1e-9; // [degrees]
    const auto records = fovLine_->curve().records();
    const double dt = stepLength();
    anew_ = records.empty() || records.back().time < time - dt / 2 ||
            records.front().time > time + dt / 2 ||
            std::abs(fieldOfView(time) - fovLine_->curve().get(time)) > kTolerance;
    return anew_;
}

void CAutoFocusCamObject::runStarts(double time)
{
    if (anew_) {
        fov_ = prevFov_ = fieldOfView(time);
        seedZoom();
    }
    placeFocalPoint(time);
    writeLens(time);
    if (node(kCamera).exists()) // its pose is the user's, its lens is ours
        node(kCamera).handle()->call(code::cutLens, &time);
}

double CAutoFocusCamObject::fieldOfView(double time) const
{
    double degrees = fov_;
    withLens(runtime(), node(kCamera), time,
             [&](CSnapshot_Lens& lens) { degrees = lens.getFieldOfView(); });
    return degrees;
}

/// The power law needs an exponent that its inverse survives; the item's step is 0.01.
double CAutoFocusCamObject::exponent() const
{
    constexpr double kLeast = 0.01;
    return std::max(settings.integrationSpeedExponent, kLeast);
}

/// The zoom's channel rests where the lens is now.
void CAutoFocusCamObject::seedZoom()
{
    seededExponent_ = exponent();
    seededIntegral_ = settings.zoom.integrate;
    const double range = settings.maxFOV - settings.minFOV;
    if (seededIntegral_)
        zoom_.settle(std::pow(fov_, 1.0 / exponent()));
    else
        zoom_.settle(range != 0.0 ? std::clamp((settings.maxFOV - fov_) / range, 0.0, 1.0) : 0.0);
}

void CAutoFocusCamObject::step(double time)
{
    const double dt = stepLength();
    focus_.raw = input(kFocus).value();
    zoom_.raw = input(kZoom).value();
    slideFocus(dt);
    turnZoom(dt);
    placeFocalPoint(time);
    writeLens(time);
}

void CAutoFocusCamObject::slideFocus(double dt)
{
    const ActuatorSettings& s = settings.focus;
    const double rate = focus_.limited(focus_.latched(s.keepState), s.changeLimit, dt);
    focus_.smooth(focus_.summed(rate, s.integrate, dt), s.responseFactor, dt);
}

/// Forward zooms in. Integrated, the angle is a power of the sum, which is stopped at the limits;
/// direct, the deflection is the place between them.
void CAutoFocusCamObject::turnZoom(double dt)
{
    const ActuatorSettings& s = settings.zoom;
    if (seededExponent_ != exponent() || seededIntegral_ != s.integrate)
        seedZoom();
    prevFov_ = fov_;
    const double forward = zoom_.latched(s.keepState);
    const double e = exponent();
    if (s.integrate) {
        const double wanted = std::max(zoom_.integral() - forward * s.changeLimit * dt, 0.0);
        const double angle =
            std::max(std::min(std::pow(wanted, e), settings.maxFOV), settings.minFOV);
        const bool inside = angle == std::pow(wanted, e);
        zoom_.setIntegral(inside ? wanted : std::pow(angle, 1.0 / e));
        zoom_.smooth(zoom_.integral(), s.responseFactor, dt);
        fov_ = std::pow(zoom_.output(), e);
    } else {
        const double share = zoom_.limited(std::clamp(forward, 0.0, 1.0), s.changeLimit, dt);
        zoom_.smooth(zoom_.summed(share, false, dt), s.responseFactor, dt);
        fov_ = (1.0 - zoom_.output()) * settings.maxFOV + zoom_.output() * settings.minFOV;
    }
}

void CAutoFocusCamObject::placeFocalPoint(double time)
{
    if (!node(kFocalTarget1).exists() || !node(kFocalTarget2).exists())
        return;
    const double k = focus_.output();
    const Vector3d first = translationOf(node(kFocalTarget1).global(time));
    const Vector3d second = translationOf(node(kFocalTarget2).global(time));
    Matrix4 pose = node(kCurrFocalPoint).global(time);
    setTranslation(pose, first * (1.0 - k) + second * k);
    node(kCurrFocalPoint).setGlobal(time, pose);
}

double CAutoFocusCamObject::focalDistance(double time) const
{
    const Matrix4 camera = node(kCamera).global(time);
    const Vector3d way = translationOf(node(kCurrFocalPoint).global(time)) - translationOf(camera);
    if (settings.bUseSpherical)
        return length(way);
    return std::max(-dot(normalise(camera.axis(2)), way), 0.0);
}

void CAutoFocusCamObject::writeLens(double time)
{
    withLens(runtime(), node(kCamera), time, [&](CSnapshot_Lens& lens) {
        if (node(kCurrFocalPoint).exists())
            lens.setTargetDistance(focalDistance(time));
        lens.setFieldOfView(fov_);
    });
    settings.currentFov = fov_;
}

void CAutoFocusCamObject::timeMoved(double time)
{
    if (!running())
        settings.currentFov = fieldOfView(time);
}

void CAutoFocusCamObject::itemActed(std::string_view label)
{
    if (label == kCurrentFov && !running())
        withLens(runtime(), node(kCamera), runtime().getTime(),
                 [&](CSnapshot_Lens& lens) { lens.setFieldOfView(settings.currentFov); });
}

} // namespace tvw::rgs::addon
