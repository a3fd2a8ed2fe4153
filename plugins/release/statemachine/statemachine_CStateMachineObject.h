/// A mesh that travels between ten poses.
#pragma once

#include "plugins/common/state_machine_tool.h"
#include "plugins/release/statemachine/statemachine_items.h"

namespace tvw::rgs::addon {

class CStateMachineObject final : public StateMachineTool<statemachine::Settings>
{
public:
    explicit CStateMachineObject(const CreateParam& param)
        : StateMachineTool(param, statemachine::kSpec, statemachine::kItems,
                           "StateMachineDataChunk", false)
    {
    }
};

} // namespace tvw::rgs::addon
