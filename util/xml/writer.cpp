#include "util/xml/characters.h"
#include "util/xml/element.h"

#include <cstdio>
#include <fstream>
#include <vector>

namespace tvw::util::xml {

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\"?>\n";

void appendReference(std::string& out, char byte)
{
    out += "&#";
    out += std::to_string(static_cast<unsigned char>(byte));
    out += ';';
}

/// Appends the text with each byte that cannot stand for itself as a reference.
/// quote: one more such byte; NUL for none, since NUL is one anyway.
void appendEscaped(std::string& out, std::string_view text, char quote = '\0')
{
    std::size_t plain = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (is(text[i], kWritable) && text[i] != quote) {
            continue;
        }
        out.append(text, plain, i - plain);
        appendReference(out, text[i]);
        plain = i + 1;
    }
    out.append(text, plain, text.size() - plain);
}

void appendAttribute(std::string& out, const Attribute& attribute)
{
    const bool hasDouble = attribute.value.find('"') != std::string_view::npos;
    const bool hasSingle = attribute.value.find('\'') != std::string_view::npos;
    const char quote = hasDouble && !hasSingle ? '\'' : '"';
    out += ' ';
    out += attribute.key;
    out += '=';
    out += quote;
    appendEscaped(out, attribute.value, quote);
    out += quote;
}

bool isText(const Element& element)
{
    return element.kind() == Kind::Text;
}

/// Writes a tree without recursion, since a tree that was built by hand may have any depth.
class Writer
{
public:
    explicit Writer(std::string& out) : out_(out) {}

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
            appendEscaped(out_, element.name());
            break;
        case Kind::Special:
            out_ += "<!-- ";
            appendEscaped(out_, element.name());
            out_ += "-- >";
            break;
        case Kind::Tag:
            out_.append(isInline ? 0 : indent, '\t');
            beginTag(element, indent);
            break;
        case Kind::Plain:
            break;
        }
    }

    void beginTag(const Element& tag, std::size_t indent)
    {
        out_ += '<';
        appendEscaped(out_, tag.name());
        for (std::size_t i = 0; i < tag.attributeCount(); ++i) {
            appendAttribute(out_, tag.attributeAt(i));
        }
        if (tag.childCount() == 0) {
            out_ += "/>";
            return;
        }
        out_ += '>';
        const bool isInline = isText(tag.childAt(0));
        if (!isInline) {
            out_ += '\n';
        }
        open_.push_back({&tag, 0, indent, isInline});
    }

    void nextChild(Open& parent)
    {
        const Element& child = parent.tag->childAt(parent.next);
        const bool isInline = parent.isInline;
        if (isInline && parent.next > 0 && isText(child) &&
            isText(parent.tag->childAt(parent.next - 1))) {
            out_ += ' ';
        }
        ++parent.next;
        const std::size_t depth = open_.size();
        begin(child, parent.indent + 1, isInline); // may end the life of `parent`
        if (!isInline && open_.size() == depth && child.kind() != Kind::Plain) {
            out_ += '\n';
        }
    }

    void end()
    {
        const Open last = open_.back();
        open_.pop_back();
        if (!last.isInline) {
            out_.append(last.indent, '\t');
        }
        out_ += "</";
        appendEscaped(out_, last.tag->name());
        out_ += '>';
        if (!open_.empty() && !open_.back().isInline) {
            out_ += '\n';
        }
    }

    std::string& out_;
    std::vector<Open> open_;
};

} // namespace

std::string Element::fragment() const
{
    std::string out;
    Writer(out).write(*this);
    if (kind() != Kind::Plain) {
        out += '\n';
    }
    return out;
}

std::string Element::toString() const
{
    return std::string(kDeclaration) + fragment();
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
