/// Keys of nodes as a glTF animation, and their exact values in our extension.
#pragma once

#include "adaptor/stage/glb_writer.h"
#include "adaptor/stage/pose_samples.h"
#include "adaptor/stage/scene_file.h"
#include "adaptor/stage/stage_node.h"

#include <unordered_map>

namespace tvw::rgs::stage {

class AnimationWriter
{
public:
    explicit AnimationWriter(GlbWriter& file) : file_(file) {}

    /// The channels of a node with pose keys, thinned as the options say. The answer lists the
    /// accessors that were used, inputs too, in the order of the channels.
    Json writeChannels(std::size_t node, const StageNode& from, const ExportOptions& thinning);

    /// The first pose of the node whose channels were written last.
    [[nodiscard]] PoseValues firstPose() const;

    /// The exact keys: views of times (flicks, 64 bits) and of values (doubles; `size` of them for
    /// each key: a pose without its last row has 12, where that row is 0 0 0 1).
    Json writeExact(const KeyTrack<Matrix4>& track);
    Json writeExact(const KeyTrack<double>& track);

    /// The animation; null when no node has one.
    [[nodiscard]] Json take();

private:
    static constexpr std::size_t kNoAccessor = ~std::size_t{0};

    struct Times
    {
        std::size_t begin; ///< in the buffer
        std::size_t view;
        std::size_t accessor; ///< of seconds only
    };

    template <std::size_t N>
    void writeChannel(std::size_t node, const char* path,
                      const std::vector<std::array<float, N>>& values,
                      const std::vector<std::size_t>& kept);
    Times secondsOf(const std::vector<float>& times);
    template <class T>
    Times sharedTimes(const std::vector<T>& times);
    template <class T>
    std::size_t writeFlicks(const KeyTrack<T>& track);

    GlbWriter& file_;
    PoseChannels poses_;
    Json channels_ = Json::array();
    Json samplers_ = Json::array();
    Json used_;
    std::unordered_map<std::uint64_t, Times> times_; ///< by fingerprint: nodes of a take share them
};

} // namespace tvw::rgs::stage
