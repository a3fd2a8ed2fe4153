/// A tree as a mixin: a node owns its children and knows its parent.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tvw {

/// Base of T, the type of the tree's nodes. Children are ended by their destroy() where T has one,
/// else by delete. The hooks are empty by default; in the destructors of this mixin T's own are
/// gone already, so a T that needs them at its end calls detach() in its own destructor.
/// The order of the virtual functions is frozen.
template <class T>
class Composite_Dynamic
{
public:
    Composite_Dynamic() = default;
    Composite_Dynamic(const Composite_Dynamic&) = delete;
    Composite_Dynamic& operator=(const Composite_Dynamic&) = delete;

    /// The T that contains this mixin.
    [[nodiscard]] virtual T* self() = 0;
    virtual void willAttach() {}
    virtual void didAttach() {}
    virtual void willDetach() {}
    virtual void didDetach() {}
    virtual void childAdded(T* /*child*/, std::size_t /*index*/) {}
    virtual void childRemoved(T* /*child*/, std::size_t /*index*/) {}

    /// Leaves the parent, then ends the children from the first on.
    virtual ~Composite_Dynamic();

    /// Takes the child behind the others and owns it from now on; it leaves its present parent
    /// first. False, and nothing changes, if it is null, this node or one of its ancestors.
    bool addChild(T* child) { return insertChild(child, children_.size()); }
    /// The same ahead of the child that stands at that place once this one has left its present
    /// parent; behind the last for a larger index.
    bool insertChild(T* child, std::size_t index);
    /// Leaves the parent; whoever calls owns the node then. Nothing if it has none.
    void detach();

    [[nodiscard]] T* parent() const noexcept { return parent_; }
    [[nodiscard]] std::size_t childCount() const noexcept { return children_.size(); }
    /// Null if i is out of range.
    [[nodiscard]] T* childAt(std::size_t i) const noexcept
    {
        return i < children_.size() ? children_[i] : nullptr;
    }
    [[nodiscard]] const std::vector<T*>& children() const noexcept { return children_; }

private:
    [[nodiscard]] static Composite_Dynamic& mixinOf(T& node) noexcept { return node; }
    [[nodiscard]] bool isWithin(const Composite_Dynamic& ancestor) const noexcept;

    std::vector<T*> children_;
    T* parent_ = nullptr;
};

template <class T>
Composite_Dynamic<T>::~Composite_Dynamic()
{
    detach();
    while (!children_.empty()) {
        T* const child = children_.front();
        if constexpr (requires { child->destroy(); }) {
            child->destroy();
        } else {
            delete child;
        }
        if (!children_.empty() && children_.front() == child) {
            mixinOf(*child).detach(); // it outlives its destroy(): not a heap object
        }
    }
}

template <class T>
bool Composite_Dynamic<T>::isWithin(const Composite_Dynamic& ancestor) const noexcept
{
    const Composite_Dynamic* node = this;
    while (node != nullptr && node != &ancestor) {
        node = node->parent_;
    }
    return node != nullptr;
}

template <class T>
bool Composite_Dynamic<T>::insertChild(T* child, std::size_t index)
{
    if (child == nullptr || isWithin(mixinOf(*child))) {
        return false;
    }
    Composite_Dynamic& added = mixinOf(*child);
    added.detach();
    added.willAttach();
    index = std::min(index, children_.size());
    children_.insert(children_.begin() + static_cast<std::ptrdiff_t>(index), child);
    added.parent_ = self();
    added.didAttach();
    childAdded(child, index);
    return true;
}

template <class T>
void Composite_Dynamic<T>::detach()
{
    if (parent_ == nullptr) {
        return;
    }
    const auto placeIn = [this](const std::vector<T*>& nodes) {
        const auto isThis = [this](T* child) { return &mixinOf(*child) == this; };
        return std::find_if(nodes.begin(), nodes.end(), isThis);
    };
    Composite_Dynamic& parent = mixinOf(*parent_);
    const auto index = placeIn(parent.children_) - parent.children_.begin();
    willDetach();
    const auto place = placeIn(parent.children_);
    if (place == parent.children_.end()) {
        return; // the hook has done it
    }
    T* const child = *place;
    parent.children_.erase(place);
    parent_ = nullptr;
    didDetach();
    parent.childRemoved(child, static_cast<std::size_t>(index));
}

} // namespace tvw
