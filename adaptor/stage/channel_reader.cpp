#include "adaptor/stage/channel_reader.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tvw::rgs::stage {

namespace {

using Value = std::array<double, 4>; ///< the last one is unused but in rotations

Quatd quatOf(const Value& v)
{
    return normalise(Quatd{v[0], v[1], v[2], v[3]});
}

Value turned(const Value& a, const Value& b, double f)
{
    const Quatd from = quatOf(a);
    const Vector3d turn = toRotationVector(multiply(conjugate(from), quatOf(b)));
    const Quatd q = multiply(from, fromRotationVector(turn * f));
    return {q.x, q.y, q.z, q.w};
}

/// Hermite's cubic through two values with their tangents per second (glTF 2.0, appendix C.5).
double cubic(double a, double out, double b, double in, double f, double length)
{
    const double f2 = f * f;
    const double f3 = f2 * f;
    return (2 * f3 - 3 * f2 + 1) * a + length * (f3 - 2 * f2 + f) * out + (3 * f2 - 2 * f3) * b +
           length * (f3 - f2) * in;
}

/// Files hold seconds in single precision, which no frame's time but a few survives. Where all
/// times lie, within that precision, on frames of one usual rate, these frames are meant.
std::vector<Flicks> flicksOf(const std::vector<double>& seconds)
{
    constexpr double kPrecision = 1.2e-7; // 2^-23
    constexpr double kLongest = 1e6;      // [s], beyond which frames are no longer told apart
    for (const double rate : {24.0, 25.0, 30.0, 100.0, 120.0}) {
        const auto frame = static_cast<Flicks>(static_cast<double>(kFlicksPerSecond) / rate);
        const bool isOnFrames = std::all_of(seconds.begin(), seconds.end(), [&](double t) {
            return std::abs(t) < kLongest && std::abs(t - std::round(t * rate) / rate) <=
                                                 kPrecision * std::max(std::abs(t), 1.0 / rate);
        });
        if (!isOnFrames)
            continue;
        std::vector<Flicks> frames;
        for (const double t : seconds)
            frames.push_back(std::llround(t * rate) * frame);
        return frames;
    }
    std::vector<Flicks> out;
    for (const double t : seconds)
        out.push_back(toFlicks(t));
    return out;
}

} // namespace

struct ChannelReader::Curve
{
    Path path;
    Mode mode;
    std::vector<Flicks> times;
    std::vector<double>
        values; ///< `width` for each key; of a cubic: in-tangents, values, out-tangents
    std::size_t width;
    mutable std::size_t place = 0; ///< where the last time was found: times come in order

    [[nodiscard]] Value key(std::size_t i, std::size_t part) const
    {
        const std::size_t parts = mode == Mode::Cubic ? 3 : 1;
        Value out{};
        for (std::size_t k = 0; k < width; ++k)
            out[k] = values[(i * parts + (mode == Mode::Cubic ? part : 0)) * width + k];
        return out;
    }

    [[nodiscard]] Value at(Flicks time) const
    {
        constexpr std::size_t kValue = 1;
        while (place + 1 < times.size() && times[place + 1] <= time)
            ++place;
        if (place + 1 == times.size() || time <= times[place] || mode == Mode::Step)
            return key(place, kValue);
        const Flicks length = times[place + 1] - times[place];
        const double f = static_cast<double>(time - times[place]) / static_cast<double>(length);
        return between(place, f, toSeconds(length));
    }

    [[nodiscard]] Value between(std::size_t i, double f, double length) const
    {
        const Value a = key(i, 1);
        const Value b = key(i + 1, 1);
        if (mode == Mode::Linear && path == Path::Rotation)
            return turned(a, b, f);
        const Value out = key(i, 2);
        const Value in = key(i + 1, 0);
        Value value{};
        for (std::size_t k = 0; k < width; ++k)
            value[k] = mode == Mode::Cubic ? cubic(a[k], out[k], b[k], in[k], f, length)
                                           : a[k] + f * (b[k] - a[k]);
        return value;
    }

    /// Every time at which the curve needs a key.
    void addTimes(std::vector<Flicks>& out) const
    {
        constexpr int kPieces = 8;
        for (std::size_t i = 0; i < times.size(); ++i) {
            if (mode == Mode::Step && i != 0)
                out.push_back(times[i] - 1);
            if (mode == Mode::Cubic && i != 0) {
                const Flicks length = times[i] - times[i - 1];
                for (int k = 1; k < kPieces; ++k)
                    out.push_back(times[i - 1] + length / kPieces * k);
            }
            out.push_back(times[i]);
        }
    }
};

