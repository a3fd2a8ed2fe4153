/// Measures the angle between two nodes as a third one sees them, and how fast it changes.
#pragma once

#include "plugins/release/angleruler/angleruler_items.h"

#include <optional>

namespace tvw::rgs::addon {

class CAngleRulerObject final : public RulerTool<angleruler::Settings>
{
public:
    explicit CAngleRulerObject(const CreateParam& param);

private:
    void measure(double time) override;
    double outputValue(std::size_t index) override;

    /// Nothing where a node is missing. time [s].
    std::optional<double> angleAt(double time) const;
};

} // namespace tvw::rgs::addon
