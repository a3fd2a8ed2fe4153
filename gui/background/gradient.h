/// A linear gradient.
#pragma once

#include "gui/background.h"
#include "gui/types.h"

#include <string>
#include <vector>

namespace tvw::gui::background {

struct GradientStop
{
    double position = 0.0; ///< from 0 to 1 on the way from start to end
    Color color;
};

struct GradientFields
{
    double startX = 0.0, startY = 0.5, endX = 1.0, endY = 0.5;
    std::string spread;      ///< "repeat", "mirror", else the ends' colours go on
    std::string coordinates; ///< "absolute": pixels, else parts of the component's size
};

class LinearGradient : public Background
{
public:
    static constexpr const char* kType = "gradient-linear";

    explicit LinearGradient(const util::xml::Element& element);

    void paint(Component&) const override {}
    void writeXml(util::xml::Element& element) const override;
    Background* clone() const override { return new LinearGradient(*this); }

    [[nodiscard]] const GradientFields& fields() const { return fields_; }
    [[nodiscard]] const std::vector<GradientStop>& stops() const { return stops_; }

private:
    GradientFields fields_;
    std::vector<GradientStop> stops_;
};

} // namespace tvw::gui::background
