/// Backgrounds that paint.
#pragma once

#include "gui/background/color.h"
#include "gui/background/gradient.h"

namespace tvw::gui::background::qt {

class ColorFill : public background::ColorFill
{
public:
    using background::ColorFill::ColorFill;
    void paint(Component& component) const override;
    Background* clone() const override { return new ColorFill(*this); }
};

class LinearGradient : public background::LinearGradient
{
public:
    using background::LinearGradient::LinearGradient;
    void paint(Component& component) const override;
    Background* clone() const override { return new LinearGradient(*this); }
};

} // namespace tvw::gui::background::qt
