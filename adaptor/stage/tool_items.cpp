#include "adaptor/stage/tool_items.h"

#include "core/instance.h"
#include "util/xml/number.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::stage {

using core::configadaptor::Node;
using core::configadaptor::NodeKind;

namespace {

void collect(Node& node, const std::string& group, std::vector<ToolItem>& out)
{
    for (Node* const child : node.children()) {
        if (child->kind() == NodeKind::Group)
            collect(*child, group.empty() ? child->label() : group + "/" + child->label(), out);
        else
            out.push_back({child, group});
    }
}

/// Whether a query names the item: its label, or that with groups before it.
bool isNamedBy(const ToolItem& item, const std::string& query)
{
    const std::string path = "/" + (item.group.empty() ? "" : item.group + "/") + item.label();
    return path.ends_with("/" + query);
}

bool isExactly(const ToolItem& item, const std::string& query)
{
    return query == (item.group.empty() ? item.label() : item.group + "/" + item.label());
}

Status wrongValue(const ToolItem& item, const std::string& value)
{
    return Status::failure("the " + std::string(kindName(item.node->kind())) + " \"" + item.label() +
                           "\" does not take the value " + value);
}

} // namespace

std::vector<ToolItem> toolItems(core::Instance& instance)
{
    std::vector<ToolItem> items;
    if (instance.configuration())
        collect(*instance.configuration(), {}, items);
    return items;
}

Result<ToolItem> findToolItem(core::Instance& instance, const std::string& label)
{
    using Answer = Result<ToolItem>;
    std::vector<ToolItem> found;
    for (const ToolItem& item : toolItems(instance)) {
        if (isExactly(item, label))
            return item;
        if (isNamedBy(item, label))
            found.push_back(item);
    }
    if (found.empty())
        return Answer::failure("\"" + instance.name() + "\" has no item \"" + label + "\"");
    if (found.size() > 1)
        return Answer::failure("\"" + instance.name() + "\" has " + std::to_string(found.size()) +
                               " items \"" + label + "\": name the group too, as in \"" +
                               found.front().group + "/" + found.front().label() + "\"");
    return found.front();
}

Status setToolItem(const ToolItem& item, double value)
{
    switch (item.node->kind()) {
    case NodeKind::Spinner:
    case NodeKind::IntSpinner:
    case NodeKind::CheckBox:
    case NodeKind::ComboBox:
        if (!std::isfinite(value))
            return wrongValue(item, "that is no number");
        item.node->change(value);
        return {};
    default:
        return wrongValue(item, std::to_string(value));
    }
}

Status setToolItem(const ToolItem& item, const std::string& text)
{
    switch (item.node->kind()) {
    case NodeKind::TextBox:
        item.node->changeText(text);
        return {};
    case NodeKind::ComboBox: {
        const std::vector<std::string> choices = item.node->choices();
        if (std::find(choices.begin(), choices.end(), text) == choices.end())
            return wrongValue(item, "\"" + text + "\"");
        item.node->changeText(text);
        return {};
    }
    case NodeKind::CheckBox:
        if (text == "true" || text == "false")
            return setToolItem(item, text == "true" ? 1.0 : 0.0);
        [[fallthrough]];
    case NodeKind::Spinner:
    case NodeKind::IntSpinner: {
        const auto value = util::xml::number(text);
        return value ? setToolItem(item, *value) : wrongValue(item, "\"" + text + "\"");
    }
    default:
        return wrongValue(item, "\"" + text + "\"");
    }
}

const char* kindName(NodeKind kind)
{
    switch (kind) {
    case NodeKind::Spinner:
        return "spinner";
    case NodeKind::IntSpinner:
        return "integer";
    case NodeKind::CheckBox:
        return "checkbox";
    case NodeKind::TextBox:
        return "text";
    case NodeKind::ComboBox:
        return "combobox";
    case NodeKind::Button:
        return "button";
    default:
        return "label";
    }
}

} // namespace tvw::rgs::stage
