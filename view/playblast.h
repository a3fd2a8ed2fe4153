/// The animation as a film or pictures, with no window.
#pragma once

#include "adaptor/stage/stage.h"
#include "util/result.h"
#include "view/renderer.h"

#include <functional>
#include <optional>
#include <string>

namespace tvw::rgs::view {

struct Playblast
{
    std::string output{}; ///< .mp4, .png (the first frame) or a folder
    std::string
        camera{}; ///< a camera node; empty: `lens`, else the first FollowCam, else all in view
    std::optional<Lens> lens{};             ///< of a view by hand
    int width = 1280, height = 720;         ///< [pixels], 16 to 8192
    std::optional<core::TimeRange> range{}; ///< [s]; the stage's when not given
    int samples =
        4; ///< of each pixel; 0 draws edges hard, and twice as fast without a graphics card
    bool grid = true;
    std::function<bool(double fraction)> progress{}; ///< false cancels
};

/// Draws every frame of the range in a context of its own. The reason when it can't: nothing but a
/// folder's pictures is written then. A cancelled one answers "cancelled".
Status playblast(stage::Stage& scene, const Playblast& what);

/// The camera that a viewer would want: the first whose name ends in "FollowCam", else null.
[[nodiscard]] stage::StageNode* followCamera(const stage::Stage& scene);

} // namespace tvw::rgs::view
