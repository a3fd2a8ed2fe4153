/// A tool's configuration items by the labels that its window shows.
#pragma once

#include "core/configadaptor/node.h"
#include "util/result.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::stage {

struct ToolItem
{
    core::configadaptor::Node* node;
    std::string group; ///< labels of the groups around it, joined by "/"
    const std::string& label() const { return node->label(); }
};

/// All items, in the order of their declaration.
std::vector<ToolItem> toolItems(core::Instance& instance);

/// The item of a label; "Group/Label", with as many groups as tell them apart, where a label stands
/// twice. The reason when there is none or it is not the only one.
Result<ToolItem> findToolItem(core::Instance& instance, const std::string& label);

/// As the window does it: within the bounds, with the tool's callback and its undo. The reason for a
/// value that the item does not take.
Status setToolItem(const ToolItem& item, double value);
Status setToolItem(const ToolItem& item, const std::string& text);

/// "spinner", "integer", "checkbox", "text", "combobox", "button", "label".
const char* kindName(core::configadaptor::NodeKind kind);

} // namespace tvw::rgs::stage
