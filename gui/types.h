/// Small values of the layouts.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tvw::gui {

/// Logical pixels; high-density screens scale them.
struct Size
{
    int width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

/// Logical pixels, from the parent's top left corner; a window's from the screen's.
struct Point
{
    int x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

/// Each channel from 0 to 255.
struct Color
{
    int red = 0, green = 0, blue = 0, alpha = 255;
    bool operator==(const Color&) const = default;
};

enum class HAlign { None, Left, Right, Center };
enum class VAlign { None, Top, Bottom, Center };

/// How the frame of a container or a label is drawn.
enum class FrameStyle { None, Normal, Thin, Sunken };

/// Sides of a container, in the order in which their numbers and values are passed.
enum class Side { Top = 0, Right = 1, Bottom = 2, Left = 3 };
using Sides = std::array<int, 4>; ///< by Side

/// The numbers from first up to, without it, end.
struct MessageRange
{
    std::uint32_t first = 0, end = 0;
    bool operator==(const MessageRange&) const = default;
};

/// What the value of a key message points at: Qt's key code and modifiers.
struct KeyStroke
{
    int key = 0;
    std::uint32_t modifiers = 0;
    bool autoRepeat = false;
};

inline constexpr int kNoId = -1;
inline constexpr Size kUnlimited{0x4FFFFFFF, 0x4FFFFFFF}; ///< the maximum size by default
inline constexpr int kWidgetLimit = 0xFFFFFF;             ///< the widget layer's largest extent

} // namespace tvw::gui
