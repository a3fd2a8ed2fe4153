#include "gui/attributes.h"

#include "util/xml/number.h"

#include <charconv>
#include <limits>
#include <optional>

namespace tvw::gui {

namespace {

constexpr std::array<const char*, 4> kHAlignNames{"none", "left", "right", "center"};
constexpr std::array<const char*, 4> kVAlignNames{"none", "top", "bottom", "center"};
constexpr std::array<const char*, 4> kFrameNames{"none", "normal", "thin", "sunken"};

template <class Enum>
void readName(std::string_view text, const std::array<const char*, 4>& names, Enum& value)
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (text == names[i])
            value = static_cast<Enum>(i);
    }
}

std::optional<int> integerFrom(std::string_view text)
{
    const std::optional<long> value = util::xml::integer(text);
    if (!value || *value < std::numeric_limits<int>::min() ||
        *value > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(*value);
}

/// The integers of a text that are separated by blanks or commas; all four or nothing.
std::optional<std::array<int, 4>> fourIntegers(std::string_view text)
{
    std::array<int, 4> values{};
    for (int& value : values) {
        const std::size_t begin = text.find_first_not_of(" ,\t");
        if (begin == std::string_view::npos)
            return std::nullopt;
        text.remove_prefix(begin);
        const std::optional<int> number = integerFrom(text);
        if (!number)
            return std::nullopt;
        value = *number;
        text.remove_prefix(std::min(text.size(), text.find_first_of(" ,\t")));
    }
    return values;
}

int& at(Sides& sides, Side side)
{
    return sides[static_cast<std::size_t>(side)];
}

} // namespace

void readValue(std::string_view text, int& value)
{
    value = integerFrom(text).value_or(value);
}

void readValue(std::string_view text, double& value)
{
    value = util::xml::number(text).value_or(value);
}

void readValue(std::string_view text, std::string& value)
{
    value = text;
}

void readValue(std::string_view text, bool& value)
{
    if (text == "yes" || text == "true")
        value = true;
    else if (text == "no" || text == "false")
        value = false;
}

void readValue(std::string_view text, Color& value)
{
    if (const auto channels = fourIntegers(text))
        value = {(*channels)[0], (*channels)[1], (*channels)[2], (*channels)[3]};
}

void readValue(std::string_view text, Sides& value)
{
    if (const auto sides = fourIntegers(text)) {
        at(value, Side::Left) = (*sides)[0];
        at(value, Side::Top) = (*sides)[1];
        at(value, Side::Right) = (*sides)[2];
        at(value, Side::Bottom) = (*sides)[3];
    }
}

void readValue(std::string_view text, HAlign& value)
{
    readName(text, kHAlignNames, value);
}

void readValue(std::string_view text, VAlign& value)
{
    readName(text, kVAlignNames, value);
}

void readValue(std::string_view text, FrameStyle& value)
{
    readName(text == "raised" ? "normal" : text, kFrameNames, value);
}

std::string textOf(int value)
{
    return std::to_string(value);
}

std::string textOf(double value)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string textOf(const std::string& value)
{
    return value;
}

std::string textOf(bool value)
{
    return value ? "yes" : "no";
}

std::string textOf(const Color& value)
{
    return textOf(value.red) + " " + textOf(value.green) + " " + textOf(value.blue) + " " +
           textOf(value.alpha);
}

std::string textOf(const Sides& value)
{
    const auto side = [&](Side which) { return textOf(value[static_cast<std::size_t>(which)]); };
    return side(Side::Left) + " " + side(Side::Top) + " " + side(Side::Right) + " " +
           side(Side::Bottom);
}

std::string textOf(HAlign value)
{
    return kHAlignNames[static_cast<std::size_t>(value)];
}

std::string textOf(VAlign value)
{
    return kVAlignNames[static_cast<std::size_t>(value)];
}

std::string textOf(FrameStyle value)
{
    return kFrameNames[static_cast<std::size_t>(value)];
}

void readSides(const util::xml::Element& element, const std::string& key, Sides& sides)
{
    constexpr std::array<const char*, 4> kSuffixes{"-top", "-right", "-bottom", "-left"};
    readValue(element.attributeValue(key), sides);
    for (std::size_t i = 0; i < sides.size(); ++i)
        readValue(element.attributeValue(key + kSuffixes[i]), sides[i]);
}

} // namespace tvw::gui
