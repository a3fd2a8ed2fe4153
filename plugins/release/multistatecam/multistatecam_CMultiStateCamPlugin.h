#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/multistatecam/multistatecam_CMultiStateCamObject.h"

namespace tvw::rgs::addon {

class CMultiStateCamPlugin final : public ToolPlugin<CMultiStateCamObject>
{
public:
    CMultiStateCamPlugin()
        : ToolPlugin({
              .id = "MultiStateCam",
              .dataFolder = "multistatecam",
              .displayName = "Tarvo CMultiStateCam",
              .category = "Camera",
              .description =
                  "Tarvo MultiStateCam enables quick rigging of a system with multiple states (ie "
                  "positions and orientations) to which the camera can be moved through an input "
                  "device or keyboard.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
