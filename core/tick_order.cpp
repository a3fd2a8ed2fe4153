#include "core/tick_order.h"

#include "core/adaptor.h"
#include "core/contract/codes.h"
#include "core/core_implementation.h"
#include "core/instance.h"

#include <algorithm>

namespace tvw::rgs::core {

namespace {

/// A tool without the promise may see or move any other, whether it runs itself or not: a template
/// acts when an item changes.
bool allTickAlone()
{
    const auto all = CoreImplementation::instance().instances().collect(false);
    return std::all_of(all.begin(), all.end(), [](Instance* instance) {
        return instance->tool()->call(code::ticksAlone, nullptr) != 0;
    });
}

} // namespace

void TickOrder::arrange(const std::vector<Instance*>& running)
{
    sets_.clear();
    if (!allTickAlone()) {
        sets_.push_back(running);
        return;
    }
    const std::vector<std::size_t> numbers =
        adaptor()->separate({running.begin(), running.end()});
    for (std::size_t i = 0; i < running.size(); ++i) {
        sets_.resize(std::max(sets_.size(), numbers[i] + 1));
        sets_[numbers[i]].push_back(running[i]);
    }
}

void TickOrder::tick(std::int32_t first, std::int32_t count, double step) const
{
    for (const std::vector<Instance*>& set : sets_) {
        for (std::int32_t frame = first; frame < first + count; ++frame) {
            if (!CoreImplementation::instance().isResimulating())
                return; // a tool's act has ended the pass: its tools are stopped
            for (Instance* const instance : set)
                instance->tick(frame * step);
        }
    }
}

} // namespace tvw::rgs::core
