#include "plugins/common/custom_data.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace tvw::rgs {

void writeCustomNumber(util::xml::Element& custom, std::string_view name, double value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    custom.addChild(util::xml::TagWithData(name, std::string(text.data(), end)));
}

bool readCustomNumber(const util::xml::Element& custom, std::string_view name, double& value)
{
    const std::string_view text = custom.child(name).text();
    double number = 0.0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc{} || end != text.data() + text.size() || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

} // namespace tvw::rgs
