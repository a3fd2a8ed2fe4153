#include "util/xml/element.h"

#include <gtest/gtest.h>

#include <string>

namespace tvw::util::xml {
namespace {

/// What stands behind the last "=" of a tag's text with this one attribute.
std::string writtenValue(std::string_view value)
{
    Element tag = Tag("a");
    tag.setAttribute("k", value);
    const std::string text = tag.fragment();
    EXPECT_TRUE(text.starts_with("<a k=") && text.ends_with("/>\n")) << text;
    return text.substr(5, text.size() - 8);
}

std::string writtenText(std::string_view value)
{
    const std::string text = Text(value).fragment();
    EXPECT_TRUE(text.ends_with('\n'));
    return text.substr(0, text.size() - 1);
}

struct ValueCase
{
    const char* name;
    std::string_view value, asValue, asText;
};

constexpr ValueCase kValueCases[] = {
    {"empty", "", "\"\"", ""},
    {"less and ampersand", "a<b&c>d", "\"a&#60;b&#38;c>d\"", "a&#60;b&#38;c>d"},
    {"double quote", "x\"y", "'x\"y'", "x\"y"},
    {"single quote", "x'y", "\"x'y\"", "x'y"},
    {"both quotes", "x\"y'z\"", "\"x&#34;y'z&#34;\"", "x\"y'z\""},
    {"controls", "a\tb\nc\rd\x7F", "\"a&#9;b&#10;c&#13;d&#127;\"", "a&#9;b&#10;c&#13;d&#127;"},
    {"bytes above 127", "\x80\xC3\xBC\xFF", "\"&#128;&#195;&#188;&#255;\"",
     "&#128;&#195;&#188;&#255;"},
    {"NUL", {"a\0b", 3}, "\"a&#0;b\"", "a&#0;b"},
    {"punctuation", "!#$%()*+,-./:;=?@[\\]^_`{|}~", "\"!#$%()*+,-./:;=?@[\\]^_`{|}~\"",
     "!#$%()*+,-./:;=?@[\\]^_`{|}~"},
};

TEST(XmlWrite, EscapesAndQuotes)
{
    for (const ValueCase& c : kValueCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(writtenValue(c.value), c.asValue);
        EXPECT_EQ(writtenText(c.value), c.asText);
    }
}

/// Whatever stands where in texts of all lengths around the steps in which they are scanned, it is
/// written so that it comes back. A ">" does not: it ends a tag.
TEST(XmlWrite, EachByteAtEachPlaceComesBack)
{
    for (const std::size_t size : {1U, 3U, 4U, 7U, 8U, 15U, 16U, 17U, 33U, 1030U}) {
        for (std::size_t place = 0; place<size; place += size> 100 ? 100 : 1) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string value(size, 'v');
                value[place] = static_cast<char>(byte);
                Element tag = Tag("a");
                tag.addChild(Text("x" + value));
                if (byte != '>') {
                    tag.setAttribute("k", value);
                }
                Element read;
                ASSERT_EQ(read.parse(tag.toString()), 0) << size << ' ' << place << ' ' << byte;
                ASSERT_TRUE(read.equals(tag)) << size << ' ' << place << ' ' << byte;
                ASSERT_EQ(read.text(), "x" + value) << size << ' ' << place << ' ' << byte;
            }
        }
    }
}

struct LayoutCase
{
    const char *name, *text, *written;
};

constexpr LayoutCase kLayoutCases[] = {
    {"no children", "<a></a>", "<a/>\n"},
    {"text on the line", "<multiplier>1</multiplier>", "<multiplier>1</multiplier>\n"},
    {"a tab per level", "<a><b><c d='1'/></b></a>", "<a>\n\t<b>\n\t\t<c d=\"1\"/>\n\t</b>\n</a>\n"},
    {"behind a text all stays on the line", "<a>x<b/>y</a>", "<a>x<b/>y</a>\n"},
    {"a tag on the line has its own lines", "<a><b>x<c><d/></c></b></a>",
     "<a>\n\t<b>x<c>\n\t\t\t<d/>\n\t\t</c></b>\n</a>\n"},
    {"a text behind a tag", "<a><b/>x</a>", "<a>\n\t<b/>\nx\n</a>\n"},
    {"special", "<a><!x&#38;></a>", "<a>\n<!-- x&#38;-- >\n</a>\n"},
    {"names", "<a&#60;/>", "<a&#60;/>\n"},
};

TEST(XmlWrite, LaysOutLines)
{
    for (const LayoutCase& c : kLayoutCases) {
        SCOPED_TRACE(c.name);
        Element element;
        ASSERT_EQ(element.parse(c.text), 0);
        EXPECT_EQ(element.fragment(), c.written);
        EXPECT_EQ(element.toString(), std::string("<?xml version=\"1.0\"?>\n") + c.written);
    }
}

TEST(XmlWrite, SeparatesAdjacentTexts)
{
    Element tag = Tag("a");
    tag.addChild(Text("1"));
    tag.addChild(Text("2"));
    tag.addChild(Tag("b"));
    tag.addChild(Text("3"));
    EXPECT_EQ(tag.fragment(), "<a>1 2<b/>3</a>\n");
}

/// Built by hand a tree may be deeper than what is read: copying, writing and ending it must not
/// need a stack as deep.
TEST(XmlWrite, BearsAnyDepth)
{
    constexpr std::size_t kDepth = 100'000;
    Element root = Tag("a");
    Element* last = &root;
    for (std::size_t i = 0; i < kDepth; ++i) {
        last = &last->addChild(Text("1"));
    }
    const Element copy = root;
    EXPECT_EQ(copy.fragment(), "<a>1</a>\n"); // a text's own children are not written

    Element tags = Tag("t");
    last = &tags;
    for (std::size_t i = 0; i < 1000; ++i) {
        last = &last->addChild(Tag("t"));
    }
    // 1000 lines open a tag and 1000 close it, with 0 to 999 tabs each; one is empty, with 1000.
    EXPECT_EQ(Element(tags).fragment().size(), 1000 * (3 + 1 + 4 + 1) + 2 * (999 * 500) + 1000 + 5);
}

} // namespace
} // namespace tvw::util::xml
