#include "core/configadaptor/stored_number.h"

#include "util/base64.h"
#include "util/xml/number.h"

#include <cmath>
#include <cstring>
#include <string>

namespace tvw::rgs::core::configadaptor {

std::optional<double> storedNumber(const util::xml::Element& item)
{
    const std::string type = item.attributeValue("type");
    if (type.empty() || type == "generic")
        return util::xml::number(item.text());
    if (type != "blob")
        return std::nullopt;
    const std::string bytes = base64Decode(item.text());
    double value = 0.0;
    if (bytes.size() < sizeof value)
        return std::nullopt;
    std::memcpy(&value, bytes.data(), sizeof value);
    return std::isnan(value) ? std::nullopt : std::optional(value);
}

} // namespace tvw::rgs::core::configadaptor
