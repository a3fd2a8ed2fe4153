/// Animations of a glTF file as pose keys of its nodes.
#pragma once

#include "adaptor/stage/gltf_file.h"
#include "adaptor/stage/pose_samples.h"
#include "adaptor/stage/scene_data.h"

#include <unordered_map>

namespace tvw::rgs::stage {

/// Which channels move each node of a file, over all of its animations; of two that move the same
/// the first counts. Translation, rotation and scale are read, morph weights are not.
class ChannelReader
{
public:
    explicit ChannelReader(const GltfFile& file); ///< throws FileFault

    /// The accessors of a node's channels, as AnimationWriter::writeChannels lists them.
    [[nodiscard]] std::vector<std::size_t> accessorsOf(std::size_t node) const;

    /// The pose at every time at which one of the node's channels has a key; a value without a
    /// channel is that of `rest`. Steps become two keys a flick apart; a cubic piece gets seven
    /// keys in between. Throws FileFault.
    [[nodiscard]] std::vector<TrackKey<Matrix4>> keysOf(std::size_t node,
                                                        const PoseValues& rest) const;

private:
    enum class Path { Translation, Rotation, Scale };
    enum class Mode { Linear, Step, Cubic };
    struct Channel
    {
        Path path;
        Mode mode;
        std::size_t input, output;
    };
    struct Curve;

    void addChannel(const Json& channel, const Json& samplers, std::size_t nodes);
    [[nodiscard]] Curve curveOf(const Channel& channel) const;

    const GltfFile& file_;
    std::unordered_map<std::size_t, std::vector<Channel>> byNode_; ///< in the order of Path
};

} // namespace tvw::rgs::stage
