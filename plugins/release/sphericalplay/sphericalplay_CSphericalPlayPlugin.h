#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/sphericalplay/sphericalplay_CSphericalPlayObject.h"

namespace tvw::rgs::addon {

class CSphericalPlayPlugin final : public ToolPlugin<CSphericalPlayObject>
{
public:
    CSphericalPlayPlugin()
        : ToolPlugin({
              .id = "SphericalPlay",
              .dataFolder = "utility/sphericalplay",
              .displayName = "Tarvo SphericalPlay",
              .category = "Utility",
              .description = "Tarvo SphericalPlay is a tool for introducing a mechanical play "
                             "between two moving objects.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
