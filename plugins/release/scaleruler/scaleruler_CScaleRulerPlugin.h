#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/scaleruler/scaleruler_CScaleRulerObject.h"

namespace tvw::rgs::addon {

class CScaleRulerPlugin final : public ToolPlugin<CScaleRulerObject>
{
public:
    CScaleRulerPlugin()
        : ToolPlugin({
              .id = "ScaleRuler",
              .dataFolder = "utility/scaleruler",
              .displayName = "Tarvo ScaleRuler",
              .category = "Utility",
              .description =
                  "Tarvo ScaleRuler measures the current scale and outputs it as a virtual input.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
