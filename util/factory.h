/// Factories that build objects from XML elements.
#pragma once

#include "util/dynamicobject.h"
#include "util/returnvalue.h"
#include "util/singleton.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tvw::util::xml {
class Element;
}

namespace tvw {

/// The one list of factories of T in the process, asked in the order in which they were added.
/// Code that calls addFactory, create or a factory's canCreate includes "util/xml/element.h".
/// [main thread]
template <class T, class Element = util::xml::Element>
class AbstractFactory : public Singleton<AbstractFactory<T, Element>>
{
public:
    /// Builds one kind of T. The order of the virtual functions, behind DynamicObject's two, is
    /// frozen.
    class Factory : public DynamicObject
    {
    public:
        /// The tag that it builds, for example "border".
        virtual void name(ReturnValue<std::string>& out) const = 0;
        /// By default: the element's name is name(), to the letter.
        [[nodiscard]] virtual bool canCreate(const Element& element) const
        {
            std::string tag;
            ReturnValue<std::string> out(tag);
            name(out);
            return element.name() == tag;
        }
        /// A new T, which the caller owns; null when it cannot build one from this element.
        [[nodiscard]] virtual T* create(const Element& element) const = 0;
    };

    ~AbstractFactory() { clear(); }

    /// Takes the factory over and asks it behind the others. Null adds nothing.
    void addFactory(Factory* factory)
    {
        if (factory != nullptr) {
            factories_.emplace_back(factory);
        }
    }

    /// What the first factory that can create from the element makes of it, null included; no other
    /// is asked then. Null if there is none.
    [[nodiscard]] T* create(const Element& element) const
    {
        for (const DynamicPtr<Factory>& factory : factories_) {
            if (factory->canCreate(element)) {
                return factory->create(element);
            }
        }
        return nullptr;
    }

    /// Destroys the factories from the last to the first.
    void clear()
    {
        while (!factories_.empty()) {
            factories_.pop_back();
        }
    }

    [[nodiscard]] bool hasFactory(const std::string& name) const
    {
        for (const DynamicPtr<Factory>& factory : factories_) {
            std::string present;
            ReturnValue<std::string> out(present);
            factory->name(out);
            if (present == name) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] std::size_t factoryCount() const noexcept { return factories_.size(); }

private:
    friend Singleton<AbstractFactory<T, Element>>;
    AbstractFactory() = default;

    std::vector<DynamicPtr<Factory>> factories_;
};

} // namespace tvw
