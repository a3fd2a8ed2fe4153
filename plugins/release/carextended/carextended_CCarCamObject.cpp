#include "plugins/release/carextended/carextended_CCarCamObject.h"

#include "plugins/common/spin_keys.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace carextended;

namespace {

constexpr auto kInputs = inputRows(kChannelDefaults);

constexpr OutputRow kOutputs[] = {
    {"Velocity"},
    {"Velocity (Percent of Max)"},
    {"Steering Angle"},
    {"WheelMesh_FL in the air"},
    {"WheelMesh_FR in the air"},
    {"WheelMesh_BL in the air"},
    {"WheelMesh_BR in the air"},
};

const ToolSpec& spec()
{
    static const ToolSpec kSpec{
        .nodes = nodeRows(), .inputs = kInputs, .outputs = kOutputs, .switches = kSwitches};
    return kSpec;
}

Matrix4 poseOf(const Quatd& rotation, const Vector3d& position, const Vector3d& scale)
{
    return scaled(toMatrix(QTransformd{position, rotation}), scale);
}

/// The short way from a to b, share 0 to 1.
Quatd between(const Quatd& a, const Quatd& b, double share)
{
    const double near = dot(a, b) < 0.0 ? -1.0 : 1.0;
    const double left = 1.0 - share;
    const double right = share * near;
    return normalise(Quatd{a.x * left + b.x * right, a.y * left + b.y * right,
                           a.z * left + b.z * right, a.w * left + b.w * right});
}

} // namespace

CCarCamObject::CCarCamObject(const CreateParam& param)
    : Tool(param, spec(), items(), "CarCamDataChunk")
{
    registerFlags();
    registerBody();
    registerWheels();
    registerDriving();
    registerFollowing();
    registerModes();
    registerSkidBrake();
    registerGround();
    registerRest();
}

void CCarCamObject::step(double time)
{
    const double dt = stepLength();
    const Quatd bodyBefore = cCarCam_.m.qBodyRot;
    readInputs();
    if (settings.car.bAutonomousMode)
        cCarCam_.followTarget(translationOf(node(kTargetMesh).global(time - dt)), dt);
    readGravity(time);
    readForce(time);
    cCarCam_.update(dt);
    writeBody(time);
    followGround(time);
    cCarCam_.updateWheelRotation();
    writeWheels(time, bodyBefore);
    cCarCam_.alignToWheels(dt);
    writeTurnBase(time);
    writeSteeringWheel(time);
    writeBase(time);
    if (!settings.bKeyframeOnlyEssential)
        writeFollowCam(time);
    showVelocity(settings.car.pcInput[GAS_PEDAL].dValue);
    reInitialise_ = false;
}

void CCarCamObject::readInputs()
{
    for (std::size_t i = 0; i < kChannels; ++i)
        settings.car.pcInput[i].dInput = input(i).value();
}

void CCarCamObject::readGravity(double time)
{
    const Matrix4 gravity = node(kGravityDirectionMesh).global(time - stepLength());
    cCarCam_.scene.vGravityDir = -normalise(gravity.axis(1));
}

/// Direction and point of the force as the body sees them.
void CCarCamObject::readForce(double time)
{
    const InputChannel& channel = settings.car.pcInput[EXTERNAL_FORCE];
    if (channel.dInput == 0.0 && channel.dValue == 0.0 && settings.car.dForceOffset == 0.0)
        return;
    const Matrix4 force = node(kExternalForceMesh).global(time - stepLength());
    const Quatd intoBody = conjugate(cCarCam_.m.qBodyRot);
    cCarCam_.scene.force = {rotate(intoBody, normalise(force.axis(2))),
                            rotate(intoBody, translationOf(force) - cCarCam_.m.vBodyPos)};
}

void CCarCamObject::writeBody(double time)
{
    const double length = settings.car.rig.dCarLength;
    const Vector3d position = cCarCam_.guardBody();
    node(kCarBodyMesh)
        .setGlobal(time, poseOf(cCarCam_.m.qBodyRot, position, {length, length, length}));
}

void CCarCamObject::followGround(double time)
{
    ground_.beginTick(time);
    for (std::size_t i = 0; i < kWheels; ++i) {
        const Matrix4 relocator =
            orthonormalise(node(wheelRow(kWheelRelocatorMesh, i)).global(time));
        cCarCam_.followGround(i, relocator.axis(0), relocator.axis(1), relocator.axis(2), ground_,
                              stepLength());
    }
    ground_.endTick();
}

void CCarCamObject::writeWheels(double time, const Quatd& bodyBefore)
{
    for (std::size_t i = 0; i < kWheels; ++i) {
        const double radius = settings.car.radius(i);
        node(wheelRow(kWheelMesh, i))
            .setGlobal(time, poseOf(cCarCam_.wheelRotation(i), cCarCam_.wheelCentre(i),
                                    {settings.car.rig.dWheelWidth[i], radius, radius}));
        writeSpinKeys(i, time, bodyBefore);
        if (!settings.bKeyframeOnlyEssential)
            writeCentres(i, time);
    }
}

