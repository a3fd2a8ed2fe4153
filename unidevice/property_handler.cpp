#include "unidevice/property_handler.h"

#include "util/xml/element.h"

namespace tvw::unidevice {

using util::xml::Element;

PropertyHandler::PropertyHandler()
{
    DeviceHub::instance().addListener(this);
}

PropertyHandler::~PropertyHandler()
{
    if (DeviceHub::exists())
        DeviceHub::instance().removeListener(this);
    for (Property* const property : properties_)
        property->destroy();
}

Property* PropertyHandler::propertyAt(int index) const
{
    const bool inRange = index >= 0 && index < count();
    return inRange ? properties_[static_cast<std::size_t>(index)] : nullptr;
}

Property* PropertyHandler::findProperty(const std::string& name) const
{
    for (Property* const property : properties_) {
        if (property->name() == name)
            return property;
    }
    return nullptr;
}

Property* PropertyHandler::addProperty(const std::string& name, std::uint32_t kindMask,
                                       Property::Factory& factory)
{
    if (Property* const known = findProperty(name))
        return known;
    Property* const made = factory.create(name, kindMask);
    if (made)
        properties_.push_back(made);
    return made;
}

void PropertyHandler::writeProfile(Element& profile, const std::string& name) const
{
    profile = util::xml::Tag("profile");
    profile.setAttribute("name", name);
    for (const Property* const property : properties_) {
        Element element;
        property->writeXml(element);
        Element control = property->pendingControl();
        if (property->control())
            property->control()->writeXml(control);
        if (!control.isEmpty())
            element.addChild(control);
        profile.addChild(element);
    }
}

int PropertyHandler::readProfile(const Element& element, std::string& profileName)
{
    if (element.name() != "profile" && element.name() != "inputprofile")
        return kNoProfile;
    const bool isWrapped = element.childCount("profile") > 0;
    const Element& profile = isWrapped ? element.child("profile") : element;
    for (Property* const property : properties_) {
        property->bind(nullptr);
        property->pendingControl().clear();
    }
    if (profile.hasAttribute("name"))
        profileName = profile.attributeValue("name");
    int missing = 0;
    for (const Element& child : profile.children()) {
        if (child.name() == "property")
            missing += readProperty(child);
    }
    return missing;
}

int PropertyHandler::readProperty(const Element& element)
{
    Property* const property = findProperty(element.attributeValue("name"));
    if (!property)
        return 0;
    property->readXml(element);
    const Element& stored = element.child("control");
    if (stored.isEmpty())
        return 0;
    Control* const control = DeviceHub::instance().findControl(stored);
    property->bind(control);
    if (control)
        property->pendingControl().clear();
    else
        property->pendingControl() = stored;
    return control ? 0 : 1;
}

int PropertyHandler::retryPending()
{
    int met = 0;
    for (Property* const property : properties_) {
        if (property->control() || property->pendingControl().isEmpty())
            continue;
        Control* const control = DeviceHub::instance().findControl(property->pendingControl());
        if (!control)
            continue;
        property->bind(control);
        property->pendingControl().clear();
        ++met;
    }
    return met;
}

void PropertyHandler::keepBindingsOf(const Device& device)
{
    for (Property* const property : properties_) {
        Control* const control = property->control();
        if (!control || !control->dependsOn(device))
            continue;
        control->writeXml(property->pendingControl());
        holdsLost_ ? property->lose() : static_cast<void>(property->bind(nullptr));
    }
}

void PropertyHandler::holdLost(bool on)
{
    holdsLost_ = on;
    for (Property* const property : properties_)
        property->forgetLost();
}

void PropertyHandler::deviceAdded(Device*)
{
    retryPending();
}

void PropertyHandler::deviceRemoved(Device* device)
{
    keepBindingsOf(*device);
}

} // namespace tvw::unidevice
