/// Two cameras: one that is attached to what moves, one that follows it in its own manner.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/pose.h"
#include "plugins/common/tool_object.h"

namespace tvw::rgs {

enum CameraPairNode : std::size_t { kAttachedCam, kFollowCam };

inline constexpr NodeRow kCameraPair[] = {
    {.prefix = {},
     .name = "AttachedCam",
     .mesh = &shape::camera,
     .color = kReferenceColor,
     .kind = nodekind::camera,
     .group = NodeGroup::First,
     .keyed = false,
     .selected = true},
    {.prefix = {},
     .name = "FollowCam",
     .mesh = &shape::camera,
     .color = kCameraColor,
     .kind = nodekind::camera,
     .group = NodeGroup::Second},
};

/// The follower of one frame: read, moved by the tool, written back. A scale that it has is kept.
class FollowingPose
{
public:
    /// Its pose of the last frame, time - dt [s].
    FollowingPose(SceneNode& node, double time, double dt)
        : node_(node), time_(time), parts_(splitPose(node.global(time - dt))),
          transform(parts_.transform)
    {
    }

    FollowingPose(const FollowingPose&) = delete;
    FollowingPose& operator=(const FollowingPose&) = delete;

    void write() { node_.setGlobal(time_, joinPose(parts_)); }

private:
    SceneNode& node_;
    double time_;
    PoseParts parts_;

public:
    QTransformd& transform; ///< to be moved
};

} // namespace tvw::rgs
