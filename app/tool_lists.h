/// The tool types by category: fly-outs and menus that create them.
#pragma once

#include "gui/component.h"

#include <functional>
#include <string>
#include <vector>

namespace tvw::rgs::core {
class Tool;
}

namespace tvw::rgs::app {

/// In the order of the buttons and of the bits of their masks.
enum class Category { Vehicle, Camera, Accessory, Template };
inline constexpr int kCategories = 4;

/// By the last of a tool's categories that is "Vehicle" or "Camera"; a saved tool is a template.
[[nodiscard]] Category categoryOf(const core::Tool& tool);

/// The listed tools of a category, by name.
[[nodiscard]] std::vector<core::Tool*> toolsOf(Category category);

/// The component of a fly-out's entry: button 0 is the entry, button 2 its information. Null when
/// the layout can't be built.
[[nodiscard]] gui::Component* makeToolEntry(const core::Tool& tool);

/// Fills `page`, the list of a fly-out, with the category's entries, three in a row; what it holds
/// goes. added: hears of each entry and its tool.
void fillToolPage(gui::Component& page, Category category,
                  const std::function<void(gui::Component& entry, core::Tool& tool)>& added);

} // namespace tvw::rgs::app
