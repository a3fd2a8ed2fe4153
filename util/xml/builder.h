/// Turns a text into a tree, in one pass over a copy of the text that the tree then refers to.
#pragma once

#include "util/xml/element.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvw::util::xml {

class Arena;

class Builder
{
public:
    explicit Builder(Arena& arena) : arena_(arena) {}

    /// Fills root, a cleared element of the arena; a code.
    int build(std::string_view text, Element& root);

private:
    enum class TokenKind { Text, Open, Close, Empty, Special, End };
    struct Token
    {
        TokenKind kind;
        char* begin;
        char* end;
        bool mayHoldReferences; ///< of texts and special tokens
        [[nodiscard]] std::string_view text() const
        {
            return {begin, static_cast<std::size_t>(end - begin)};
        }
    };
    /// A tag whose closing tag has not come yet; its children so far are the pending ones from
    /// firstChild on, up to those of the next open tag.
    struct OpenTag
    {
        Element* element;
        std::size_t firstChild;
    };

    Token nextToken();
    int buildRoot(Element& root);
    int buildContent();
    int openTag(Element& element, const Token& token);
    int readAttributes(char* at, char* end);
    void addAttribute(std::string_view key, char* value, char* valueEnd);
    std::size_t indexOfKey(std::string_view key);
    void setLeaf(Element& element, Kind kind, const Token& token);
    void closeLast();
    void closeAll();
    Element* newElement();

    Arena& arena_;
    char* at_ = nullptr;
    char* end_ = nullptr;
    std::vector<OpenTag> open_;
    std::vector<Element*> pending_;
    Element::AttributeRecord* attributes_ = nullptr; ///< of the tag that is being read
    std::size_t attributeCount_ = 0;
    std::size_t attributeCapacity_ = 0;
    std::unordered_map<std::string_view, std::size_t> keys_; ///< of attributes_, once they are many
};

} // namespace tvw::util::xml
