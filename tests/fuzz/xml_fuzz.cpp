/// XML of any bytes: a known code, a bounded tree, a copy that shares nothing with it, and a text
/// that reads back as the same tree where the format can say it.
#include "tests/fuzz/check.h"
#include "util/xml/element.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using tvw::util::xml::Attribute;
using tvw::util::xml::Element;
using tvw::util::xml::Kind;
namespace code = tvw::util::xml::code;

std::size_t depthOf(const Element& element)
{
    std::size_t below = 0;
    for (const Element& child : element.children()) {
        below = std::max(below, depthOf(child));
    }
    return below + (element.kind() == Kind::Tag ? 1 : 0);
}

bool equalTrees(const Element& a, const Element& b)
{
    if (!a.equals(b) || a.childCount() != b.childCount()) {
        return false;
    }
    for (std::size_t i = 0; i < a.childCount(); ++i) {
        if (!equalTrees(a.childAt(i), b.childAt(i))) {
            return false;
        }
    }
    return true;
}

bool isWord(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    });
}

/// Whether the format can say the tree. Lost are a ">" outside of texts, which ends the tag, a
/// blank text, texts beside tags, and the form of comments.
bool isTellable(const Element& element)
{
    if (element.kind() != Kind::Tag || !isWord(element.name())) {
        return false;
    }
    for (std::size_t i = 0; i < element.attributeCount(); ++i) {
        const Attribute attribute = element.attributeAt(i);
        if (!isWord(attribute.key) || attribute.value.find('>') != std::string_view::npos) {
            return false;
        }
    }
    if (element.childCount() == 1 && element.childAt(0).kind() == Kind::Text) {
        return element.text().find_first_not_of(' ') != std::string_view::npos;
    }
    const auto children = element.children();
    return std::all_of(children.begin(), children.end(), isTellable);
}

void tryLookups(const Element& element)
{
    for (std::size_t i = 0; i < element.attributeCount(); ++i) {
        const Attribute attribute = element.attributeAt(i);
        RIGSTAGE_FUZZ_CHECK(element.attributeValue(attribute.key) == attribute.value);
        RIGSTAGE_FUZZ_CHECK(element.findAttribute(attribute.key) == attribute.value);
    }
    for (const Element& child : element.children()) {
        tryLookups(child);
    }
    (void)tvw::util::xml::number(element.text());
    (void)tvw::util::xml::integer(element.text());
}

void tryWritten(const Element& element)
{
    const std::string text = element.toString();
    Element again;
    const int result = again.parse(text);
    if (isTellable(element)) {
        RIGSTAGE_FUZZ_CHECK(result == code::ok && equalTrees(again, element));
        RIGSTAGE_FUZZ_CHECK(again.toString() == text);
    }
}

void tryCopy(const Element& element)
{
    const std::string text = element.toString();
    Element copy = element;
    RIGSTAGE_FUZZ_CHECK(equalTrees(copy, element) && copy.toString() == text);
    copy.setAttribute("k", copy.text());
    copy.addChild(copy);
    if (copy.childCount() != 0) {
        copy.mutableChildAt(0).assign(copy); // it holds itself, as it was
        RIGSTAGE_FUZZ_CHECK(copy.removeChild(Element(copy.childAt(0))));
        copy = Element(copy.childAt(0));
    }
    RIGSTAGE_FUZZ_CHECK(element.toString() == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Element element;
    const int result = element.parse({reinterpret_cast<const char*>(data), size});
    RIGSTAGE_FUZZ_CHECK(result == code::ok ||
                        (result >= code::noRoot && result <= code::badSyntax));
    RIGSTAGE_FUZZ_CHECK(depthOf(element) <= tvw::util::xml::kMaximumDepth);
    tryLookups(element);
    tryWritten(element);
    tryCopy(element);
    return 0;
}
