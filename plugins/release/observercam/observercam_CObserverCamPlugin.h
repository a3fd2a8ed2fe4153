#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/observercam/observercam_CObserverCamObject.h"

namespace tvw::rgs::addon {

class CObserverCamPlugin final : public ToolPlugin<CObserverCamObject>
{
public:
    CObserverCamPlugin()
        : ToolPlugin({
              .id = "ObserverCam",
              .dataFolder = "observercam",
              .displayName = "Tarvo ObserverCam",
              .category = "Camera",
              .description = "Tarvo ObserverCam is a camera which can be moved in any direction, "
                             "at any speed and pointed in any direction in real time. It can also "
                             "be used to film from within moving vehicles or from a spline path. "
                             "The camera is also equipped with many special features.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