void CCarCamObject::writeSpinKeys(std::size_t i, double time, const Quatd& bodyBefore)
{
    const CarWheel& wheel = cCarCam_.m.wheel[i];
    SceneNode& mesh = node(wheelRow(kWheelMesh, i));
    const double start = wrapTurn(wheel.pfTotalPitch - wheel.dPitchIncr);
    forSpinKeys(start, wheel.dPitchIncr, [&](double spin, double left) {
        const double moment = time - stepLength() * left;
        const double yaw = wheel.dYaw - (wheel.dYaw - wheel.dYawPrev) * left;
        const Quatd body = between(cCarCam_.m.qBodyRot, bodyBefore, left);
        const Matrix4 pose = mesh.global(moment);
        mesh.setGlobal(moment, poseOf(cCarCam_.wheelRotation(i, spin, yaw, body),
                                      translationOf(pose), scaleOf(pose)));
    });
}

/// The centre turns with the steering, the suspension centre only moves up and down.
void CCarCamObject::writeCentres(std::size_t i, double time)
{
    const Matrix4 relocator = orthonormalise(node(wheelRow(kWheelRelocatorMesh, i)).global(time));
    const Vector3d centre = cCarCam_.wheelCentre(i);
    Matrix4 suspension = relocator;
    setTranslation(suspension, centre);
    node(wheelRow(kWheelCenterSuspensionMesh, i))
        .setGlobal(time, scaled(suspension, scales_.suspension[i]));

    const double yaw = cCarCam_.m.wheel[i].dYaw;
    const WheelContact& contact = cCarCam_.unit[i].contact;
    Matrix4 pose = relocator;
    if (!settings.bFixateWheelBottomNodes)
        pose = relocator * toMatrix(Quatd{0, std::sin(yaw / 2), 0, std::cos(yaw / 2)});
    if (settings.bAlignWheelCenterToGroundNormal) {
        const Vector3d up = contact.normal;
        const Vector3d right = normalise(cross(up, pose.axis(2)));
        pose.setAxis(0, right);
        pose.setAxis(1, up);
        pose.setAxis(2, cross(right, up));
    }
    setTranslation(pose, settings.bMoveWheelCenterNodeToGroundHitPoint ? contact.hit : centre);
    node(wheelRow(kWheelCenterMesh, i)).setGlobal(time, scaled(pose, scales_.centre[i]));
}

QTransformd CCarCamObject::turnBase() const
{
    const CarMemory& m = cCarCam_.m;
    return {m.vCarPos + rotate(m.qCarRot, Vector3d{0, 0, cCarCam_.turnBaseZ()}), m.qCarRot};
}

void CCarCamObject::writeTurnBase(double time)
{
    const QTransformd place = turnBase();
    node(kTurnBaseMesh)
        .setGlobal(time, poseOf(place.rotation, place.translation, scales_.turnBase));
}

void CCarCamObject::writeSteeringWheel(double time)
{
    constexpr double kTurns = -5.0; // of the steering wheel for one of the front wheels
    const double angle = kTurns * settings.dSteeringWheelRotMult * cCarCam_.steerAngle();
    const Quatd turn{0, 0, std::sin(angle / 2), std::cos(angle / 2)};
    node(kSteeringWheelMesh).setLocal(time, steeringWheelInit_ * toMatrix(turn));
}

/// The world's up with the body's heading.
void CCarCamObject::writeBase(double time)
{
    CarMemory& m = cCarCam_.m;
    const Vector3d up{0, 1, 0};
    const Vector3d right = cross(up, rotate(m.qBodyRot, Vector3d{0, 0, 1}));
    if (length(right) > 1e-6) { // a car that stands on its nose keeps its heading
        Matrix4 frame;
        frame.setAxis(0, normalise(right));
        frame.setAxis(1, up);
        frame.setAxis(2, cross(frame.axis(0), up));
        m.qLevelRot = toQuat(frame);
    }
    const double size = settings.car.rig.dCarLength;
    node(kCarBodyBaseMesh).setGlobal(time, poseOf(m.qLevelRot, m.vCarPos, {size, size, size}));
}

/// Behind and above the turn base, wherever the user has moved that.
QTransformd CCarCamObject::followTarget() const
{
    constexpr Vector3d kOffset{0, 1.4, 7.0};
    const QTransformd base = turnBase();
    const double moved = -settings.car.dTurnBase * settings.car.rig.dCarLength / 2;
    const Vector3d offset{kOffset.x * scales_.turnBase.x, kOffset.y * scales_.turnBase.y,
                          kOffset.z * scales_.turnBase.z - moved};
    return {base.translation + rotate(base.rotation, offset), base.rotation};
}

void CCarCamObject::writeFollowCam(double time)
{
    followCam_.follow(followTarget(), {}, stepLength());
    node(kFollowCam)
        .setGlobal(time,
                   poseOf(followCam_.second.rotation, followCam_.second.translation, {1, 1, 1}));
}

} // namespace tvw::rgs::addon
