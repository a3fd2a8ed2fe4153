#include "unidevice/property.h"

#include "util/xml/element.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::unidevice {

using util::xml::Element;

namespace {

struct Field
{
    const char* tag;
    double Property::*number;
};

constexpr Field kFields[] = {
    {"multiplier", &Property::multiplier},
    {"exponent", &Property::exponent},
    {"deadzone", &Property::deadzone},
    {"offset", &Property::offset},
};

} // namespace

Property::Property(std::string name, std::uint32_t kindMask)
    : kindMask_(kindMask), name_(std::move(name)), pending_(std::make_unique<Element>())
{
}

Property::~Property()
{
    bind(nullptr);
}

void Property::controlDeleted(Control* control)
{
    if (control == control_)
        control_ = nullptr;
}

void Property::lose()
{
    const double last = raw();
    bind(nullptr);
    lost_ = last;
}

double Property::value()
{
    const double r = raw();
    const double sign = r < 0.0 ? -1.0 : 1.0;
    const double beyond = std::max(0.0, std::abs(r) - deadzone);
    const double stretched = beyond / (1.0 - deadzone);
    const double shaped = exponent == 1.0 ? stretched : std::pow(stretched, exponent);
    return shaped * sign * multiplier + offset;
}

std::uint32_t Property::bind(Control* control)
{
    if (control_)
        control_->removeTarget(this);
    control_ = control;
    lost_ = 0.0;
    if (!control_)
        return kind::any;
    control_->addTarget(this);
    return kindMask_ & control_->kindMask;
}

void Property::writeXml(Element& element) const
{
    element = util::xml::Tag("property");
    element.setAttribute("name", name_);
    for (const Field& field : kFields)
        element.addChild(util::xml::TagWithData(field.tag, this->*field.number));
}

void Property::readXml(const Element& element)
{
    for (const Field& field : kFields) {
        if (const auto number = util::xml::number(element.child(field.tag).text()))
            this->*field.number = *number;
    }
}

Property* Property::Factory::create(std::string name, std::uint32_t kindMask)
{
    return new Property(std::move(name), kindMask);
}

} // namespace tvw::unidevice
