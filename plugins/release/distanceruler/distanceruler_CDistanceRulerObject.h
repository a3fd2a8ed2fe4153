/// Measures how far two nodes are apart.
#pragma once

#include "plugins/release/distanceruler/distanceruler_items.h"

namespace tvw::rgs::addon {

class CDistanceRulerObject final : public RulerTool<distanceruler::Settings>
{
public:
    explicit CDistanceRulerObject(const CreateParam& param);

private:
    void measure(double time) override;
    double outputValue(std::size_t index) override;
};

} // namespace tvw::rgs::addon
