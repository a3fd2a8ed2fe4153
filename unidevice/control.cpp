#include "unidevice/control.h"

#include "unidevice/device.h"
#include "util/xml/element.h"

#include <algorithm>
#include <cmath>

namespace tvw::unidevice {

using util::xml::Element;

Control::Control(Device* owner, std::uint32_t kinds, double movement)
    : kindMask(kinds), threshold(movement), device(owner)
{
}

Control::Control(const Control& other)
    : kindMask(other.kindMask), previous(other.previous), current(other.current),
      threshold(other.threshold), type(other.type), index(other.index),
      description(other.description), device(other.device)
{
}

Control::~Control()
{
    dropTargets();
}

Element& Control::writeXml(Element& element) const
{
    if (device)
        device->writeXml(element);
    else
        element = util::xml::Tag("control");
    element.setAttribute("type", type);
    element.setAttribute("index", std::to_string(index));
    element.addChild(util::xml::TagWithData("description", description));
    return element;
}

bool Control::matches(const Element& element) const
{
    if (device && !deviceMatches(element, *device))
        return false;
    if (element.attributeValue("type") != type)
        return false;
    const std::string place = element.attributeValue("index");
    return place.empty() || util::xml::integer(place) == index;
}

bool Control::supportsEffect(EffectKind)
{
    return false;
}

Effect* Control::createEffect(EffectKind)
{
    return nullptr;
}

bool Control::hasChanged() const
{
    return std::abs(previous - current) > threshold;
}

void Control::removeTarget(ControlTarget* target)
{
    const auto place = std::find(targets_.begin(), targets_.end(), target);
    if (place != targets_.end())
        targets_.erase(place);
}

void Control::dropTargets()
{
    while (!targets_.empty()) {
        ControlTarget* const target = targets_.back();
        targets_.pop_back();
        target->controlDeleted(this);
    }
}

} // namespace tvw::unidevice
