#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/directinputlink/directinputlink_CDirectInputLinkObject.h"

namespace tvw::rgs::addon {

class CDirectInputLinkPlugin final : public ToolPlugin<CDirectInputLinkObject>
{
public:
    CDirectInputLinkPlugin()
        : ToolPlugin({
              .id = "DirectInputLink",
              .dataFolder = "directinputlink",
              .displayName = "Tarvo DirectInputLink",
              .category = "Accessory",
              .description = "Tarvo DirectInputLink is a link between an input device to a "
                             "movement in the scene. Its main use is either as a camera tool or a "
                             "tool for controlling and animating objects in the scene in real time "
                             "while being attached to another animated object.",
          })
    {
    }
};

} // namespace tvw::rgs::addon
