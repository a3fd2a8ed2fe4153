#include "util/file.h"
#include "util/xml/arena.h"
#include "util/xml/characters.h"
#include "util/xml/copy.h"
#include "util/xml/element.h"
#include "util/xml/sink.h"

#include <algorithm>
#include <charconv>
#include <emmintrin.h>
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

/// Bit i is set where byte i cannot stand for itself, or is the quote.
int unwritable(__m128i bytes, __m128i quote)
{
    // As signed numbers the bytes above 127 lie below the blank, too.
    const __m128i low = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
    const __m128i deleted = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\x7F'));
    const __m128i ampersand = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&'));
    const __m128i less = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('<'));
    const __m128i any = _mm_or_si128(_mm_or_si128(low, deleted), _mm_or_si128(ampersand, less));
    return _mm_movemask_epi8(_mm_or_si128(any, _mm_cmpeq_epi8(bytes, quote)));
}

char* copyPlainBytes(char* to, std::string_view text, char quote)
{
    for (const char byte : text) {
        if (!is(byte, kWritable) || byte == quote) {
            return nullptr;
        }
        *to++ = byte;
    }
    return to;
}

/// Copies a text of which each byte stands for itself and none is the quote; the end of the copy.
/// Null for any other text; the target then is garbage.
char* copyPlain(char* to, std::string_view text, char quote)
{
    constexpr std::size_t kStep = sizeof(__m128i);
    const std::size_t size = text.size();
    const char* const from = text.data();
    const __m128i quotes = _mm_set1_epi8(quote);
    if (size < 8) {
        return copyPlainBytes(to, text, quote);
    }
    if (size < kStep) {
        const auto first = wordAt<std::int64_t>(from);
        const auto last = wordAt<std::int64_t>(from + size - 8);
        const bool isPlain = unwritable(_mm_set_epi64x(last, first), quotes) == 0;
        return isPlain ? storeEnds(to, size, first, last) : nullptr;
    }
    int stops = 0;
    const auto copyStep = [&](std::size_t i) {
        const __m128i bytes = wordAt<__m128i>(from + i);
        std::memcpy(to + i, &bytes, sizeof bytes);
        stops |= unwritable(bytes, quotes);
    };
    for (std::size_t i = 0; i + kStep < size; i += kStep) {
        copyStep(i);
    }
    copyStep(size - kStep);
    return stops == 0 ? to + size : nullptr;
}

void putEscapedBytes(Sink& out, std::string_view text, char quote)
{
    for (const char byte : text) {
        if (is(byte, kWritable) && byte != quote) {
            out.put(byte);
        } else {
            putReference(out, byte);
        }
    }
}

/// Writes the text with each byte that cannot stand for itself as a reference.
/// quote: one more such byte; NUL for none, since NUL is one anyway.
void putEscaped(Sink& out, std::string_view text, char quote = '\0')
{
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, Sink::kLargestPiece);
        text.remove_prefix(piece.size());
        if (char* const end = copyPlain(out.room(piece.size()), piece, quote)) {
            out.advanceTo(end);
        } else {
            putEscapedBytes(out, piece, quote);
        }
    }
}

char quoteFor(std::string_view value)
{
    const bool hasDouble = value.find('"') != std::string_view::npos;
    const bool hasSingle = value.find('\'') != std::string_view::npos;
    return hasDouble && !hasSingle ? '\'' : '"';
}

/// Writes a short attribute whose value needs neither references nor other quotes; false, and
/// nothing written, for any other.
bool putPlainAttribute(Sink& out, const Attribute& attribute)
{
    const std::size_t size = attribute.key.size() + attribute.value.size() + 4;
    if (size > Sink::kLargestPiece) {
        return false;
    }
    char* at = out.room(size);
    *at++ = ' ';
    at = copyBytes(at, attribute.key);
    *at++ = '=';
    *at++ = '"';
    at = copyPlain(at, attribute.value, '"');
    if (at == nullptr) {
        return false;
    }
    *at++ = '"';
    out.advanceTo(at);
    return true;
}

void putAttribute(Sink& out, const Attribute& attribute)
{
    if (putPlainAttribute(out, attribute)) {
        return;
    }
    const char quote = quoteFor(attribute.value);
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
            if (open_.back().next == open_.back().end) {
                end();
            } else {
                nextChild(open_.back());
            }
        }
    }

private:
    using Children = Element::Range<const Element>::Iterator;

    /// A tag whose closing tag is still to be written.
    struct Open
    {
        const Element* tag;
        Children next, end;
        std::size_t indent;
        bool isInline;   ///< its first child is a text: no line feeds and no indents within
        bool behindText; ///< the child before `next` is a text
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
        const Element::Range<const Element> children = tag.children();
        const bool isInline = isText(*children.begin());
        if (!isInline) {
            out_.put('\n');
        }
        open_.push_back({&tag, children.begin(), children.end(), indent, isInline, false});
    }

    void nextChild(Open& parent)
    {
        const Element& child = *parent.next++;
        const bool isInline = parent.isInline;
        if (isInline && parent.behindText && isText(child)) {
            out_.put(' ');
        }
        parent.behindText = isText(child);
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

/// sizeHint: how long the text may become [bytes].
std::string written(const Element& root, std::string_view lead, std::size_t sizeHint)
{
    std::string text;
    text.reserve(lead.size() + sizeHint);
    text = lead;
    Sink out(text);
    Writer(out).write(root);
    if (root.kind() != Kind::Plain) {
        out.put('\n');
    }
    out.flush();
    return text;
}

} // namespace

/// A tree that was parsed is mostly written about as long as it was. A part of it may be small.
std::size_t Element::sizeHint() const
{
    return ownsArena_ && arena_ != nullptr ? arena_->parsedBytes : 0;
}

std::string Element::fragment() const
{
    return written(*this, {}, sizeHint());
}

std::string Element::toString() const
{
    return written(*this, kDeclaration, sizeHint());
}

Status Element::save(const std::string& path) const
{
    if (path.starts_with(':')) {
        return Status::failure("cannot write the embedded resource " + path);
    }
    return writeFileAtomically(path, toString());
}

} // namespace tvw::util::xml
