#include "util/xml/element.h"

#include "util/xml/arena.h"

#include <charconv>
#include <memory>
#include <utility>
#include <vector>

namespace tvw::util::xml {

namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;

/// What lookups that find nothing answer. Made on first use, never written to.
const Element& sharedEmpty()
{
    static const Element empty;
    return empty;
}

std::uint32_t nextCapacity(std::uint32_t capacity)
{
    return checkedSize(std::max<std::size_t>(4, std::size_t{capacity} * 2));
}

} // namespace

Element::Element(Kind kind, std::string_view name) : kind_(static_cast<std::uint8_t>(kind))
{
    Element::setName(name);
}

Element::Element(const Element& other)
{
    Element::assign(other);
}

Element::Element(Element&& other) noexcept
{
    if (other.ownsArena_) {
        take(other);
    } else {
        Element::assign(other);
    }
}

Element& Element::operator=(const Element& other)
{
    assign(other);
    return *this;
}

Element& Element::operator=(Element&& other) noexcept
{
    if (this == &other) {
        return *this;
    }
    if (ownsArena_ && other.ownsArena_) {
        release();
        take(other);
    } else {
        assign(other);
    }
    return *this;
}

Element::~Element()
{
    release();
}

/// Gives the memory back if it is ours. The fields then are void.
void Element::release() noexcept
{
    if (ownsArena_) {
        delete arena_;
        arena_ = nullptr;
    }
}

/// Drops what the element holds, but not the memory.
void Element::forget() noexcept
{
    name_ = nullptr;
    children_ = nullptr;
    attributes_ = nullptr;
    nameSize_ = childCount_ = childCapacity_ = attributeCount_ = attributeCapacity_ = 0;
    kind_ = 0;
}

/// Moves the tree of a root here. Nothing below it refers to the root itself.
void Element::take(Element& other) noexcept
{
    arena_ = std::exchange(other.arena_, nullptr);
    name_ = other.name_;
    children_ = other.children_;
    attributes_ = other.attributes_;
    nameSize_ = other.nameSize_;
    childCount_ = other.childCount_;
    childCapacity_ = other.childCapacity_;
    attributeCount_ = other.attributeCount_;
    attributeCapacity_ = other.attributeCapacity_;
    kind_ = other.kind_;
    other.forget();
}

void Element::clear()
{
    release();
    forget();
}

Arena& Element::arena()
{
    if (arena_ == nullptr) {
        arena_ = new Arena;
    }
    return *arena_;
}

void Element::assign(const Element& other)
{
    if (this == &other) {
        return;
    }
    if (!ownsArena_) {
        copyTree(other, *arena_);
        return;
    }
    // Other may live in the memory that is given back: copy first.
    Element copy;
    copy.copyTree(other, copy.arena());
    release();
    take(copy);
}

void Element::copyFields(const Element& other, Arena& into)
{
    name_ = into.copy(other.name());
    nameSize_ = other.nameSize_;
    kind_ = other.kind_;
    attributeCount_ = attributeCapacity_ = other.attributeCount_;
    AttributeRecord* const records = into.array<AttributeRecord>(other.attributeCount_);
    for (std::uint32_t i = 0; i < other.attributeCount_; ++i) {
        const Attribute from = other.attributeAt(i);
        const auto valueSize = static_cast<std::uint32_t>(from.value.size());
        records[i] = {into.copy(from.key), into.copy(from.value),
                      static_cast<std::uint32_t>(from.key.size()), valueSize, valueSize};
    }
    attributes_ = records;
}

/// Becomes a copy of other, all of it in `into`. The old tree is read until the end, since other
/// may be part of it; a list of work instead of recursion bears any depth.
void Element::copyTree(const Element& other, Arena& into)
{
    struct Work
    {
        const Element* from;
        Element* to;
    };
    Element root(&into);
    std::vector<Work> open{{&other, &root}};
    while (!open.empty()) {
        const auto [from, to] = open.back();
        open.pop_back();
        to->copyFields(*from, into);
        const std::uint32_t count = from->childCount_;
        Element** const children = into.array<Element*>(count);
        Element* const copies = into.array<Element>(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            children[i] = new (copies + i) Element(&into);
            open.push_back({from->children_[i], children[i]});
        }
        to->children_ = children;
        to->childCount_ = to->childCapacity_ = count;
    }
    const bool owns = ownsArena_;
    Arena* const memory = arena_;
    take(root);
    arena_ = memory;
    ownsArena_ = owns;
}

void Element::setName(std::string_view name)
{
    const std::uint32_t size = checkedSize(name.size());
    name_ = size == 0 ? nullptr : arena().copy(name);
    nameSize_ = size;
}

