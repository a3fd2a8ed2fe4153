#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/zerogcam/zerogcam_CZeroGCamObject.h"

namespace tvw::rgs::addon {

class CZeroGCamPlugin final : public ToolPlugin<CZeroGCamObject>
{
public:
    CZeroGCamPlugin()
        : ToolPlugin({
              .id = "ZeroGCam",
              .dataFolder = "zerogcam",
              .displayName = "Tarvo ZeroGCam",
              .category = "Camera",
              .description =
                  "Tarvo ZeroGCam is modelled as an object moving in zero gravity. Brake "
                  "functionality has been added to aid navigation. Tarvo ZeroGCam gives an ultra "
                  "smooth motion yielding an eerie, almost liquid feeling to a shoot. ",
          })
    {
    }
};

} // namespace tvw::rgs::addon
