#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/sinusoid/sinusoid_CSinusoidObject.h"

namespace tvw::rgs::addon {

class CSinusoidPlugin final : public ToolPlugin<CSinusoidObject>
{
public:
    CSinusoidPlugin()
        : ToolPlugin({
              .id = "Sinusoid",
              .dataFolder = "utility/sinusoid",
              .displayName = "Tarvo Sinusoid",
              .category = "Utility",
              .description = "Tarvo Sinusoid is outputs a sinusoidal movement of an object and a "
                             "virtual input that can be used in other tools.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
