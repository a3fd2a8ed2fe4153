#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/autofocuscam/autofocuscam_CAutoFocusCamObject.h"

namespace tvw::rgs::addon {

class CAutoFocusCamPlugin final : public ToolPlugin<CAutoFocusCamObject>
{
public:
    CAutoFocusCamPlugin()
        : ToolPlugin({
              .id = "ZoomAndFocusCam",
              .dataFolder = "autofocuscam",
              .displayName = "Tarvo AutoFocusCam",
              .category = "Camera",
              .description = "Tarvo Zoom&FocusCam has two major usages. First it has excellent "
                             "real time zooming capabilities. Second it has the possibility to "
                             "change the target distance in a highly controllable way.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
