/// The tree behind every text format of the system, with its own parser and writer.
///
/// This is no general XML: no namespaces, named entities, CDATA or DTD; text is bytes; a ">" ends a
/// tag even between quotes. Files of users depend on each of these quirks.
///
/// An Element is a value: a copy is deep. One that stands by itself owns the memory of everything
/// below it; its children live in that memory, so a reference to a child stays good while siblings
/// are added and while the root is moved, until the child is removed or the root is assigned,
/// cleared, parsed or destroyed. What removed and overwritten parts held is given back only then.
/// Views that are handed out (names, texts, values) end when that part is set again.
/// [main thread]
#pragma once

#include "util/result.h"
#include "util/xml/number.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

namespace tvw::util::xml {

class Arena;
class Builder;
class AttributeReference;

/// What an element stands for. Special is a "<!" construct. A Plain one writes nothing.
enum class Kind : std::uint32_t { Plain = 0, Tag = 1, Text = 2, Special = 4 };

/// What parse and loadFile return.
namespace code {
inline constexpr int ok = 0;
inline constexpr int fileUnreadable = 1; ///< or no such resource; the element is empty
inline constexpr int noRoot = 2;         ///< the text does not begin with a tag
inline constexpr int unclosed = 3;       ///< the text ends within an element
inline constexpr int mismatched = 4;     ///< a closing tag has another name
inline constexpr int badSyntax = 5;      ///< bad attribute, nothing behind the declaration, nested
                                         ///< deeper than kMaximumDepth, or more than 4 GiB
} // namespace code

inline constexpr std::size_t kMaximumDepth = 200; ///< of nested tags in a text that parse accepts

struct Attribute
{
    std::string_view key, value;
};

class Element
{
public:
    Element() = default;
    Element(const Element& other);
    Element(Element&& other) noexcept; ///< a child is copied, since its root owns its memory
    Element& operator=(const Element& other);
    Element& operator=(Element&& other) noexcept;

    // The order of the virtual functions is frozen.

    /// Becomes a deep copy of other, which may be this element or one below it.
    virtual void assign(const Element& other);
    virtual void setName(std::string_view name);
    /// Appends a deep copy and returns it. An empty element is not added: the answer is this one.
    virtual Element& addChild(const Element& element);
    virtual ~Element();

    [[nodiscard]] Kind kind() const { return Kind{kind_}; }
    /// The tag's name; of a text the text; of a "<!" construct what stands behind the "!".
    [[nodiscard]] std::string_view name() const { return {name_, nameSize_}; }
    /// Neither a name nor children. Attributes do not count.
    [[nodiscard]] bool isEmpty() const { return nameSize_ == 0 && childCount_ == 0; }
    void clear(); ///< back to a default-constructed element

    // Children. Lookups that find nothing return a shared empty element, so that they can be
    // chained.

    [[nodiscard]] std::size_t childCount() const { return childCount_; }
    [[nodiscard]] std::size_t childCount(std::string_view name) const;
    [[nodiscard]] const Element& child(std::string_view name, std::size_t n = 0) const;
    [[nodiscard]] const Element& childAt(std::size_t i) const;
    [[nodiscard]] Element* findChild(std::string_view name, std::size_t n = 0); ///< null if missing
    [[nodiscard]] Element& mutableChildAt(std::size_t i)
    {
        return *children_[i];
    } ///< i < childCount
    /// The first text among the children, else "".
    [[nodiscard]] std::string_view text() const;
    /// Removes the first child that equals element; whether there was one.
    bool removeChild(const Element& element);
    /// Same kind, name and attributes in the same order. Children are not compared.
    [[nodiscard]] bool equals(const Element& other) const;

    template <class E>
    class Range;
    [[nodiscard]] Range<const Element> children() const; ///< for (const Element& c : e.children())
    [[nodiscard]] Range<Element> children();

    // Attributes, in the order in which they were made.

    /// The value, which can be set: e.attribute("id") = "3". The last with that key; made, with an
    /// empty value, if missing.
    AttributeReference attribute(std::string_view key);
    void setAttribute(std::string_view key, std::string_view value);
    [[nodiscard]] std::string
    attributeValue(std::string_view key) const; ///< the last one's, else ""
    [[nodiscard]] std::string
    findAttribute(std::string_view key) const; ///< the first one's, else ""
    [[nodiscard]] bool hasAttribute(std::string_view key) const;
    [[nodiscard]] std::size_t attributeCount() const { return attributeCount_; }
    [[nodiscard]] Attribute attributeAt(std::size_t i) const ///< i < attributeCount()
    {
        const AttributeRecord& record = attributes_[i];
        return {{record.key, record.keySize}, {record.value, record.valueSize}};
    }

    // Text. A failed parse leaves what had been built.

