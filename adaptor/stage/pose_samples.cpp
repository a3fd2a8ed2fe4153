#include "adaptor/stage/pose_samples.h"

#include <algorithm>
#include <limits>

namespace tvw::rgs::stage {

float toFloat(double value) noexcept
{
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

PoseValues valuesOf(const Matrix4& pose) noexcept
{
    const detail::PoseParts parts = detail::partsOf(pose);
    return {translationOf(pose), parts.rotation, parts.scale};
}

Matrix4 poseOf(const PoseValues& values) noexcept
{
    Matrix4 pose = scaled(toMatrix(normalise(values.rotation)), values.scale);
    setTranslation(pose, values.translation);
    return pose;
}

void PoseChannels::clear()
{
    times.clear();
    translation.clear();
    rotation.clear();
    scale.clear();
}

void PoseChannels::reserve(std::size_t keys)
{
    times.reserve(keys);
    translation.reserve(keys);
    rotation.reserve(keys);
    scale.reserve(keys);
}

void PoseChannels::add(float time, const Matrix4& pose)
{
    const PoseValues values = valuesOf(pose);
    const Vector3d& t = values.translation;
    const Vector3d& s = values.scale;
    const Quatd& q = values.rotation;
    std::array<float, 4> turn{toFloat(q.x), toFloat(q.y), toFloat(q.z), toFloat(q.w)};
    if (!rotation.empty()) {
        const std::array<float, 4>& last = rotation.back();
        if (last[0] * turn[0] + last[1] * turn[1] + last[2] * turn[2] + last[3] * turn[3] < 0.0F)
            turn = {-turn[0], -turn[1], -turn[2], -turn[3]};
    }
    times.push_back(time);
    translation.push_back({toFloat(t.x), toFloat(t.y), toFloat(t.z)});
    rotation.push_back(turn);
    scale.push_back({toFloat(s.x), toFloat(s.y), toFloat(s.z)});
}

void samplePoses(const KeyTrack<Matrix4>& track, PoseChannels& out)
{
    out.clear();
    out.reserve(track.size() + 1);
    if (track.key(0).time < 0)
        out.add(0.0F, track.at(0));
    track.forEach([&](const TrackKey<Matrix4>& key) {
        const auto time = static_cast<float>(toSeconds(key.time));
        if (key.time >= 0 && (out.times.empty() || time > out.times.back()))
            out.add(time, key.value);
    });
}

} // namespace tvw::rgs::stage
