/// What the four-wheeler shows: gauges and outputs, and what its items do.
#include "plugins/release/carextended/carextended_CCarCamObject.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace carextended;

namespace {

enum Output : std::size_t { kVelocity, kPercent, kSteeringAngle, kFirstInTheAir };

constexpr std::int32_t kCritical = 32; // message box with Ok and an error sign

} // namespace

/// gas: [body lengths/s]. A car that stands shows 0.
void CCarCamObject::showVelocity(double gas)
{
    constexpr double kLeastVelocity = 0.0001; // body lengths/s
    constexpr double kLeastPercent = 0.01;
    const double maximum = settings.car.pcInput[GAS_PEDAL].dMaximum;
    settings.currentVelocity =
        std::abs(gas) < kLeastVelocity
            ? 0.0
            : settings.car.rig.dCarLength * settings.dVelocityConversionMult * gas;
    const double percent = maximum != 0.0 ? 100.0 * gas / maximum : 0.0;
    settings.currentPercent = std::abs(percent) < kLeastPercent ? 0.0 : percent;
}

void CCarCamObject::showLimits()
{
    const double length = settings.car.rig.dCarLength;
    const double unit = settings.dVelocityConversionMult * length;
    const double rate = unit * settings.car.dGasPedalMaxRateOfChange;
    settings.maximumVelocity = unit * settings.car.pcInput[GAS_PEDAL].dMaximum;
    settings.secondsTo100 = 100.0 / rate;
    settings.secondsTo60 = 60.0 / rate;
}

void CCarCamObject::timeMoved(double time)
{
    if (!running())
        showVelocity(gasCurve_->curve().get(time));
}

double CCarCamObject::outputValue(std::size_t index)
{
    switch (index) {
    case kVelocity:
        return settings.currentVelocity;
    case kPercent:
        return settings.currentPercent / 100.0;
    case kSteeringAngle:
        return cCarCam_.steerAngle();
    default:
        return cCarCam_.wheelInTheAir(index - kFirstInTheAir) ? 1.0 : 0.0;
    }
}

void CCarCamObject::itemActed(std::string_view label)
{
    if (label == kReInitialize) {
        reInitialise_ = true;
        settings.dInitialVelocity = settings.currentVelocity = settings.currentPercent = 0.0;
    } else if (label == kMultiplier || label == kAcceleration || label == kGasMaximum) {
        showLimits();
    } else if (label == kTurnBase) {
        moveTurnBase();
    } else if (label == kFastRayCast) {
        changeFastRayCast();
    } else if (label == kStoreGround) {
        changeStoredGround();
    }
    runtime().updateConfiguration();
}

void CCarCamObject::moveTurnBase()
{
    if (running())
        return; // the tick places it
    const double time = runtime().getTime();
    const Matrix4 body = orthonormalise(node(kCarBodyMesh).global(time));
    const CarRig& rig = settings.car.rig;
    Matrix4 pose = scaled(body, scaleOf(node(kTurnBaseMesh).global(time)));
    setTranslation(pose, transformPoint(body, {0, -rig.dBodyHeight, cCarCam_.turnBaseZ()}));
    node(kTurnBaseMesh).setGlobal(time, pose);
    runtime().redrawViews();
}

/// The copy of the ground, and the boxes that stand for it. turned: the one that the user has just
/// turned.
void CCarCamObject::pushStoredGround(bool& turned)
{
    turned = !turned;
    for (bool* const box : {&settings.bUseStaticMesh, &settings.bStoreGroundMeshData})
        runtime().pushUndo(new CVariableModUndo<bool>(box));
    turned = !turned;
    runtime().pushUndo(new CVariableModUndo<GroundSettings>(&groundSettings_));
}

void CCarCamObject::dropStoredGround()
{
    settings.bStoreGroundMeshData = false;
    groundSettings_.storedMesh = CMesh();
    groundSettings_.storedMatrix = Matrix4();
}

void CCarCamObject::changeFastRayCast()
{
    if (settings.bUseStaticMesh || !settings.bStoreGroundMeshData)
        return;
    pushStoredGround(settings.bUseStaticMesh);
    dropStoredGround();
}

void CCarCamObject::changeStoredGround()
{
    pushStoredGround(settings.bStoreGroundMeshData);
    if (!settings.bStoreGroundMeshData) {
        dropStoredGround();
        return;
    }
    groundSettings_.storeMeshData = true;
    const std::string problem = GroundSensor::storeMesh(
        runtime(), node(kGravityDirectionMesh).handle(), runtime().getTime(), groundSettings_);
    settings.bStoreGroundMeshData = groundSettings_.storeMeshData;
    if (!problem.empty())
        runtime().messageBox(problem, "Error", kCritical);
}

} // namespace tvw::rgs::addon