    [[nodiscard]] int parse(std::string_view text); ///< a code
    /// Parses a file's content, or that of an embedded resource where path begins with ":".
    [[nodiscard]] int loadFile(const std::string& path);
    /// Replaces the file as a whole; on failure the old one stays. Lines end in a line feed.
    Status save(const std::string& path) const;
    [[nodiscard]] std::string toString() const; ///< what save writes: declaration and tree
    [[nodiscard]] std::string fragment() const; ///< the tree without the declaration

protected:
    Element(Kind kind, std::string_view name);

private:
    friend class AttributeReference;
    friend class Builder;

    struct AttributeRecord
    {
        const char* key;
        char* value;
        std::uint32_t keySize, valueSize, valueCapacity;
    };

    explicit Element(Arena* arena) : arena_(arena), ownsArena_(false) {}

    Arena& arena();
    std::size_t sizeHint() const;
    void release() noexcept;
    void forget() noexcept;
    void take(Element& other) noexcept;
    void copyFields(const Element& other, Arena& into);
    void copyTree(const Element& other, Arena& into);
    std::uint32_t indexOfLast(std::string_view key) const;
    std::uint32_t addAttribute(std::string_view key);
    void setValue(std::uint32_t index, std::string_view value);

    Arena* arena_ = nullptr; ///< the root's; null while the element holds nothing
    const char* name_ = nullptr;
    Element** children_ = nullptr;
    AttributeRecord* attributes_ = nullptr;
    std::uint32_t nameSize_ = 0;
    std::uint32_t childCount_ = 0;
    std::uint32_t childCapacity_ = 0;
    std::uint32_t attributeCount_ = 0;
    std::uint32_t attributeCapacity_ = 0;
    bool ownsArena_ = true; ///< false for a child
    std::uint8_t kind_ = 0; ///< a Kind, in a byte so that an element fills one cache line
};

/// Stands for the value of one attribute of an element that is not moved or cleared meanwhile.
class AttributeReference
{
public:
    AttributeReference(const AttributeReference&) = default;
    AttributeReference& operator=(std::string_view value);
    AttributeReference& operator=(const AttributeReference& other) { return *this = other.view(); }
    [[nodiscard]] std::string_view view() const { return owner_->attributeAt(index_).value; }
    [[nodiscard]] std::string str() const { return std::string(view()); }
    operator std::string_view() const { return view(); }
    friend bool operator==(const AttributeReference& a, std::string_view b)
    {
        return a.view() == b;
    }

private:
    friend class Element;
    AttributeReference(Element& owner, std::uint32_t index) : owner_(&owner), index_(index) {}

    Element* owner_;
    std::uint32_t index_;
};

template <class E>
class Element::Range
{
public:
    class Iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = E;
        using difference_type = std::ptrdiff_t;
        using pointer = E*;
        using reference = E&;

        Iterator() = default;
        explicit Iterator(Element* const* at) : at_(at) {}
        E& operator*() const { return **at_; }
        E* operator->() const { return *at_; }
        Iterator& operator++()
        {
            ++at_;
            return *this;
        }
        Iterator operator++(int) { return Iterator(at_++); }
        bool operator==(const Iterator&) const = default;

    private:
        Element* const* at_ = nullptr;
    };

    Range(Element* const* begin, std::size_t size) : begin_(begin), size_(size) {}
    [[nodiscard]] Iterator begin() const { return Iterator(begin_); }
    [[nodiscard]] Iterator end() const { return Iterator(begin_ + size_); }
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    Element* const* begin_;
    std::size_t size_;
};

inline Element::Range<const Element> Element::children() const
{
    return {children_, childCount_};
}
inline Element::Range<Element> Element::children()
{
    return {children_, childCount_};
}

/// <name/>
class Tag : public Element
{
public:
    explicit Tag(std::string_view name) : Element(Kind::Tag, name) {}
};

class Text : public Element
{
public:
    explicit Text(std::string_view value) : Element(Kind::Text, value) {}
};

/// A text of a value: numbers as a stream writes them by default (doubles with six significant
/// digits), true as "1" and false as "0".
class Data : public Element
{
public:
    explicit Data(std::string_view value) : Element(Kind::Text, value) {}
    explicit Data(const std::string& value) : Data(std::string_view(value)) {}
    explicit Data(const char* value) : Data(std::string_view(value)) {}
    explicit Data(bool value) : Data(std::string_view(value ? "1" : "0")) {}
    explicit Data(double value);
    template <std::integral T>
    requires(sizeof(T) >= 2) explicit Data(T value)
        : Data(Integer{static_cast<std::int64_t>(value), std::unsigned_integral<T>})
    {
    }

private:
    struct Integer
    {
        std::int64_t bits;
        bool isUnsigned;
    };
    explicit Data(Integer value);
};

/// <name>value</name>
class TagWithData : public Tag
{
public:
    template <class T>
    TagWithData(std::string_view name, const T& value) : Tag(name)
    {
        Element::addChild(Data(value));
    }
};

/// Fetches the content of an embedded resource, path with its ":" included; false if there is none.
using ResourceLoader = std::function<bool(const std::string& path, std::string& out)>;
/// What loadFile asks for such paths; until it is set there are none.
void setResourceLoader(ResourceLoader loader);

} // namespace tvw::util::xml
