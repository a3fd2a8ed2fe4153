/// Who hears that the user changed a configuration item.
#pragma once

#include <string>

namespace tvw::rgs::core::configadaptor {
class Node;
}

namespace tvw::rgs {

/// `CInterface::Callback`. Not owned by anybody who holds it; must live as long as the items.
class CInterfaceCallback
{
public:
    /// An item with this label was changed or a button pressed; the new value stands in the item's
    /// variable already, and an undo named after the label is open. Also called with "REALUNDO" or
    /// "REALREDO" before an action's label, with no undo open. [live]
    virtual void itemChanged(const std::string& label) = 0;

    /// The same for an item of a template's own configuration. [live]
    virtual void nodeChanged(core::configadaptor::Node* item);
    virtual void nodePressed(core::configadaptor::Node* item);

protected:
    ~CInterfaceCallback() = default;
};

inline void CInterfaceCallback::nodeChanged(core::configadaptor::Node*) {}
inline void CInterfaceCallback::nodePressed(core::configadaptor::Node*) {}

} // namespace tvw::rgs
