/// A slider that is loose in a box.
#pragma once

#include "plugins/release/rectangularplay/rectangularplay_items.h"

namespace tvw::rgs::addon {

class CRectangularPlayObject final : public PlayTool
{
public:
    explicit CRectangularPlayObject(const CreateParam& param)
        : PlayTool(param, rectangularplay::kSpec, rectangularplay::kItems,
                   "RectangularPlayDataChunk", Clearance::Box)
    {
    }
};

} // namespace tvw::rgs::addon
