#include "plugins/release/gyro/gyro_CGyroCam.h"

#include "plugins/common/pose.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace gyro;

CGyroCam::CGyroCam(const CreateParam& param) : Tool(param, kSpec, kItems, "GyroDataChunk")
{
    StateStore& saved = state();
    saved.stored("gyroRotX", settings.gyroRotX);
    saved.stored("gyroRotY", settings.gyroRotY);
    saved.stored("gyroRotZ", settings.gyroRotZ);
    saved.stored("projectX", settings.projectX);
    saved.stored("projectY", settings.projectY);
    saved.stored("projectZ", settings.projectZ);
    saved.stored("projectXScale", settings.projectXScale);
    saved.stored("projectYScale", settings.projectYScale);
    saved.stored("projectZScale", settings.projectZScale);
    saved.stored("gyroRotation", settings.gyroRotation);
    saved.stored("hideHelpers", settings.hideHelpers);
    saved.stored("hideHelpersDuringRecording", settings.hideDuringRecording);
    saved.stored("wireframeMode", settings.wireframe);
}

void CGyroCam::readRestriction()
{
    settings.gyroRotX = settings.restriction != kPitchOnly;
    settings.gyroRotY = settings.restriction != kYawOnly;
    settings.gyroRotZ = settings.restriction != kRollOnly;
}

void CGyroCam::hold(double time)
{
    readRestriction();
    if (!node(kPivot).exists() || !node(kEye).exists())
        return;
    const Matrix4 pivot = node(kPivot).global(time);
    const Matrix4 eye = node(kEye).global(time);
    const Vector3d own = keptScale(node(kGyro).global(time));

    const Matrix4 toPivot = inverse(pivot);
    Vector3d position = transformPoint(toPivot, translationOf(eye));
    position = {settings.projectX ? position.x : 0.0, settings.projectY ? position.y : 0.0,
                settings.projectZ ? position.z : 0.0};
    const Vector3d eyeScale = scaleOf(eye);
    const Vector3d scale{settings.projectXScale ? eyeScale.x : own.x,
                         settings.projectYScale ? eyeScale.y : own.y,
                         settings.projectZScale ? eyeScale.z : own.z};

    const Matrix4 turn = toMatrix(heldRotation(orthonormalise(toPivot * eye)));
    Matrix4 pose = scaled(orthonormalise(pivot) * turn, scale);
    setTranslation(pose, transformPoint(pivot, position));
    node(kGyro).setGlobal(time, pose);
}

/// What the gyro lets through of the eye's rotation. seen: the eye in the pivot's frame, unscaled.
/// Yaw is where the Z axis points, pitch where the Y axis points, roll where the X axis points,
/// each in the plane across its axis: that heading is free of the turns which are held.
Quatd CGyroCam::heldRotation(const Matrix4& seen) const
{
    if (!settings.gyroRotation)
        return splitPose(seen).transform.rotation;
    Vector3d turn;
    if (!settings.gyroRotX)
        turn.x = std::atan2(seen[6], seen[5]);
    if (!settings.gyroRotY)
        turn.y = std::atan2(seen[8], seen[10]);
    if (!settings.gyroRotZ)
        turn.z = std::atan2(seen[1], seen[0]);
    return fromRotationVector(turn);
}

} // namespace tvw::rgs::addon
