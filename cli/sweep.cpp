#include "cli/sweep.h"

#include <cmath>

namespace tvw::rgs::cli {

namespace {

std::vector<std::string> partsOf(const std::string& text)
{
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ':')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

} // namespace

SweptItem parseSweptItem(const std::string& text)
{
    const Setting setting = parseSetting(text);
    const std::vector<std::string> parts = partsOf(setting.value);
    if (parts.size() != 3)
        return {setting.item, {setting.value}};
    const auto first = numberOf(parts[0]);
    const auto last = numberOf(parts[1]);
    const auto step = numberOf(parts[2]);
    if (!first || !last || !step || *step == 0.0 || (*last - *first) / *step < 0.0)
        throw Failure("\"" + setting.value + "\" is no range: write it as \"first:last:step\"",
                      kUsage);
    constexpr double kRounding = 1e-9; // 0:1:0.1 ends with 1
    const double steps = std::floor((*last - *first) / *step + kRounding);
    if (!(steps < static_cast<double>(kMostRuns)))
        throw Failure("\"" + setting.value + "\" has more than " + std::to_string(kMostRuns) +
                          " values",
                      kUsage);
    SweptItem item{setting.item, {}};
    for (int i = 0; i <= static_cast<int>(steps); ++i)
        item.values.push_back(textOf(*first + i * *step));
    return item;
}

std::vector<std::vector<Setting>> combinations(const std::vector<SweptItem>& items)
{
    std::vector<std::vector<Setting>> all;
    if (items.empty())
        return all;
    all.emplace_back();
    for (const SweptItem& item : items) {
        if (all.size() * item.values.size() > kMostRuns)
            throw Failure("the sweep has more than " + std::to_string(kMostRuns) + " combinations",
                          kUsage);
        std::vector<std::vector<Setting>> longer;
        for (const auto& before : all) {
            for (const std::string& value : item.values) {
                longer.push_back(before);
                longer.back().push_back({item.item, value});
            }
        }
        all = std::move(longer);
    }
    return all;
}

} // namespace tvw::rgs::cli
