/// One colour.
#pragma once

#include "gui/background.h"
#include "gui/types.h"

namespace tvw::gui::background {

class ColorFill : public Background
{
public:
    static constexpr const char* kType = "color";

    explicit ColorFill(const util::xml::Element& element);

    void paint(Component&) const override {}
    void writeXml(util::xml::Element& element) const override;
    Background* clone() const override { return new ColorFill(*this); }

    [[nodiscard]] const Color& color() const { return color_; }

private:
    Color color_;
};

} // namespace tvw::gui::background
