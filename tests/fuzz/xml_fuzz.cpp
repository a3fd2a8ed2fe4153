/// Any bytes as an XML text.
#include "tests/fuzz/fuzz.h"
#include "util/xml/element.h"

#include <algorithm>
#include <string>

namespace {

using tvw::fuzz::require;
using tvw::util::xml::Attribute;
using tvw::util::xml::Element;
using tvw::util::xml::Kind;

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

/// Whether the format can say the text: a blank one vanishes between tags.
bool isTellableText(std::string_view text)
{
    return text.find_first_not_of(' ') != std::string_view::npos;
}

/// Whether the tree comes back from its own text. The format loses a ">" outside of texts (it ends
/// the tag), what surrounds texts beside tags, and the form of comments.
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
        return isTellableText(element.childAt(0).name());
    }
    const auto children = element.children();
    return std::all_of(children.begin(), children.end(), isTellable);
}

void readAnything(const Element& root)
{
    for (const Element& child : root.children()) {
        require(!root.child(child.name()).isEmpty(), "a child is not found by its name");
        require(root.childCount(child.name()) > 0, "a child is not counted");
        readAnything(child);
    }
    for (std::size_t i = 0; i < root.attributeCount(); ++i) {
        const Attribute attribute = root.attributeAt(i);
        require(root.attributeValue(attribute.key) == attribute.value,
                "an attribute is doubled, or not found by its key");
    }
    (void)tvw::util::xml::number(root.text());
    (void)tvw::util::xml::integer(root.text());
}

/// Copies must not share anything with what they were made of.
void changeACopy(const Element& root)
{
    Element copy = root;
    require(equalTrees(copy, root), "a copy differs");
    copy.setAttribute("key", "value");
    copy.addChild(copy);
    if (copy.childCount() > 0) {
        copy.mutableChildAt(0).assign(copy);
        require(copy.removeChild(Element(copy.childAt(0))), "a child is not removed");
    }
    copy = Element(copy.childAt(0));
    (void)copy.toString();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    namespace code = tvw::util::xml::code;
    Element root;
    const int result = root.parse(tvw::fuzz::asText(data, size));
    require(result == code::ok || (result >= code::noRoot && result <= code::badSyntax),
            "a code that is not told");
    require(depthOf(root) <= tvw::util::xml::kMaximumDepth, "a text nests deeper than allowed");
    readAnything(root);
    const std::string written = root.toString();
    Element again;
    const int resultAgain = again.parse(written);
    if (isTellable(root)) {
        require(resultAgain == code::ok, "a written tree is refused");
        require(equalTrees(root, again), "a written tree comes back changed");
        require(again.toString() == written, "a tree is written in two ways");
    }
    changeACopy(root);
    return 0;
}
