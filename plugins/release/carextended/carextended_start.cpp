/// The life of a run: from the rig in the scene to a car that stands or drives on.
#include "plugins/release/carextended/carextended_CCarCamObject.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace carextended;

namespace {

constexpr std::int32_t kWarning = 48; // message box with Ok and a warning sign

Matrix4 placeOf(const Quatd& rotation, const Vector3d& position)
{
    return toMatrix(QTransformd{position, rotation});
}

} // namespace

bool CCarCamObject::nodesCreated()
{
    constexpr double kFieldOfView = 45.0; // [degrees]
    for (const NodeIndex camera : {kTopViewCam, kDriverCam, kFollowCam}) {
        if (CSnapshot_Lens* const lens =
                runtime().getLensSnapshot(node(camera).handle(), runtime().getTime())) {
            lens->setFieldOfView(kFieldOfView);
            runtime().releaseLensSnapshot(lens);
        }
    }
    applyHiding(NodeGroup::First, settings.hideFollowCam);
    applyHiding(NodeGroup::Second, settings.hideDriverCam);
    applyHiding(NodeGroup::Third, settings.hideTopViewCam);
    steeringWheelInit_ = node(kSteeringWheelMesh).local(runtime().getTime());
    return true;
}

bool CCarCamObject::startsAnew(double time)
{
    if (dStartTime_ >= time) {
        dStartTime_ = time;
        reInitialise_ = true;
    }
    if (memoryCurve_->curve().empty())
        reInitialise_ = true;
    return reInitialise_;
}

void CCarCamObject::runStarts(double time)
{
    readInputs();
    readGravity(time);
    if (reInitialise_) {
        readScales(time);
        readRig(time);
        cCarCam_.seed(settings.car.iRandomSeedAdder);
        startMoving(time);
        followCam_.place(followTarget());
    }
    if (settings.car.bAutonomousMode)
        warnOfTarget();
    startGround(time);
    showLimits();
}

void CCarCamObject::readScales(double time)
{
    scales_.turnBase = scaleOf(node(kTurnBaseMesh).global(time));
    for (std::size_t i = 0; i < kWheels; ++i) {
        scales_.centre[i] = scaleOf(node(wheelRow(kWheelCenterMesh, i)).global(time));
        scales_.suspension[i] = scaleOf(node(wheelRow(kWheelCenterSuspensionMesh, i)).global(time));
    }
}

/// The body's pose without its scale, and its length; the scale becomes uniform.
double CCarCamObject::uniformBody(double time, Matrix4& body)
{
    constexpr double kTolerance = 0.001;
    const Matrix4 pose = node(kCarBodyMesh).global(time);
    const Vector3d scale = scaleOf(pose);
    const bool uneven = std::abs(scale.x / scale.y - 1) > kTolerance ||
                        std::abs(scale.x / scale.z - 1) > kTolerance;
    if (uneven)
        runtime().messageBox(
            "Nonuniform scaling is not allowed on the body since it would affect children.\n"
            "The 4-wheeler body will now rescale to become uniform.\n"
            "When scaling only the length of the dummy is of importance.\n"
            "Modify the shape by editing the mesh.",
            "Warning", kWarning);
    body = orthonormalise(pose);
    const double length = scale.z > 0.0 ? scale.z : CarRig{}.dCarLength;
    node(kCarBodyMesh).setGlobal(time, scaled(body, {length, length, length}));
    return length;
}

std::array<WheelPlace, CCarCamObject::kWheels> CCarCamObject::readWheels(double time,
                                                                         const Matrix4& body)
{
    CarRig& rig = settings.car.rig;
    const Matrix4 intoBody = inverse(body);
    std::array<WheelPlace, kWheels> places;
    bool moved = false;
    for (std::size_t i = 0; i < kWheels; ++i) {
        const Matrix4 relocator = node(wheelRow(kWheelRelocatorMesh, i)).global(time);
        const Vector3d position = translationOf(relocator);
        const Vector3d local = transformPoint(intoBody, position);
        const Vector3d scale = scaleOf(relocator);
        rig.dWheelZ[i] = local.z;
        rig.dWheelX[i] = local.x;
        rig.dWheelRadiusRel[i] = scale.y;
        rig.dWheelWidth[i] = scale.x;
        const Vector3d centre = translationOf(node(wheelRow(kWheelCenterMesh, i)).global(time));
        moved |= length(centre - position) > 0.01 * rig.dCarLength;
        places[i] = {position, body.axis(1)};
    }
    if (moved && !settings.bMoveWheelCenterNodeToGroundHitPoint)
        runtime().messageBox(
            "In the rigging process the wheels should be moved and scaled with the "
            "WheelRelocatorMesh:es.\n"
            "Use the WheelCenterMesh:es for suspension and particles.",
            "Warning", kWarning);
    return places;
}

