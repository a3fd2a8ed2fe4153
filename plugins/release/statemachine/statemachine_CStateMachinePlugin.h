#pragma once

#include "plugins/common/tool_plugin.h"
#include "plugins/release/statemachine/statemachine_CStateMachineObject.h"

namespace tvw::rgs::addon {

class CStateMachinePlugin final : public ToolPlugin<CStateMachineObject>
{
public:
    CStateMachinePlugin()
        : ToolPlugin({
              .id = "StateMachine",
              .dataFolder = "utility/statemachine",
              .displayName = "Tarvo StateMachine",
              .category = "Utility",
              .description = "Tarvo StateMachine enables quick rigging of a machine/system with "
                             "states (ie positions and orientations).",
          })
    {
    }
};

} // namespace tvw::rgs::addon
