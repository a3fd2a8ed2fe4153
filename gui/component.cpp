#include "gui/component.h"

namespace tvw::gui {

Component* componentOf(const Message& message)
{
    return dynamic_cast<Component*>(message.origin);
}

std::string tagOf(const Component* component)
{
    std::string tag;
    if (component != nullptr) {
        ReturnValue<std::string> out(tag);
        component->typeName(out);
    }
    return tag;
}

Component& rootOf(Component& component)
{
    Component* root = &component;
    while (root->parent() != nullptr)
        root = root->parent();
    return *root;
}

int effectiveTooltipId(const Component& component)
{
    const Component* at = &component;
    while (at->tooltipId() == kNoId && at->parent() != nullptr)
        at = at->parent();
    return at->tooltipId();
}

Component* tooltipLabel(Component& component)
{
    const int id = effectiveTooltipId(component);
    return id < 0 ? nullptr : rootOf(component).findById(id);
}

} // namespace tvw::gui
