#include "core/unique_name.h"

#include "core/instance.h"
#include "core/library.h"
#include "core/library_manager.h"
#include "core/tool.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <unordered_set>

namespace tvw::rgs::core {

namespace {

/// A name without its number, and the number that comes next.
struct Numbered
{
    std::string base;
    std::uint64_t number;
    std::size_t width;
};

Numbered split(const std::string& name)
{
    constexpr std::size_t kMostDigits = 18; // more would not fit the number
    std::size_t digits = 0;
    while (digits < name.size() && digits < kMostDigits && name[name.size() - 1 - digits] >= '0' &&
           name[name.size() - 1 - digits] <= '9')
        ++digits;
    if (digits == 0)
        return {name.ends_with('_') ? name : name + "_", 1, 2};
    Numbered parts{name.substr(0, name.size() - digits), 0, digits};
    std::from_chars(name.data() + parts.base.size(), name.data() + name.size(), parts.number);
    return parts;
}

std::string join(const Numbered& parts)
{
    const std::string digits = std::to_string(parts.number);
    return parts.base + std::string(parts.width - std::min(parts.width, digits.size()), '0') + digits;
}

} // namespace

std::string uniqueName(const std::string& wanted, const std::function<bool(const std::string&)>& isTaken)
{
    std::string candidate = wanted;
    for (Numbered parts = split(wanted); isTaken(candidate); ++parts.number)
        candidate = join(parts);
    return candidate;
}

std::string uniqueName(const std::string& wanted, const Instance* except)
{
    std::unordered_set<std::string_view> taken;
    const LibraryManager& libraries = LibraryManager::instance();
    for (const Library* const library : libraries.libraries()) {
        for (const Tool* const tool : library->tools()) {
            for (const Instance* const other : tool->instances()) {
                if (other != except && other->isAlive())
                    taken.insert(other->name());
            }
        }
    }
    return uniqueName(wanted, [&](const std::string& name) { return taken.contains(name); });
}

} // namespace tvw::rgs::core
