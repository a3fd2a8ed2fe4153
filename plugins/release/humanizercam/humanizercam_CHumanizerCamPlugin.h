#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/humanizercam/humanizercam_CHumanizerCamObject.h"

namespace tvw::rgs::addon {

class CHumanizerCamPlugin final : public ToolPlugin<CHumanizerCamObject>
{
public:
    CHumanizerCamPlugin()
        : ToolPlugin({
              .id = "HumanizerCam",
              .dataFolder = "humanizercam",
              .displayName = "Tarvo HumanizerCam",
              .category = "Camera",
              .description = "Tarvo HumanizerCam adds irregularities onto a camera's movement. "
                             "Tarvo HumanizerCam is aligned and attached to a previously animated "
                             "camera to add the irregularities to the shot.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
