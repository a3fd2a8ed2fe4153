/// The factory of a kind of component or background, for its tag or type.
#pragma once

#include "gui/background.h"
#include "gui/component.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <string>

namespace tvw::gui {

/// Kind has a KindInfo kKind and is built from the element.
template <class Kind>
class ComponentFactory : public AbstractFactory<Component>::Factory
{
public:
    void name(ReturnValue<std::string>& out) const override { out.assign(Kind::kKind.tag); }
    Component* create(const util::xml::Element& element) const override
    {
        return new Kind(element);
    }
};

/// Builds from a `background` element whose `type` is Kind::kType.
template <class Kind>
class BackgroundFactory : public AbstractFactory<Background>::Factory
{
public:
    void name(ReturnValue<std::string>& out) const override { out.assign(Kind::kType); }
    bool canCreate(const util::xml::Element& element) const override
    {
        return element.attributeValue("type") == Kind::kType;
    }
    Background* create(const util::xml::Element& element) const override
    {
        return new Kind(element);
    }
};

/// Adds the factory unless one of its name is there: then it is dropped.
template <class T>
void addFactoryOnce(typename AbstractFactory<T>::Factory* factory)
{
    DynamicPtr<typename AbstractFactory<T>::Factory> owned(factory);
    std::string added;
    ReturnValue<std::string> out(added);
    factory->name(out);
    if (!AbstractFactory<T>::instance().hasFactory(added))
        AbstractFactory<T>::instance().addFactory(owned.release());
}

} // namespace tvw::gui
