#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/angleruler/angleruler_CAngleRulerObject.h"

namespace tvw::rgs::addon {

class CAngleRulerPlugin final : public ToolPlugin<CAngleRulerObject>
{
public:
    CAngleRulerPlugin()
        : ToolPlugin({
              .id = "AngleRuler",
              .dataFolder = "utility/angleruler",
              .displayName = "Tarvo AngleRuler",
              .category = "Utility",
              .description =
                  "Tarvo AngleRuler is used for measuring the angle or angular velocities between "
                  "two objects in real time and output the value as a virtual input. It also "
                  "triggers binary virtual input signals at given max/min angles/velocities.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
