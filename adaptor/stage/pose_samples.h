/// Poses as glTF has them: translation, rotation and scale, each a channel of its own in single
/// precision.
///
/// glTF plays such channels as our tracks do: positions and scales linearly, rotations evenly on
/// the shorter way. A mirrored pose has a negative x scale. Shear is lost.
#pragma once

#include "adaptor/stage/key_track.h"
#include "util/matrix4.h"

#include <array>
#include <cstddef>
#include <vector>

namespace tvw::rgs::stage {

struct PoseChannels
{
    std::vector<float> times;                      ///< [s], from 0 on, strictly rising
    std::vector<std::array<float, 3>> translation; ///< [m]
    std::vector<std::array<float, 4>> rotation;    ///< x y z w, neighbours in one hemisphere
    std::vector<std::array<float, 3>> scale;

    void clear();
    void reserve(std::size_t keys);
    void add(float time, const Matrix4& pose);
};

/// The keys of a track, which has some. What lies before time 0, where glTF has no keys, becomes
/// one key at 0; of keys that single precision can't tell apart the first stands.
void samplePoses(const KeyTrack<Matrix4>& track, PoseChannels& out);

/// Held to the finite range.
[[nodiscard]] float toFloat(double value) noexcept;

/// Translation, rotation and scale of one pose, exactly as the numbers stand in a file.
struct PoseValues
{
    Vector3d translation;
    Quatd rotation;
    Vector3d scale;
};
[[nodiscard]] PoseValues valuesOf(const Matrix4& pose) noexcept;
[[nodiscard]] Matrix4 poseOf(const PoseValues& values) noexcept;

} // namespace tvw::rgs::stage
