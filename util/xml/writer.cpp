#include "util/xml/characters.h"
#include "util/xml/element.h"
#include "util/xml/sink.h"

#include <bit>
#include <charconv>
#include <cstdio>
#include <emmintrin.h>
#include <fstream>
#include <vector>

namespace tvw::util::xml {

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\"?>\n";

void putReference(Sink& out, char byte)
{
    char room[8] = "&#";
    char* const end =
        std::to_chars(room + 2, room + sizeof room, static_cast<unsigned char>(byte)).ptr;
    *end = ';';
    out.put({room, end + 1});
}

/// Bit i is set where byte i of the 16 cannot stand for itself, or is the quote.
unsigned unwritable(__m128i bytes, __m128i quote)
{
    // As signed numbers the bytes above 127 lie below the blank, too.
    const __m128i low = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
    const __m128i deleted = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\x7F'));
    const __m128i ampersand = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&'));
    const __m128i less = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('<'));
    const __m128i any = _mm_or_si128(_mm_or_si128(low, deleted), _mm_or_si128(ampersand, less));
    return static_cast<unsigned>(
        _mm_movemask_epi8(_mm_or_si128(any, _mm_cmpeq_epi8(bytes, quote))));
}

/// Writes the bytes of the text up to the first that cannot stand for itself, or is the quote; how
/// many these are.
std::size_t putPlain(Sink& out, std::string_view text, char quote)
{
    constexpr std::size_t kStep = sizeof(__m128i);
    const __m128i quotes = _mm_set1_epi8(quote);
    std::size_t i = 0;
    for (; i + kStep <= text.size(); i += kStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
        char* const room = out.room(kStep);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(room), bytes);
        if (const unsigned stops = unwritable(bytes, quotes); stops != 0) {
            const auto plain = static_cast<std::size_t>(std::countr_zero(stops));
            out.advanceTo(room + plain);
            return i + plain;
        }
        out.advanceTo(room + kStep);
    }
    char* room = out.room(kStep);
    for (; i < text.size() && is(text[i], kWritable) && text[i] != quote; ++i) {
        *room++ = text[i];
    }
    out.advanceTo(room);
    return i;
}

/// Writes the text with each byte that cannot stand for itself as a reference.
/// quote: one more such byte; NUL for none, since NUL is one anyway.
void putEscaped(Sink& out, std::string_view text, char quote = '\0')
{
    while (true) {
        text.remove_prefix(putPlain(out, text, quote));
        if (text.empty()) {
            return;
        }
        putReference(out, text.front());
        text.remove_prefix(1);
    }
}

void putAttribute(Sink& out, const Attribute& attribute)
{
    const bool hasDouble = attribute.value.find('"') != std::string_view::npos;
    const bool hasSingle = hasDouble && attribute.value.find('\'') != std::string_view::npos;
    const char quote = hasDouble && !hasSingle ? '\'' : '"';
    out.put(' ');
    out.put(attribute.key);
    out.put('=');
    out.put(quote);
    putEscaped(out, attribute.value, quote);
    out.put(quote);
}

bool isText(const Element& element)
{
    return element.kind() == Kind::Text;
}

/// Writes a tree without recursion, since a tree that was built by hand may have any depth.
class Writer
{
public:
    explicit Writer(Sink& out) : out_(out) {}

    void write(const Element& root)
    {
        begin(root, 0, false);
        while (!open_.empty()) {
            if (open_.back().next == open_.back().tag->childCount()) {
                end();
            } else {
                nextChild(open_.back());
            }
        }
    }

private:
    /// A tag whose closing tag is still to be written.
    struct Open
    {
        const Element* tag;
        std::size_t next; ///< the child to be written next
        std::size_t indent;
        bool isInline; ///< its first child is a text: no line feeds and no indents within
    };

    /// All of an element that has no children, else the begin of it.
    void begin(const Element& element, std::size_t indent, bool isInline)
    {
        switch (element.kind()) {
        case Kind::Text:
            putEscaped(out_, element.name());
            break;
        case Kind::Special:
            out_.put("<!-- ");
            putEscaped(out_, element.name());
            out_.put("-- >");
            break;
        case Kind::Tag:
            out_.put(isInline ? 0 : indent, '\t');
            beginTag(element, indent);
            break;
        case Kind::Plain:
            break;
        }
    }

    void beginTag(const Element& tag, std::size_t indent)
    {
        out_.put('<');
        putEscaped(out_, tag.name());
        for (std::size_t i = 0; i < tag.attributeCount(); ++i) {
            putAttribute(out_, tag.attributeAt(i));
        }
        if (tag.childCount() == 0) {
            out_.put("/>");
            return;
        }
        out_.put('>');
        const bool isInline = isText(tag.childAt(0));
        if (!isInline) {
            out_.put('\n');
        }
        open_.push_back({&tag, 0, indent, isInline});
    }

    void nextChild(Open& parent)
    {
        const Element& child = parent.tag->childAt(parent.next);
        const bool isInline = parent.isInline;
        if (isInline && parent.next > 0 && isText(child) &&
            isText(parent.tag->childAt(parent.next - 1))) {
            out_.put(' ');
        }
        ++parent.next;
        const std::size_t depth = open_.size();
        begin(child, parent.indent + 1, isInline); // may end the life of `parent`
        if (!isInline && open_.size() == depth && child.kind() != Kind::Plain) {
            out_.put('\n');
        }
    }

    void end()
    {
        const Open last = open_.back();
        open_.pop_back();
        if (!last.isInline) {
            out_.put(last.indent, '\t');
        }
        out_.put("</");
        putEscaped(out_, last.tag->name());
        out_.put('>');
        if (!open_.empty() && !open_.back().isInline) {
            out_.put('\n');
        }
    }

    Sink& out_;
    std::vector<Open> open_;
};

std::string written(const Element& root, std::string_view lead)
{
    std::string text(lead);
    Sink out(text);
    Writer(out).write(root);
    if (root.kind() != Kind::Plain) {
        out.put('\n');
    }
    out.flush();
    return text;
}

} // namespace

std::string Element::fragment() const
{
    return written(*this, {});
}

std::string Element::toString() const
{
    return written(*this, kDeclaration);
}

bool Element::save(const std::string& path) const
{
    const std::string temporary = path + ".part";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file << toString();
        file.close();
        if (!file) {
            std::remove(temporary.c_str());
            return false;
        }
    }
    return std::rename(temporary.c_str(), path.c_str()) == 0;
}

} // namespace tvw::util::xml
