/// The plan of a sweep: ranges of items' values, and all combinations of them.
#pragma once

#include "cli/scene.h"

namespace tvw::rgs::cli {

/// "Tool/Item=a:b:step": a, a + step, ... up to b; or a single value as in any setting.
struct SweptItem
{
    std::string item;
    std::vector<std::string> values;
};

inline constexpr std::size_t kMostRuns = 10'000; ///< of one sweep

SweptItem parseSweptItem(const std::string& text);

/// All combinations, the last item's value changing first; of no items none. Failures are of usage.
std::vector<std::vector<Setting>> combinations(const std::vector<SweptItem>& items);

} // namespace tvw::rgs::cli
