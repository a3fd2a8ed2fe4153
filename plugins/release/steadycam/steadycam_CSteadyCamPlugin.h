#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"

namespace tvw::rgs::addon {

class CSteadyCamPlugin final : public ToolPlugin<CSteadyCamObject>
{
public:
    static constexpr std::string_view kOlderIds[] = {"SteadyCam"};

    CSteadyCamPlugin()
        : ToolPlugin({
              .id = "SoftMotionCam",
              .dataFolder = "steadycam",
              .displayName = "Tarvo SoftMotionCam",
              .category = "Camera",
              .description =
                  "Tarvo SoftMotionCam consists of two cameras. The AttachedCam is attached to an "
                  "animated object/camera and the FollowCam will follow the AttachedCam in a smooth "
                  "fashion by filtering out any sudden or turbulent movements. Therefore it can be used "
                  "as a smooth follow camera or smooth out spline controlled cameras.",
              .olderIds = kOlderIds,
          })
    {
    }
};

} // namespace tvw::rgs::addon
