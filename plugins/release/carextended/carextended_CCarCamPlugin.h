#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/carextended/carextended_CCarCamObject.h"

namespace tvw::rgs::addon {

class CCarCamPlugin final : public ToolPlugin<CCarCamObject>
{
public:
    CCarCamPlugin()
        : ToolPlugin({
              .id = "4WheelerExt",
              .dataFolder = "carextended",
              .displayName = "Tarvo 4-Wheeler Extended",
              .category = "Vehicle",
              .description =
                  "Tarvo 4-Wheeler Extended is a real-time four wheeler simulator. Parent/link the "
                  "GravityDirectionMesh to a surface to use it as ground. For multiple surfaces "
                  "parent/link the surfaces to the GravityDirectionMesh. For automatic following "
                  "of "
                  "objects attach the TargetMesh to an animated object and check the 'autonomous "
                  "mode' in the Configure dialog.",
              .olderIds = kOlderIds,
          })
    {
    }

private:
    static constexpr std::string_view kOlderIds[] = {"CarExtended"};
};

} // namespace tvw::rgs::addon
