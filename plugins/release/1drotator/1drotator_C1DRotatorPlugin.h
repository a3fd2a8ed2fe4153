#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/1drotator/1drotator_C1DRotatorObject.h"

namespace tvw::rgs::addon {

class C1DRotatorPlugin final : public ToolPlugin<C1DRotatorObject>
{
public:
    C1DRotatorPlugin()
        : ToolPlugin({
              .id = "1DRotator",
              .dataFolder = "utility/1drotator",
              .displayName = "Tarvo 1DRotator",
              .category = "Utility",
              .description = "Tarvo 1DRotator outputs a rotation or rotational velocity from all "
                             "supported input devices directly to a dummy in real time. Its main "
                             "use is for controlling and animating objects in the scene in real "
                             "time by parenting/linking your object to the dummy.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
