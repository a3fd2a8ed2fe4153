#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/angularplay/angularplay_CAngularPlayObject.h"

namespace tvw::rgs::addon {

class CAngularPlayPlugin final : public ToolPlugin<CAngularPlayObject>
{
public:
    CAngularPlayPlugin()
        : ToolPlugin({
              .id = "AngularPlay",
              .dataFolder = "utility/angularplay",
              .displayName = "Tarvo AngularPlay",
              .category = "Utility",
              .description = "Tarvo AngularPlay is a tool for introducing mechanical plays between "
                             "two rotating objects.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
