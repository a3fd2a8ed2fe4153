#include "tests/support/temporary_folder.h"
#include "util/xml/element.h"

#include <gtest/gtest.h>

#include <string>

namespace tvw::util::xml {
namespace {

using namespace std::string_literals;

/// A tree on one line: tag[key=value,...](children), 'text', !special!, in the bytes as they are.
std::string outline(const Element& element)
{
    const std::string name(element.name());
    switch (element.kind()) {
    case Kind::Plain:
        return element.isEmpty() ? "-" : "?" + name;
    case Kind::Text:
        return "'" + name + "'";
    case Kind::Special:
        return "!" + name + "!";
    case Kind::Tag:
        break;
    }
    std::string out = name;
    for (std::size_t i = 0; i < element.attributeCount(); ++i) {
        const Attribute attribute = element.attributeAt(i);
        out +=
            (i == 0 ? "[" : ",") + std::string(attribute.key) + "=" + std::string(attribute.value);
    }
    out += element.attributeCount() == 0 ? "" : "]";
    for (std::size_t i = 0; i < element.childCount(); ++i) {
        out += (i == 0 ? "(" : " ") + outline(element.childAt(i));
    }
    return out + (element.childCount() == 0 ? "" : ")");
}

struct ParseCase
{
    const char* name;
    std::string text;
    int code;
    std::string tree;
};

const ParseCase kParseCases[] = {
    // Tokens
    {"blanks between tags vanish", " <a>\n\t<b/> \r\n<c></c>\v\f</a>\n", 0, "a(b c)"},
    {"blanks of a text stay", "<a>  Press now!\n</a>", 0, "a('  Press now!\n')"},
    {"text on both sides of a tag", "<a>x <b/> y</a>", 0, "a('x ' b ' y')"},
    {"a quoted > ends the tag", "<a><b c=\"1>2\"/></a>", 5, "a(b)"},
    {"a comment ends at its first >", "<a><!-- a > b --></a>", 0, "a(!-- a ! ' b -->')"},
    {"a slash before the end of a comment stays", "<a><!x/></a>", 0, "a(!x/!)"},
    {"a lone < is nothing", "<a><></></a>", 0, "a"},
    {"a closing tag that closes itself is an element", "<a></b/></a>", 0, "a(b)"},
    {"a tag without > at the end", "<a><b/></a", 0, "a(b)"},
    {"a slash at the end without >", "<a/", 3, "a/"},
    {"NUL bytes are bytes", "<a>\0x\0<b/></a>"s, 0, "a('\0x\0' b)"s},
    {"bytes above 127", "<a>gr\xC3\xBC\xDF</a>", 0, "a('gr\xC3\xBC\xDF')"},
    // The root
    {"nothing", "", 2, "-"},
    {"only blanks", " \n", 2, "-"},
    {"text first", "x<a/>", 2, "-"},
    {"a byte order mark is text", "\xEF\xBB\xBF<a/>", 2, "-"},
    {"comment first", "<!-- x --><a/>", 2, "-"},
    {"closing tag first", "</a>", 2, "-"},
    {"declaration", "<?xml version=\"1.0\"?>\n<a/>", 0, "a"},
    {"nothing behind the declaration", "<?xml version=\"1.0\"?>\n", 5, "-"},
    {"closing tag behind the declaration", "<?xml?></a>", 2, "-"},
    {"text behind the declaration", "<?xml?>x&#33;<a/>", 0, "'x!'"},
    {"comment behind the declaration", "<?xml?><!x><a/>", 0, "!x!"},
    {"what follows the root is not read", "<a/></b><c d>", 0, "a"},
    // Building
    {"no closing tag", "<a><b>", 3, "a(b)"},
    {"another closing tag", "<a><b></a>", 4, "a(b)"},
    {"closing tag with a blank", "<a></a >", 4, "a"},
    {"a closing tag is not unescaped", "<&#97;></&#97;>", 4, "a"},
    {"what was built before the error stays", "<a><b>1</b><c d/><e/></a>", 5, "a(b('1') c)"},
    {"a nameless tag without children is not added", "<a>< b='1'/><c/></a>", 0, "a(c)"},
    // Attributes
    {"both quotes", "<a b='x\"y' c=\"x'y\"/>", 0, "a[b=x\"y,c=x'y]"},
    {"no blank between, line feeds between", "<a b='1'c='2'\n\td='3' />", 0, "a[b=1,c=2,d=3]"},
    {"the second value counts, at the first place", "<a b='1' c='2' b='3'/>", 0, "a[b=3,c=2]"},
    {"empty key and empty value", "<a =''/>", 0, "a[=]"},
    {"? ends the attributes", "<a b='1' ? c></a>", 0, "a[b=1]"},
    {"no value", "<a b/>", 5, "a"},
    {"no quote", "<a b=1/>", 5, "a"},
    {"blank before =", "<a b ='1'/>", 5, "a"},
    {"blank behind =", "<a b= '1'/>", 5, "a"},
    {"quote not closed", "<a b='1' c=\"2'/>", 5, "a[b=1]"},
    {"a quote is closed within its own tag", "<a b='1><c d='2'/></a>", 5, "a"},
    // References
    {"decimal", "<a>&#60;&#38;&#10;</a>", 0, "a('<&\n')"},
    {"hexadecimal", "<a>&#x3C;&#x3e;</a>", 0, "a('<>')"},
    {"named ones are text", "<a b='&lt;'>&amp;</a>", 0, "a[b=&lt;]('&amp;')"},
    {"the byte behind the digits is lost", "<a>&#65 b</a>", 0, "a('Ab')"},
    {"a result is not read again", "<a>&#38;#60;</a>", 0, "a('&#60;')"},
    {"decimal ends at a letter", "<a>&#6a;5</a>", 0,
     "a('\x06"
     "5')"},
    {"the number is cut to a byte", "<a>&#x141;&#321;</a>", 0, "a('AA')"},
    {"no digits", "<a>&#;&#x;&#</a>", 0, "a('&#;&#x;&#')"},
    {"cut off", "<a>x&#65</a>", 0, "a('x&#65')"},
    {"in names and values, not in keys", "<&#97;b &#99;='&#100;'/>", 0, "ab[&#99;=d]"},
};

TEST(XmlParse, GivesTreeAndCode)
{
    for (const ParseCase& c : kParseCases) {
        SCOPED_TRACE(c.name);
        Element element = Tag("old");
        EXPECT_EQ(element.parse(c.text), c.code);
        EXPECT_EQ(outline(element), c.tree);
    }
}

/// Depth 200 is the last that is accepted; far deeper neither crashes nor takes long.
TEST(XmlParse, BoundsTheDepth)
{
    const auto nested = [](std::size_t depth, bool isClosed) {
        std::string text;
        for (std::size_t i = 0; i < depth; ++i) {
            text += "<a>";
        }
        for (std::size_t i = 0; isClosed && i < depth; ++i) {
            text += "</a>";
        }
        return text;
    };
    Element element;
    EXPECT_EQ(element.parse(nested(200, true)), code::ok);
    EXPECT_EQ(element.parse(nested(201, true)), code::badSyntax);
    EXPECT_EQ(element.parse(nested(199, false) + "<a/>"), code::unclosed);
    EXPECT_EQ(element.parse(nested(200, false) + "<a/>"), code::badSyntax);
    EXPECT_EQ(element.parse(nested(100'000, false)), code::badSyntax);
    EXPECT_EQ(element.childAt(0).name(), "a");
}

/// Exactly a text that ends right behind the root's closing name, with or without ">", is whole.
TEST(XmlParse, RefusesEachPartOfAText)
{
    const std::string text =
        "<?xml version=\"1.0\"?>\n<a b='1' c=\"&#10;2\"><d>text&#x41;</d><!-- x -->"
        "<e f='g'/></a>";
    Element element;
    ASSERT_EQ(element.parse(text), code::ok);
    ASSERT_EQ(outline(element), "a[b=1,c=\n2](d('textA') !-- x --! e[f=g])");
    for (std::size_t length = 0; length + 1 < text.size(); ++length) {
        const std::string part = text.substr(0, length); // its end is the end of its memory
        EXPECT_NE(element.parse(part), code::ok) << part;
    }
    EXPECT_EQ(element.parse(text.substr(0, text.size() - 1)), code::ok);
}

TEST(XmlParse, TakesVeryManyAttributesAndChildren)
{
    std::string text = "<a";
    for (int i = 0; i < 100'000; ++i) {
        text += " k" + std::to_string(i % 50'000) + "='" + std::to_string(i) + "'";
    }
    text += ">";
    for (int i = 0; i < 100'000; ++i) {
        text += "<b/>";
    }
    Element element;
    ASSERT_EQ(element.parse(text + "</a>"), code::ok);
    EXPECT_EQ(element.attributeCount(), 50'000U);
    EXPECT_EQ(element.attributeValue("k0"), "50000");
    EXPECT_EQ(element.attributeValue("k49999"), "99999");
    EXPECT_EQ(element.childCount("b"), 100'000U);
}

TEST(XmlParse, ReadsItsOwnParts)
{
    Element element;
    ASSERT_EQ(element.parse("<a>&#60;b c='1'&#62;&#60;/b&#62;</a>"), code::ok);
    ASSERT_EQ(element.text(), "<b c='1'></b>");
    EXPECT_EQ(element.parse(element.text()), code::ok);
    EXPECT_EQ(outline(element), "b[c=1]");

    Element parent = Tag("p");
    Element& child = parent.addChild(element);
    EXPECT_EQ(child.parse("<x><y/></x>"), code::ok);
    EXPECT_EQ(outline(parent), "p(x(y))");
}

class XmlFile : public testing::Test
{
protected:
    [[nodiscard]] std::string path(const char* name) const { return folder_.path() + "/" + name; }

    rgs::tests::TemporaryFolder folder_;
};

TEST_F(XmlFile, IsReplacedAndReadBack)
{
    Element element = Tag("a");
    element.addChild(TagWithData("b", 1));
    folder_.write("x.xml", std::string(1000, 'x'));
    ASSERT_TRUE(element.save(path("x.xml")));
    EXPECT_EQ(*readFile(path("x.xml")), "<?xml version=\"1.0\"?>\n<a>\n\t<b>1</b>\n</a>\n");
    Element read;
    EXPECT_EQ(read.loadFile(path("x.xml")), code::ok);
    EXPECT_EQ(outline(read), "a(b('1'))");
}

TEST_F(XmlFile, KeepsCarriageReturnsOfATextOnly)
{
    folder_.write("x.xml", "<?xml version=\"1.0\"?>\r\n<a>\r\n\t<b>1\r\n2</b>\r\n</a>\r\n");
    Element read;
    EXPECT_EQ(read.loadFile(path("x.xml")), code::ok);
    EXPECT_EQ(outline(read), "a(b('1\r\n2'))");
}

TEST_F(XmlFile, ThatCannotBeOpenedIsAnError)
{
    Element element = Tag("old");
    EXPECT_EQ(element.loadFile(path("missing.xml")), code::fileUnreadable);
    EXPECT_TRUE(element.isEmpty());
    EXPECT_EQ(element.loadFile(folder_.path()), code::fileUnreadable);
    const Status status = Tag("a").save(path("missing/x.xml"));
    EXPECT_FALSE(status);
    EXPECT_NE(status.reason().find("missing/x.xml"), std::string::npos);
    EXPECT_FALSE(Tag("a").save(":/x.xml"));
}

TEST(XmlResource, IsAskedFromTheLoader)
{
    Element element;
    EXPECT_EQ(element.loadFile(":/layout.xml"), code::fileUnreadable);
    setResourceLoader([](const std::string& path, std::string& out) {
        out = "<layout/>";
        return path == ":/layout.xml";
    });
    EXPECT_EQ(element.loadFile(":/layout.xml"), code::ok);
    EXPECT_EQ(element.name(), "layout");
    EXPECT_EQ(element.loadFile(":/other.xml"), code::fileUnreadable);
    EXPECT_TRUE(element.isEmpty());
    setResourceLoader({});
}

} // namespace
} // namespace tvw::util::xml
