#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/horrorcam/horrorcam_CHorrorCamObject.h"

namespace tvw::rgs::addon {

class CHorrorCamPlugin final : public ToolPlugin<CHorrorCamObject>
{
public:
    CHorrorCamPlugin()
        : ToolPlugin({
              .id = "AutoZoomCam",
              .dataFolder = "horrorcam",
              .displayName = "Tarvo AutoZoomCam",
              .category = "Camera",
              .description =
                  "Tarvo AutoZoomCam automatically changes the perspective (or FOV) of the camera "
                  "to keep the size of the object constant when it moves towards or away from the "
                  "camera. It can also create a contracting horror effect typically seen in many "
                  "horror films. The camera then moves away from the object while zooming yielding "
                  "the illusion that the environment around the object is contracting.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