ChannelReader::ChannelReader(const GltfFile& file) : file_(file)
{
    const std::size_t nodes = listIn(file.root(), "nodes").size();
    for (const Json& animation : listIn(file.root(), "animations")) {
        const Json& samplers = listIn(animation, "samplers");
        for (const Json& channel : listIn(animation, "channels"))
            addChannel(channel, samplers, nodes);
    }
}

void ChannelReader::addChannel(const Json& channel, const Json& samplers, std::size_t nodes)
{
    constexpr const char* kPaths[] = {"translation", "rotation", "scale"};
    constexpr const char* kModes[] = {"LINEAR", "STEP", "CUBICSPLINE"};
    const Json& target = objectIn(channel, "target");
    const std::size_t node = indexIn(target, "node", nodes);
    const std::string path = textIn(target, "path");
    const auto* const known = std::find(std::begin(kPaths), std::end(kPaths), path);
    if (node == kNone || known == std::end(kPaths))
        return;
    const std::size_t sampler = indexIn(channel, "sampler", samplers.size());
    if (sampler == kNone)
        throw FileFault{"an animation channel has no sampler"};
    const Json& curve = samplers[sampler];
    const std::string mode =
        curve.contains("interpolation") ? textIn(curve, "interpolation") : "LINEAR";
    const auto* const knownMode = std::find(std::begin(kModes), std::end(kModes), mode);
    if (knownMode == std::end(kModes))
        throw FileFault{"an animation has the unknown interpolation " + mode};
    const std::size_t accessors = listIn(file_.root(), "accessors").size();
    const Channel added{static_cast<Path>(known - kPaths), static_cast<Mode>(knownMode - kModes),
                        indexIn(curve, "input", accessors), indexIn(curve, "output", accessors)};
    if (added.input == kNone || added.output == kNone)
        throw FileFault{"an animation sampler has no data"};
    std::vector<Channel>& channels = byNode_[node];
    const auto place = std::find_if(channels.begin(), channels.end(),
                                    [&](const Channel& other) { return other.path >= added.path; });
    if (place == channels.end() || place->path != added.path)
        channels.insert(place, added);
}

std::vector<std::size_t> ChannelReader::accessorsOf(std::size_t node) const
{
    std::vector<std::size_t> out;
    if (const auto found = byNode_.find(node); found != byNode_.end()) {
        for (const Channel& channel : found->second) {
            out.push_back(channel.input);
            out.push_back(channel.output);
        }
    }
    return out;
}

ChannelReader::Curve ChannelReader::curveOf(const Channel& channel) const
{
    const std::size_t width = channel.path == Path::Rotation ? 4 : 3;
    const std::size_t parts = channel.mode == Mode::Cubic ? 3 : 1;
    Curve curve{channel.path, channel.mode, {}, file_.numbers(channel.output, width), width};
    curve.times = flicksOf(file_.numbers(channel.input, 1));
    if (curve.times.empty() || curve.values.size() != curve.times.size() * parts * width)
        throw FileFault{"an animation has another number of values than of times"};
    if (std::adjacent_find(curve.times.begin(), curve.times.end(), std::greater_equal<>()) !=
        curve.times.end())
        throw FileFault{"an animation's times do not rise"};
    return curve;
}

std::vector<TrackKey<Matrix4>> ChannelReader::keysOf(std::size_t node, const PoseValues& rest) const
{
    const auto found = byNode_.find(node);
    if (found == byNode_.end())
        return {};
    std::vector<Curve> curves;
    std::vector<Flicks> times;
    for (const Channel& channel : found->second) {
        curves.push_back(curveOf(channel));
        const std::size_t perKey = channel.mode == Mode::Cubic  ? 8
                                   : channel.mode == Mode::Step ? 2
                                                                : 1;
        file_.spend(curves.back().times.size() * perKey, sizeof(TrackKey<Matrix4>));
        curves.back().addTimes(times);
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());

    std::vector<TrackKey<Matrix4>> keys;
    keys.reserve(times.size());
    for (const Flicks time : times) {
        PoseValues pose = rest;
        for (const Curve& curve : curves) {
            const Value v = curve.at(time);
            if (curve.path == Path::Translation)
                pose.translation = {v[0], v[1], v[2]};
            else if (curve.path == Path::Scale)
                pose.scale = {v[0], v[1], v[2]};
            else
                pose.rotation = {v[0], v[1], v[2], v[3]};
        }
        keys.push_back({time, poseOf(pose)});
    }
    return keys;
}

} // namespace tvw::rgs::stage
