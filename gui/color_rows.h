/// How a colour stands in a layout file: four attributes.
#pragma once

#include "gui/attributes.h"

namespace tvw::gui {

inline constexpr Row<Color> kColorRows[] = {
    row<&Color::red>("r"),
    row<&Color::green>("g"),
    row<&Color::blue>("b"),
    row<&Color::alpha>("a"),
};

} // namespace tvw::gui