Element& Element::addChild(const Element& element)
{
    if (element.isEmpty()) {
        return *this;
    }
    Arena& memory = arena();
    auto* const child = new (memory.array<Element>(1)) Element(&memory);
    child->copyTree(element, memory);
    if (childCount_ == childCapacity_) {
        childCapacity_ = nextCapacity(childCapacity_);
        children_ = regrown(memory, children_, childCount_, childCapacity_);
    }
    children_[childCount_++] = child;
    return *child;
}

std::size_t Element::childCount(std::string_view name) const
{
    std::size_t count = 0;
    for (const Element& child : children()) {
        count += child.name() == name ? 1 : 0;
    }
    return count;
}

Element* Element::findChild(std::string_view name, std::size_t n)
{
    for (Element& child : children()) {
        if (child.name() == name && n-- == 0) {
            return &child;
        }
    }
    return nullptr;
}

const Element& Element::child(std::string_view name, std::size_t n) const
{
    for (const Element& child : children()) {
        if (child.name() == name && n-- == 0) {
            return child;
        }
    }
    return sharedEmpty();
}

const Element& Element::childAt(std::size_t i) const
{
    return i < childCount_ ? *children_[i] : sharedEmpty();
}

std::string_view Element::text() const
{
    for (const Element& child : children()) {
        if (child.kind() == Kind::Text) {
            return child.name();
        }
    }
    return {};
}

bool Element::removeChild(const Element& element)
{
    Element** const end = children_ + childCount_;
    Element** const found =
        std::find_if(children_, end, [&](const Element* child) { return child->equals(element); });
    if (found == end) {
        return false;
    }
    std::copy(found + 1, end, found);
    --childCount_;
    return true;
}

bool Element::equals(const Element& other) const
{
    if (kind_ != other.kind_ || name() != other.name() ||
        attributeCount_ != other.attributeCount_) {
        return false;
    }
    for (std::uint32_t i = 0; i < attributeCount_; ++i) {
        const Attribute a = attributeAt(i);
        const Attribute b = other.attributeAt(i);
        if (a.key != b.key || a.value != b.value) {
            return false;
        }
    }
    return true;
}

std::uint32_t Element::indexOfLast(std::string_view key) const
{
    for (std::uint32_t i = attributeCount_; i-- > 0;) {
        if (attributeAt(i).key == key) {
            return i;
        }
    }
    return kNone;
}

std::uint32_t Element::addAttribute(std::string_view key)
{
    Arena& memory = arena();
    const std::uint32_t keySize = checkedSize(key.size());
    if (attributeCount_ == attributeCapacity_) {
        attributeCapacity_ = nextCapacity(attributeCapacity_);
        attributes_ = regrown(memory, attributes_, attributeCount_, attributeCapacity_);
    }
    attributes_[attributeCount_] = {memory.copy(key), nullptr, keySize, 0, 0};
    return attributeCount_++;
}

/// Overwrites in place where the value fits; else takes at least twice the room, so that a value
/// that is set again and again costs a bounded amount of memory.
void Element::setValue(std::uint32_t index, std::string_view value)
{
    AttributeRecord& record = attributes_[index];
    const std::uint32_t size = checkedSize(value.size());
    if (size > record.valueCapacity) {
        const std::size_t room = std::max<std::size_t>(size, std::size_t{record.valueCapacity} * 2);
        record.value = arena().bytes(room);
        record.valueCapacity = checkedSize(room);
    }
    if (size != 0) {
        std::memmove(record.value, value.data(), size);
    }
    record.valueSize = size;
}

AttributeReference Element::attribute(std::string_view key)
{
    const std::uint32_t index = indexOfLast(key);
    return {*this, index != kNone ? index : addAttribute(key)};
}

AttributeReference& AttributeReference::operator=(std::string_view value)
{
    owner_->setValue(index_, value);
    return *this;
}

void Element::setAttribute(std::string_view key, std::string_view value)
{
    attribute(key) = value;
}

std::string Element::attributeValue(std::string_view key) const
{
    const std::uint32_t index = indexOfLast(key);
    return index == kNone ? std::string() : std::string(attributeAt(index).value);
}

std::string Element::findAttribute(std::string_view key) const
{
    for (std::uint32_t i = 0; i < attributeCount_; ++i) {
        if (const Attribute attribute = attributeAt(i); attribute.key == key) {
            return std::string(attribute.value);
        }
    }
    return {};
}

bool Element::hasAttribute(std::string_view key) const
{
    return indexOfLast(key) != kNone;
}

Data::Data(double value) : Element(Kind::Text, {})
{
    char room[32];
    const auto end = std::to_chars(room, room + sizeof room, value, std::chars_format::general, 6);
    Element::setName({room, end.ptr});
}

Data::Data(Integer value) : Element(Kind::Text, {})
{
    char room[32];
    const auto end = value.isUnsigned ? std::to_chars(room, room + sizeof room,
                                                      static_cast<std::uint64_t>(value.bits))
                                      : std::to_chars(room, room + sizeof room, value.bits);
    Element::setName({room, end.ptr});
}

} // namespace tvw::util::xml
