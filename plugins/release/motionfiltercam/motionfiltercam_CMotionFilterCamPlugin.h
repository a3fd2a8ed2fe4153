#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamObject.h"

namespace tvw::rgs::addon {

class CMotionFilterCamPlugin final : public ToolPlugin<CMotionFilterCamObject>
{
public:
    static constexpr std::string_view kOlderIds[] = {"MotionFilter"};

    CMotionFilterCamPlugin()
        : ToolPlugin({
              .id = "MotionFilterCam",
              .dataFolder = "motionfiltercam",
              .displayName = "Tarvo MotionFilterCam",
              .category = "Camera",
              .description =
                  "Tarvo MotionFilterCam consists of two cameras. The AttachedCam is attached to an "
                  "animated object/camera and the FollowCam will follow the AttachedCam in a smooth or "
                  "bouncy fashion by filtering out any sudden or turbulent movements. It is used for "
                  "both smooth motion as well as bouncy action.",
              .olderIds = kOlderIds,
          })
    {
    }
};

} // namespace tvw::rgs::addon
