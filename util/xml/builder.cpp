#include "util/xml/builder.h"

#include "util/xml/arena.h"
#include "util/xml/characters.h"
#include "util/xml/copy.h"
#include "util/xml/scan.h"

#include <limits>

namespace tvw::util::xml {

namespace {

/// Value of a hexadecimal digit, -1 for any other byte.
int digitOf(char byte)
{
    if (byte >= '0' && byte <= '9') {
        return byte - '0';
    }
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Reads "&#", an optional "x", digits and one more byte, whichever it is. Moves `at` behind it and
/// answers true with the byte it stands for; otherwise leaves `at`.
/// Without "x" the run may hold hexadecimal digits, but the number ends at the first of them.
bool readReference(const char*& at, const char* end, char& byte)
{
    const char* p = at + 1;
    if (p == end || *p++ != '#') {
        return false;
    }
    const bool isHex = p != end && *p == 'x';
    p += isHex ? 1 : 0;
    const char* const digits = p;
    unsigned value = 0;
    bool counts = true;
    for (int digit = 0; p != end && (digit = digitOf(*p)) >= 0; ++p) {
        counts = counts && (isHex || digit < 10);
        if (counts) {
            value = value * (isHex ? 16 : 10) + static_cast<unsigned>(digit);
        }
    }
    if (p == digits || p == end) {
        return false;
    }
    byte = static_cast<char>(value);
    at = p + 1;
    return true;
}

/// Replaces the references in [begin, end) in place; the new end.
char* unescape(char* begin, char* end)
{
    char* out = findByte(begin, end, '&');
    for (const char* in = out; in != end;) {
        char byte = *in;
        if (byte != '&' || !readReference(in, end, byte)) {
            ++in;
        }
        *out++ = byte;
    }
    return out;
}

char* skipSpace(char* at, const char* end)
{
    while (at != end && isSpace(*at)) {
        ++at;
    }
    return at;
}

std::uint32_t sizeOf(const char* begin, const char* end)
{
    return static_cast<std::uint32_t>(end - begin);
}

} // namespace

int Builder::build(std::string_view text, Element& root)
{
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        return code::badSyntax;
    }
    at_ = arena_.bytes(text.size() + kScanPadding);
    copyBytes(at_, text);
    std::memset(at_ + text.size(), 0, kScanPadding);
    end_ = at_ + text.size();
    arena_.parsedBytes += text.size();
    const int result = buildRoot(root);
    closeAll();
    return result;
}

/// The next token that is not empty. Blanks before a text are part of it, blanks before a tag are
/// nothing; so are those behind the last tag.
Builder::Token Builder::nextToken()
{
    while (true) {
        char* const begin = at_;
        char* at = skipSpace(begin, end_);
        if (at == end_) {
            at_ = end_;
            return {TokenKind::End, end_, end_, false};
        }
        if (*at != '<') {
            const Content text = findContent(at, end_, '<');
            at_ = text.end;
            return {TokenKind::Text, begin, at_, text.hasAmpersand};
        }
        ++at;
        TokenKind kind = TokenKind::Open;
        if (at != end_ && (*at == '/' || *at == '!')) {
            kind = *at == '/' ? TokenKind::Close : TokenKind::Special;
            ++at;
        }
        char* contentEnd = findByte(at, end_, '>');
        at_ = contentEnd == end_ ? end_ : contentEnd + 1;
        if (kind != TokenKind::Special && contentEnd != end_ && contentEnd != at &&
            contentEnd[-1] == '/') {
            kind = TokenKind::Empty;
            --contentEnd;
        }
        if (contentEnd != at) {
            return {kind, at, contentEnd, true};
        }
    }
}

int Builder::buildRoot(Element& root)
{
    Token token = nextToken();
    if (token.kind != TokenKind::Open && token.kind != TokenKind::Empty) {
        return code::noRoot;
    }
    if (*token.begin == '?') {
        token = nextToken();
    }
    switch (token.kind) {
    case TokenKind::Text:
        setLeaf(root, Kind::Text, token);
        return code::ok;
    case TokenKind::Special:
        setLeaf(root, Kind::Special, token);
        return code::ok;
    case TokenKind::Empty:
        return openTag(root, token);
    case TokenKind::Close:
        return code::noRoot;
    case TokenKind::End:
        return code::badSyntax;
    case TokenKind::Open:
        break;
    }
    open_.push_back({&root, 0});
    const int result = openTag(root, token);
    return result != code::ok ? result : buildContent();
}

/// Reads on until the root, the one open tag, is closed.
int Builder::buildContent()
{
    while (!open_.empty()) {
        const Token token = nextToken();
        if (token.kind == TokenKind::End) {
            return code::unclosed;
        }
        if (token.kind == TokenKind::Close) {
            if (!equalBytes(token.text(), open_.back().element->name())) {
                return code::mismatched;
            }
            closeLast();
            continue;
        }
        const bool isTag = token.kind == TokenKind::Open || token.kind == TokenKind::Empty;
        if (isTag && open_.size() >= kMaximumDepth) {
            return code::badSyntax;
        }
        Element* const element = newElement();
        if (!isTag) {
            setLeaf(*element, token.kind == TokenKind::Text ? Kind::Text : Kind::Special, token);
            pending_.push_back(element);
            continue;
        }
        open_.push_back({element, pending_.size()});
        if (const int result = openTag(*element, token); result != code::ok) {
            return result;
        }
        if (token.kind == TokenKind::Empty) {
            closeLast();
        }
    }
    return code::ok;
}

Element* Builder::newElement()
{
    return new (arena_.array<Element>(1)) Element(&arena_);
}

void Builder::setLeaf(Element& element, Kind kind, const Token& token)
{
    element.kind_ = static_cast<std::uint8_t>(kind);
    element.name_ = token.begin;
    element.nameSize_ =
        sizeOf(token.begin, token.mayHoldReferences ? unescape(token.begin, token.end) : token.end);
}

int Builder::openTag(Element& element, const Token& token)
{
    char* nameEnd = token.begin;
    while (nameEnd != token.end && !isSpace(*nameEnd)) {
        ++nameEnd;
    }
    element.kind_ = static_cast<std::uint8_t>(Kind::Tag);
    element.name_ = token.begin;
    element.nameSize_ = sizeOf(token.begin, unescape(token.begin, nameEnd));
    if (nameEnd == token.end) {
        return code::ok;
    }
    constexpr std::size_t kUsual = 8;
    if (!keys_.empty()) {
        keys_ = {}; // to clear a table that has grown takes as long as it is large
    }
    attributeCount_ = 0;
    attributeCapacity_ = kUsual;
    attributes_ = arena_.array<Element::AttributeRecord>(kUsual);
    const int result = readAttributes(nameEnd, token.end);
    arena_.giveBackFrom(attributes_ + attributeCount_, attributes_ + attributeCapacity_);
    element.attributes_ = attributes_;
    element.attributeCount_ = element.attributeCapacity_ =
        static_cast<std::uint32_t>(attributeCount_);
    return result;
}

int Builder::readAttributes(char* at, char* end)
{
    while (true) {
        at = skipSpace(at, end);
        if (at == end || *at == '?') {
            return code::ok;
        }
        char* const key = at;
        while (at != end && !is(*at, kKeyEnd)) {
            ++at;
        }
        const std::string_view keyText(key, static_cast<std::size_t>(at - key));
        if (end - at < 2 || *at != '=' || (at[1] != '"' && at[1] != '\'')) {
            return code::badSyntax;
        }
        char* const value = at + 2;
        const Content content = findContent(value, end, at[1]);
        if (content.end == end) {
            return code::badSyntax;
        }
        addAttribute(keyText, value,
                     content.hasAmpersand ? unescape(value, content.end) : content.end);
        at = content.end + 1;
    }
}

void Builder::addAttribute(std::string_view key, char* value, char* valueEnd)
{
    const std::uint32_t size = sizeOf(value, valueEnd);
    const std::size_t index = indexOfKey(key);
    if (index != attributeCount_) {
        attributes_[index].value = value;
        attributes_[index].valueSize = attributes_[index].valueCapacity = size;
        return;
    }
    if (attributeCount_ == attributeCapacity_) {
        attributeCapacity_ *= 2;
        attributes_ = regrown(arena_, attributes_, attributeCount_, attributeCapacity_);
    }
    attributes_[attributeCount_++] = {key.data(), value, static_cast<std::uint32_t>(key.size()),
                                      size, size};
}

/// Place of the attribute with that key, or their number if it is a new one. A few are compared one
/// by one; beyond that a table keeps a tag with very many from taking quadratic time.
std::size_t Builder::indexOfKey(std::string_view key)
{
    constexpr std::size_t kFew = 32;
    const std::size_t count = attributeCount_;
    const auto keyAt = [this](std::size_t i) {
        return std::string_view(attributes_[i].key, attributes_[i].keySize);
    };
    if (count < kFew) {
        std::size_t i = 0;
        while (i != count && !equalBytes(keyAt(i), key)) {
            ++i;
        }
        return i;
    }
    if (keys_.empty()) {
        for (std::size_t i = 0; i < count; ++i) {
            keys_.emplace(keyAt(i), i);
        }
    }
    return keys_.try_emplace(key, count).first->second;
}

/// The last open tag gets its children and becomes the next child of its parent, unless empty.
void Builder::closeLast()
{
    const OpenTag last = open_.back();
    open_.pop_back();
    const std::size_t count = pending_.size() - last.firstChild;
    if (count != 0) {
        Element** const children = arena_.array<Element*>(count);
        for (std::size_t i = 0; i < count; ++i) {
            children[i] = pending_[last.firstChild + i];
        }
        last.element->children_ = children;
        last.element->childCount_ = last.element->childCapacity_ =
            static_cast<std::uint32_t>(count);
        pending_.resize(last.firstChild);
    }
    if (!open_.empty() && !last.element->isEmpty()) {
        pending_.push_back(last.element);
    }
}

/// After a failure: what had been built stays in the tree.
void Builder::closeAll()
{
    while (!open_.empty()) {
        closeLast();
    }
}

} // namespace tvw::util::xml
