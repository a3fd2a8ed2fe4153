/// A camera that travels between ten others, and takes over their lenses too.
#pragma once

#include "plugins/common/state_machine_tool.h"
#include "plugins/release/multistatecam/multistatecam_items.h"

namespace tvw::rgs::addon {

class CMultiStateCamObject final : public StateMachineTool<multistatecam::Settings>
{
public:
    explicit CMultiStateCamObject(const CreateParam& param)
        : StateMachineTool(param, multistatecam::kSpec, multistatecam::kItems,
                           "MultiStateCamDataChunk", true)
    {
    }
};

} // namespace tvw::rgs::addon
