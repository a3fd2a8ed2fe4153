#include "adaptor/stage/animation_writer.h"

#include "adaptor/stage/key_thinning.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace tvw::rgs::stage {

namespace {

template <std::size_t N>
bool isConstant(const std::vector<std::array<float, N>>& values)
{
    return std::all_of(values.begin(), values.end(),
                       [&](const std::array<float, N>& value) { return value == values[0]; });
}

template <class T>
std::string_view bytesOf(const std::vector<T>& values)
{
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)};
}

/// Of the two quaternions of one rotation the one nearer to the predecessor's.
void turnTowards(std::vector<std::array<float, 4>>& values, std::size_t i)
{
    if (i == 0)
        return;
    const std::array<float, 4>& a = values[i - 1];
    std::array<float, 4>& b = values[i];
    if (a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3] < 0.0F)
        b = {-b[0], -b[1], -b[2], -b[3]};
}

bool isAffine(const Matrix4& m)
{
    constexpr double kRow[] = {0.0, 0.0, 0.0, 1.0};
    for (int c = 0; c < 4; ++c) {
        // By bits: a row of -0 is not the row that a reader puts back.
        if (std::memcmp(&m.m[4 * c + 3], &kRow[c], sizeof(double)) != 0)
            return false;
    }
    return true;
}

} // namespace

/// Where the same times stand in the buffer already, these.
template <class T>
AnimationWriter::Times AnimationWriter::sharedTimes(const std::vector<T>& times)
{
    const std::string_view bytes = bytesOf(times);
    const std::uint64_t key = fingerprintOf(bytes) + sizeof(T);
    const auto known = times_.find(key);
    if (known != times_.end() && file_.buffer().substr(known->second.begin, bytes.size()) == bytes)
        return known->second;
    file_.beginView();
    Times made{file_.buffer().size(), 0, kNoAccessor};
    file_.append(times);
    made.view = file_.endView();
    times_[key] = made;
    return made;
}

AnimationWriter::Times AnimationWriter::secondsOf(const std::vector<float>& times)
{
    Times found = sharedTimes(times);
    if (found.accessor == kNoAccessor) {
        found.accessor =
            file_.addAccessor(found.view, times.size(), ComponentType::Float, "SCALAR",
                              Json::array({times.front()}), Json::array({times.back()}));
        times_[fingerprintOf(bytesOf(times)) + sizeof(float)] = found;
    }
    return found;
}

template <std::size_t N>
void AnimationWriter::writeChannel(std::size_t node, const char* path,
                                   const std::vector<std::array<float, N>>& values,
                                   const std::vector<std::size_t>& kept)
{
    std::vector<float> thinTimes;
    std::vector<std::array<float, N>> thinValues;
    const bool thin = !kept.empty();
    for (const std::size_t i : kept) {
        thinTimes.push_back(poses_.times[i]);
        thinValues.push_back(values[i]);
        if constexpr (N == 4)
            turnTowards(thinValues, thinValues.size() - 1);
    }
    const std::size_t input = secondsOf(thin ? thinTimes : poses_.times).accessor;
    const std::vector<std::array<float, N>>& out = thin ? thinValues : values;
    file_.beginView();
    file_.append(out);
    const std::size_t output = file_.addAccessor(file_.endView(), out.size(), ComponentType::Float,
                                                 N == 3 ? "VEC3" : "VEC4");
    channels_.push_back(
        {{"sampler", samplers_.size()}, {"target", {{"node", node}, {"path", path}}}});
    samplers_.push_back({{"input", input}, {"output", output}, {"interpolation", "LINEAR"}});
    used_.push_back(input);
    used_.push_back(output);
}

Json AnimationWriter::writeChannels(std::size_t node, const StageNode& from,
                                    const ExportOptions& thinning)
{
    samplePoses(from.poseKeys(), poses_);
    used_ = Json::array();
    const double tolerance = thinning.positionTolerance;
    writeChannel(node, "translation", poses_.translation,
                 thinnedVectors(poses_.times, poses_.translation, tolerance));
    if (!isConstant(poses_.rotation))
        writeChannel(node, "rotation", poses_.rotation,
                     thinnedRotations(poses_.times, poses_.rotation, thinning.angleTolerance));
    if (!isConstant(poses_.scale))
        writeChannel(node, "scale", poses_.scale,
                     thinnedVectors(poses_.times, poses_.scale, tolerance));
    return used_;
}

PoseValues AnimationWriter::firstPose() const
{
    const auto vector = [](const std::array<float, 3>& v) { return Vector3d{v[0], v[1], v[2]}; };
    const std::array<float, 4>& q = poses_.rotation.front();
    return {vector(poses_.translation.front()), Quatd{q[0], q[1], q[2], q[3]},
            vector(poses_.scale.front())};
}

template <class T>
std::size_t AnimationWriter::writeFlicks(const KeyTrack<T>& track)
{
    std::vector<Flicks> times;
    times.reserve(track.size());
    track.forEach([&](const TrackKey<T>& key) { times.push_back(key.time); });
    return sharedTimes(times).view;
}

Json AnimationWriter::writeExact(const KeyTrack<Matrix4>& track)
{
    const std::size_t times = writeFlicks(track);
    bool affine = true;
    track.forEach([&](const TrackKey<Matrix4>& key) { affine = affine && isAffine(key.value); });
    file_.beginView();
    track.forEach([&](const TrackKey<Matrix4>& key) {
        if (affine) {
            std::array<double, 12> rows;
            for (int c = 0; c < 4; ++c)
                std::memcpy(&rows[3 * c], &key.value.m[4 * c], 3 * sizeof(double));
            file_.append(rows.data(), sizeof rows);
        } else {
            file_.append(key.value.m, sizeof key.value.m);
        }
    });
    return {{"times", times}, {"values", file_.endView()}, {"size", affine ? 12 : 16}};
}

Json AnimationWriter::writeExact(const KeyTrack<double>& track)
{
    const std::size_t times = writeFlicks(track);
    file_.beginView();
    track.forEach([&](const TrackKey<double>& key) { file_.append(&key.value, sizeof key.value); });
    return {{"times", times}, {"values", file_.endView()}, {"size", 1}};
}

Json AnimationWriter::take()
{
    if (channels_.empty())
        return {};
    return {
        {"name", "Take"}, {"channels", std::move(channels_)}, {"samplers", std::move(samplers_)}};
}

} // namespace tvw::rgs::stage
