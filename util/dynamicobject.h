/// The root of objects that are ended through a base pointer, and the marker of heap objects.
#pragma once

#include <memory>

namespace tvw {

/// What a factory hands out, and what an owning list holds. It is ended by destroy(), never by a
/// bare delete from outside. The order of the virtual functions is frozen.
class DynamicObject
{
public:
    DynamicObject() = default;
    DynamicObject(const DynamicObject&) = default;
    DynamicObject& operator=(const DynamicObject&) = default;

    virtual void destroy() { delete this; }
    virtual ~DynamicObject() = default;
};

/// Ends an object that may be null.
template <class T>
void destroy(T* object)
{
    if (object != nullptr) {
        object->destroy();
    }
}

/// The deleter of an owning pointer to what has a destroy().
struct Destroyer
{
    template <class T>
    void operator()(T* object) const
    {
        object->destroy();
    }
};

/// Sole ownership of an object that is ended by destroy().
template <class T>
using DynamicPtr = std::unique_ptr<T, Destroyer>;

/// Inherited, not publicly, by classes that always live on the heap, made by a factory or by their
/// owner. It holds nothing.
template <class T>
class DynamicCreator
{
protected:
    DynamicCreator() = default;
    DynamicCreator(const DynamicCreator&) = default;
    DynamicCreator& operator=(const DynamicCreator&) = default;
    virtual ~DynamicCreator() = default;
};

} // namespace tvw
