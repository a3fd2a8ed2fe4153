#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/lookatcam/lookatcam_CLookAtCamObject.h"

namespace tvw::rgs::addon {

class CLookAtCamPlugin final : public ToolPlugin<CLookAtCamObject>
{
public:
    CLookAtCamPlugin()
        : ToolPlugin({
              .id = "LookAtCam",
              .dataFolder = "utility/lookatcam",
              .displayName = "Tarvo LookAtCam",
              .category = "Camera",
              .description = "Tarvo LookAtCam works exactly as an ordinary camera with a target. "
                             "It also has its target distance set to the distance to the target.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
