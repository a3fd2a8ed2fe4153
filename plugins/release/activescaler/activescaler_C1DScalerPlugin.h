#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/activescaler/activescaler_C1DScalerObject.h"

namespace tvw::rgs::addon {

class C1DScalerPlugin final : public ToolPlugin<C1DScalerObject>
{
public:
    C1DScalerPlugin()
        : ToolPlugin({
              .id = "ActiveScaler",
              .dataFolder = "utility/activescaler",
              .displayName = "Tarvo ActiveScaler",
              .category = "Utility",
              .description =
                  "Tarvo ActiveScaler outputs a scaling operation in the xyz-axis from all "
                  "supported input devices directly to a dummy in real time. Its main use is for "
                  "controlling and animating objects in the scene in real time by "
                  "parenting/linking your object to the dummy. Eg fire from a nozzle.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
