/// A colour of a layout as Qt takes it.
#pragma once

#include "gui/types.h"

#include <QColor>

#include <algorithm>

namespace tvw::gui {

inline QColor toQColor(const Color& color)
{
    const auto channel = [](int value) { return std::clamp(value, 0, 255); };
    return {channel(color.red), channel(color.green), channel(color.blue), channel(color.alpha)};
}

} // namespace tvw::gui