void CCarCamObject::readRig(double time)
{
    Matrix4 body;
    CarRig& rig = settings.car.rig;
    rig.dCarHeight = rig.dCarWidth = rig.dCarLength = uniformBody(time, body);
    const std::array<WheelPlace, kWheels> places = readWheels(time, body);
    steeringWheelInit_ = node(kSteeringWheelMesh).local(time);
    cCarCam_.prepare(translationOf(body), places);
    cCarCam_.prepareWheels(stepLength());
    for (std::size_t i = 0; i < kWheels; ++i) {
        const Vector3d& centre = places[i].centre;
        const double radius = settings.car.radius(i);
        const Quatd& attitude = cCarCam_.m.qBodyRot;
        node(wheelRow(kWheelMesh, i))
            .setGlobal(time, scaled(placeOf(cCarCam_.wheelRotation(i), centre),
                                    {rig.dWheelWidth[i], radius, radius}));
        node(wheelRow(kWheelCenterMesh, i))
            .setGlobal(time, scaled(placeOf(attitude, centre), scales_.centre[i]));
        node(wheelRow(kWheelCenterSuspensionMesh, i))
            .setGlobal(time, scaled(placeOf(attitude, centre), scales_.suspension[i]));
    }
}

/// Of the body's own animation along its forward axis [body lengths/s].
double CCarCamObject::keyedVelocity(double time) const
{
    const double dt = stepLength();
    const Matrix4 now = node(kCarBodyMesh).global(time);
    const Matrix4 before = node(kCarBodyMesh).global(time - dt);
    const Vector3d moved = translationOf(now) - translationOf(before);
    return -dot(moved, normalise(now.axis(2))) / dt / settings.car.rig.dCarLength;
}

/// A pressed pedal wins over keys, keys win over the percentage.
void CCarCamObject::startMoving(double time)
{
    constexpr double kNoticeable = 0.01;
    const InputChannel& gas = settings.car.pcInput[GAS_PEDAL];
    const double keyed = keyedVelocity(time);
    double value = settings.dInitialVelocity / 100.0 * gas.dMaximum;
    if (std::abs(gas.dInput) > kNoticeable)
        value = gas.dInput * gas.dMaximum;
    else if (std::abs(keyed) > kNoticeable)
        value = keyed;
    cCarCam_.startMoving(value, stepLength());
}

void CCarCamObject::startGround(double time)
{
    groundSettings_.useStaticMesh = settings.bUseStaticMesh;
    groundSettings_.storeMeshData = settings.bStoreGroundMeshData;
    const GroundSensor::Problem problem =
        ground_.beginRun(runtime(), node(kGravityDirectionMesh).handle(), groundSettings_, time,
                         settings.car.rig.dCarLength, node(kCarBodyMesh).handle());
    if (problem == GroundSensor::Problem::NoWorld) {
        runtime().messageBox("Physics World not created", "Error", kWarning);
    } else if (problem == GroundSensor::Problem::UnsupportedSurface) {
        runtime().messageBox(
            "Support for this kind of surface has not yet been implemented for FAST RAYCAST for "
            "this adaptor. Fast raycast is therefore cancelled.",
            "UNSUPPORTED SURFACE TYPE", kWarning);
        settings.car.wheels.iRayMultiplier = 1;
        runtime().updateConfiguration();
    }
}

bool CCarCamObject::targetHangsOnBody()
{
    CNode* const body = node(kCarBodyMesh).handle();
    if (!node(kTargetMesh).exists())
        return false;
    CNode* const target = node(kTargetMesh).handle();
    CNode* above = target->getParent();
    bool hangs = false;
    while (above && !hangs) {
        hangs = above->call(code::isSameNode, body) != 0;
        CNode* const next = above->getParent();
        target->release(above);
        above = next;
    }
    target->release(above);
    return hangs;
}

void CCarCamObject::warnOfTarget()
{
    if (targetHangsOnBody())
        runtime().messageBox("The TargetMesh is parented to the CarBodyMesh.\n"
                             "This will mess up the autonomous mode making the car spin.",
                             "Warning", kWarning);
}

void CCarCamObject::runEnds()
{
    ground_.endRun();
}

} // namespace tvw::rgs::addon
