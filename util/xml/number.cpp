#include "util/xml/number.h"

#include "util/xml/characters.h"

#include <charconv>
#include <cmath>

namespace tvw::util::xml {

namespace {

/// std::from_chars takes neither blanks nor a plus sign, which a stream does.
std::string_view withoutLead(std::string_view text)
{
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

template <class T>
std::optional<T> read(std::string_view text)
{
    text = withoutLead(text);
    T value{};
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc{}) {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::optional<double> number(std::string_view text)
{
    const std::optional<double> value = read<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<long> integer(std::string_view text)
{
    return read<long>(text);
}

} // namespace tvw::util::xml
