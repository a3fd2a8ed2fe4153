#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/rectangularplay/rectangularplay_CRectangularPlayObject.h"

namespace tvw::rgs::addon {

class CRectangularPlayPlugin final : public ToolPlugin<CRectangularPlayObject>
{
public:
    CRectangularPlayPlugin()
        : ToolPlugin({
              .id = "RectangularPlay",
              .dataFolder = "utility/rectangularplay",
              .displayName = "Tarvo RectangularPlay",
              .category = "Utility",
              .description = "Tarvo RectangularPlay is a tool for introducing a mechanical play "
                             "between two moving objects.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
