#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/spherecam/spherecam_CSphereCamObject.h"

namespace tvw::rgs::addon {

class CSphereCamPlugin final : public ToolPlugin<CSphereCamObject>
{
public:
    CSphereCamPlugin()
        : ToolPlugin({
              .id = "SphereCam",
              .dataFolder = "spherecam",
              .displayName = "Tarvo SphereCam",
              .category = "Camera",
              .description = "Tarvo SphereCam moves on a sphere and looks at the center of the "
                             "sphere. Use it on an animated object to fly around it on a spherical "
                             "path. The camera's distance to the center of the sphere can also be "
                             "adjusted in real time. Extra features include the option of making "
                             "the camera position independent of the target rotations (gyro).",
          })
    {
    }
};

} // namespace tvw::rgs::addon
