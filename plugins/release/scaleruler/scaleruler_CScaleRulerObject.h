/// Measures the scale of one node by that of another, axis by axis.
#pragma once

#include "plugins/release/scaleruler/scaleruler_items.h"

namespace tvw::rgs::addon {

class CScaleRulerObject final : public RulerTool<scaleruler::Settings>
{
public:
    explicit CScaleRulerObject(const CreateParam& param);

private:
    void measure(double time) override;
    double outputValue(std::size_t index) override;
};

} // namespace tvw::rgs::addon
