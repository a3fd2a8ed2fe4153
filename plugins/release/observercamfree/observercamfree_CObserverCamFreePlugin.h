#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/observercamfree/observercamfree_CObserverCamFreeObject.h"

namespace tvw::rgs::addon {

class CObserverCamFreePlugin final : public ToolPlugin<CObserverCamFreeObject>
{
public:
    CObserverCamFreePlugin()
        : ToolPlugin({
              .id = "ObserverCamFree",
              .dataFolder = "observercamfree",
              .displayName = "Tarvo ObserverCam Free",
              .category = "Camera",
              .description = "Tarvo ObserverCam Free is a simplified version of Tarvo "
                             "ObserverCam.To take advantage of all features offered by Tarvo "
                             "ObserverCam, check out the full version.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
