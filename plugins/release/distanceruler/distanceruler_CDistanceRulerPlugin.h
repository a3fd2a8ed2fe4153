#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/distanceruler/distanceruler_CDistanceRulerObject.h"

namespace tvw::rgs::addon {

class CDistanceRulerPlugin final : public ToolPlugin<CDistanceRulerObject>
{
public:
    CDistanceRulerPlugin()
        : ToolPlugin({
              .id = "DistanceRuler",
              .dataFolder = "utility/distanceruler",
              .displayName = "Tarvo DistanceRuler",
              .category = "Utility",
              .description =
                  "Tarvo DistanceRuler is used for measuring the distance or velocity between two "
                  "objects in real time and output the value as a virtual input. It also triggers "
                  "binary virtual input signals at given max/min distances/velocities.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
