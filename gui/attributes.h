/// Reads and writes the attributes of a component by a table of its fields: the one place that
/// knows how each type of value stands in a layout file.
///     constexpr Row<SpinnerFields> kRows[] = {row<&SpinnerFields::min>("min"), ...};
#pragma once

#include "gui/types.h"
#include "util/xml/element.h"

#include <span>
#include <string>
#include <string_view>

namespace tvw::gui {

// What does not fit the type leaves the value as it was.

void readValue(std::string_view text, int& value);
void readValue(std::string_view text, double& value);
void readValue(std::string_view text, std::string& value);
void readValue(std::string_view text, bool& value);  ///< "yes", "true", "no", "false"
void readValue(std::string_view text, Color& value); ///< four integers
void readValue(std::string_view text, Sides& value); ///< "left top right bottom"
void readValue(std::string_view text, HAlign& value);
void readValue(std::string_view text, VAlign& value);
void readValue(std::string_view text, FrameStyle& value);

std::string textOf(int value);
std::string textOf(double value); ///< the shortest that reads back to the same bits
std::string textOf(const std::string& value);
std::string textOf(bool value);
std::string textOf(const Color& value);
std::string textOf(const Sides& value);
std::string textOf(HAlign value);
std::string textOf(VAlign value);
std::string textOf(FrameStyle value);

/// One attribute of a tag and the field it fills.
template <class Fields>
struct Row
{
    const char* key;
    void (*read)(std::string_view text, Fields& fields);
    std::string (*text)(const Fields& fields);
    bool (*equal)(const Fields& a, const Fields& b);
};

template <auto Member>
struct MemberOf;
template <class Fields, class T, T Fields::*Member>
struct MemberOf<Member>
{
    using Owner = Fields;
};

template <auto Member>
constexpr auto row(const char* key)
{
    using Fields = typename MemberOf<Member>::Owner;
    return Row<Fields>{
        key, [](std::string_view text, Fields& fields) { readValue(text, fields.*Member); },
        [](const Fields& fields) { return textOf(fields.*Member); },
        [](const Fields& a, const Fields& b) { return a.*Member == b.*Member; }};
}

template <class Fields>
void readAttributes(const util::xml::Element& element, std::span<const Row<Fields>> rows,
                    Fields& fields)
{
    for (const Row<Fields>& row : rows) {
        if (element.hasAttribute(row.key))
            row.read(element.attributeValue(row.key), fields);
    }
}

/// Leaves out what equals the defaults.
template <class Fields>
void writeAttributes(util::xml::Element& element, std::span<const Row<Fields>> rows,
                     const Fields& fields, const Fields& defaults = Fields{})
{
    for (const Row<Fields>& row : rows) {
        if (!row.equal(fields, defaults))
            element.setAttribute(row.key, row.text(fields));
    }
}

/// `padding` or `margin` with its forms for one side (`padding-left`), which come behind it.
void readSides(const util::xml::Element& element, const std::string& key, Sides& sides);

} // namespace tvw::gui
