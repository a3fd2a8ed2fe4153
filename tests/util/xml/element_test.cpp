#include "util/xml/element.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace tvw::util::xml {
namespace {

Element parsed(std::string_view text)
{
    Element element;
    EXPECT_EQ(element.parse(text), 0);
    return element;
}

const char* const kCar = "<car id='1'><wheel r='0.3'>front</wheel><wheel/><!x></car>";
const char* const kCarWritten =
    "<car id=\"1\">\n\t<wheel r=\"0.3\">front</wheel>\n\t<wheel/>\n<!-- x-- >\n</car>\n";

TEST(XmlElement, ReferencesToChildrenOutliveSiblingsAndAMove)
{
    Element root = Tag("root");
    Element& first = root.addChild(Tag("first"));
    for (int i = 0; i < 1000; ++i) {
        root.addChild(TagWithData("next", i));
    }
    Element moved = std::move(root);
    first.addChild(Text("still here"));
    EXPECT_EQ(moved.child("first").text(), "still here");
    EXPECT_TRUE(root.isEmpty()); // NOLINT(bugprone-use-after-move): what the move promises
    root.addChild(Tag("usable"));
    EXPECT_EQ(root.childCount(), 1U);
}

/// Whatever way an element gets the tree of one that lies within it, or contains it, or stands by
/// itself, it ends with that tree and the others keep theirs.
TEST(XmlElement, AssignsFromAnywhere)
{
    {
        Element root = parsed(kCar);
        root = root.childAt(0);
        EXPECT_EQ(root.fragment(), "<wheel r=\"0.3\">front</wheel>\n");
        root = std::move(root.mutableChildAt(0));
        EXPECT_EQ(root.fragment(), "front\n");
    }
    {
        Element root = parsed(kCar);
        root.mutableChildAt(1) = root;
        EXPECT_EQ(root.childAt(1).fragment(), kCarWritten);
        EXPECT_EQ(root.childCount(), 3U);
    }
    {
        Element root = parsed(kCar);
        Element alone = parsed("<spare><bolt/></spare>");
        root.mutableChildAt(1) = std::move(alone);
        EXPECT_EQ(root.childAt(1).fragment(), "<spare>\n\t<bolt/>\n</spare>\n");
        const Element taken = std::move(root.mutableChildAt(0));
        root.clear();
        EXPECT_EQ(taken.fragment(), "<wheel r=\"0.3\">front</wheel>\n");
    }
    {
        Element root = parsed(kCar);
        Element& same = root;
        root = same;
        root = std::move(same);
        EXPECT_EQ(root.fragment(), kCarWritten);
        EXPECT_EQ(root.addChild(root).fragment(), kCarWritten);
        EXPECT_EQ(root.childCount(), 4U);
    }
}

TEST(XmlElement, AnEmptyChildIsNotAdded)
{
    Element root = Tag("root");
    Element onlyAttributes;
    onlyAttributes.setAttribute("k", "v");
    Element nameless;
    nameless.addChild(Tag("child"));
    EXPECT_EQ(&root.addChild(Element()), &root);
    EXPECT_EQ(&root.addChild(onlyAttributes), &root);
    EXPECT_NE(&root.addChild(nameless), &root);
    EXPECT_EQ(root.childCount(), 1U);
}

TEST(XmlElement, LookupsThatFindNothingCanBeChained)
{
    Element root = parsed("<r><x>1</x><y/><x>2</x></r>");
    EXPECT_EQ(root.child("x", 1).text(), "2");
    EXPECT_EQ(root.childCount("x"), 2U);
    EXPECT_TRUE(root.child("x", 5).isEmpty());
    EXPECT_EQ(&root.child("x", 5), &root.childAt(3).child("z").childAt(0));
    EXPECT_EQ(root.child("no").child("no").text(), "");
    EXPECT_EQ(root.findChild("x", 2), nullptr);
    EXPECT_EQ(root.findChild("x", 1), &root.mutableChildAt(2));
    EXPECT_EQ(root.text(), "");
    std::string names;
    for (const Element& child : std::as_const(root).children()) {
        names += child.name();
    }
    EXPECT_EQ(names, "xyx");
}

TEST(XmlElement, RemovesTheFirstEqualChild)
{
    Element root = parsed("<r><x k='1'>a</x><x>b</x><x>c</x><y/></r>");
    EXPECT_FALSE(root.removeChild(Text("x")));
    EXPECT_TRUE(root.removeChild(Tag("x"))); // children are not compared, attributes are
    EXPECT_EQ(root.fragment(), "<r>\n\t<x k=\"1\">a</x>\n\t<x>c</x>\n\t<y/>\n</r>\n");
    EXPECT_TRUE(root.removeChild(root.childAt(2)));
    EXPECT_FALSE(root.removeChild(Tag("y")));
}

struct EqualCase
{
    const char *a, *b;
    bool isEqual;
};

constexpr EqualCase kEqualCases[] = {
    {"<a b='1' c='2'/>", "<a b='1' c='2'><d/></a>", true},
    {"<a b='1' c='2'/>", "<a c='2' b='1'/>", false},
    {"<a b='1'/>", "<a b='2'/>", false},
    {"<a b='1'/>", "<a/>", false},
    {"<a/>", "<A/>", false},
    {"<a/>", "<?xml?>a", false},
};

TEST(XmlElement, ComparesKindNameAndAttributes)
{
    for (const EqualCase& c : kEqualCases) {
        EXPECT_EQ(parsed(c.a).equals(parsed(c.b)), c.isEqual) << c.a << ' ' << c.b;
        EXPECT_EQ(parsed(c.b).equals(parsed(c.a)), c.isEqual) << c.a << ' ' << c.b;
    }
}

TEST(XmlElement, AttributesAreMadeAndOverwritten)
{
    Element tag = parsed("<a long='a long value' short='1'/>");
    EXPECT_FALSE(tag.hasAttribute("new"));
    EXPECT_EQ(tag.attributeValue("new") + tag.findAttribute("new"), "");
    EXPECT_TRUE(tag.attribute("new") == "");
    EXPECT_TRUE(tag.hasAttribute("new"));
    tag.attribute("short") = tag.attribute("long");
    tag.attribute("long") = "x";
    tag.attribute("new") = tag.attributeAt(1).value.substr(2);
    EXPECT_EQ(tag.fragment(), "<a long=\"x\" short=\"a long value\" new=\"long value\"/>\n");
    tag.attribute("new") = tag.attributeAt(2).value.substr(5); // from its own bytes
    EXPECT_EQ(tag.attribute("new").str(), "value");
    tag.attribute("long") = std::string(100'000, 'y');
    EXPECT_EQ(tag.findAttribute("long").size(), 100'000U);
    tag.setAttribute("long", "");
    EXPECT_EQ(tag.fragment(), "<a long=\"\" short=\"a long value\" new=\"value\"/>\n");
}

TEST(XmlData, WritesValuesAsStreamsDo)
{
    const std::pair<Data, const char*> cases[] = {
        {Data(1.3), "1.3"},
        {Data(1e6), "1e+06"},
        {Data(1234567.0), "1.23457e+06"},
        {Data(-0.0), "-0"},
        {Data(2.0F), "2"},
        {Data(true), "1"},
        {Data(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808"},
        {Data(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615"},
        {Data("a text"), "a text"},
    };
    for (const auto& [data, text] : cases) {
        EXPECT_EQ(data.name(), text);
        EXPECT_EQ(data.kind(), Kind::Text);
    }
    EXPECT_EQ(TagWithData("id", 12).fragment(), "<id>12</id>\n");
    EXPECT_EQ(TagWithData("name", "").fragment(), "<name/>\n");
}

struct NumberCase
{
    const char* text;
    std::optional<double> number;
    std::optional<long> integer;
};

constexpr NumberCase kNumberCases[] = {
    {"12", 12.0, 12},  {" \t\n-1.5", -1.5, -1}, {"+3", 3.0, 3},
    {"1e+06", 1e6, 1}, {"1.3 m", 1.3, 1},       {"-", {}, {}},
    {"+-1", {}, {}},   {"++1", {}, {}},         {"", {}, {}},
    {" ", {}, {}},     {"x1", {}, {}},          {"inf", {}, {}},
    {"nan", {}, {}},   {"1e999", {}, 1},        {"9223372036854775808", 9223372036854775808.0, {}},
};

TEST(XmlNumber, ReadsWhatTheTextBeginsWith)
{
    for (const NumberCase& c : kNumberCases) {
        EXPECT_EQ(number(c.text), c.number) << c.text;
        EXPECT_EQ(integer(c.text), c.integer) << c.text;
    }
}

} // namespace
} // namespace tvw::util::xml
