#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/raycaster/raycaster_CRayCasterObject.h"

namespace tvw::rgs::addon {

class CRayCasterPlugin final : public ToolPlugin<CRayCasterObject>
{
public:
    CRayCasterPlugin()
        : ToolPlugin({
              .id = "RayCaster",
              .dataFolder = "utility/raycaster",
              .displayName = "Tarvo RayCaster",
              .category = "Utility",
              .description = "Tarvo RayCaster is used to cast a ray towards a surface and getting "
                             "the point where the ray hits the surface and the normal direction.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
