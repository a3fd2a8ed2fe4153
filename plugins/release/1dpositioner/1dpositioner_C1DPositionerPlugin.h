#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/1dpositioner/1dpositioner_C1DPositionerObject.h"

namespace tvw::rgs::addon {

class C1DPositionerPlugin final : public ToolPlugin<C1DPositionerObject>
{
public:
    C1DPositionerPlugin()
        : ToolPlugin({
              .id = "1DPositioner",
              .dataFolder = "utility/1dpositioner",
              .displayName = "Tarvo 1DPositioner",
              .category = "Utility",
              .description = "Tarvo 1DPositioner outputs a movement or velocity from all supported "
                             "input devices directly to a dummy in real time. Its main use is for "
                             "controlling and animating objects in the scene in real time by "
                             "parenting/linking your object to the dummy.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
