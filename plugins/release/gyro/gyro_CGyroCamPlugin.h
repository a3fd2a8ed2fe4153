#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/gyro/gyro_CGyroCam.h"

namespace tvw::rgs::addon {

class CGyroCamPlugin final : public ToolPlugin<CGyroCam>
{
public:
    CGyroCamPlugin()
        : ToolPlugin({
              .id = "Gyro",
              .dataFolder = "utility/gyro",
              .displayName = "Tarvo Gyro",
              .category = "Utility",
              .description =
                  "Tarvo Gyro is a passive camera tool which extracts specific parts of the node "
                  "position and rotation information. Its main purpose is to provide a stable "
                  "platform when attached to a moving object. Tarvo Gyro follows the object but is "
                  "not affected by its rotation, making it an ideal object to attach a camera to.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
