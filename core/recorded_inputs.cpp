#include "core/recorded_inputs.h"

#include <algorithm>

namespace tvw::rgs::core {

using unidevice::Control;
using unidevice::PropertyHandler;

void RecordedInputs::growTo(int count)
{
    if (static_cast<int>(lines_.size()) < count)
        lines_.resize(static_cast<std::size_t>(count));
}

void RecordedInputs::startRecording(double time, PropertyHandler& inputs, CInterface& runtime)
{
    growTo(inputs.count());
    runtime.pushUndo(new CVariableModUndo<Lines>(&lines_));
    for (auto& line : lines_)
        line.cutFrom(time);
    record(time, inputs);
}

void RecordedInputs::record(double time, const PropertyHandler& inputs)
{
    const int count = std::min(inputs.count(), static_cast<int>(lines_.size()));
    for (int i = 0; i < count; ++i)
        lines_[static_cast<std::size_t>(i)].set(time, inputs.propertyAt(i)->raw());
}

void RecordedInputs::startReplay(double time, PropertyHandler& inputs)
{
    growTo(inputs.count());
    while (static_cast<int>(temporary_.size()) < inputs.count()) {
        auto control = std::make_unique<Control>(nullptr, unidevice::kind::any, 0.0);
        control->description = "Temporary control";
        control->index = static_cast<std::int32_t>(temporary_.size());
        bound_.push_back(control.get());
        temporary_.push_back(std::move(control));
    }
    swapControls(inputs);
    replay(time);
}

void RecordedInputs::replay(double time)
{
    const std::size_t count = std::min(temporary_.size(), lines_.size());
    for (std::size_t i = 0; i < count; ++i)
        temporary_[i]->read(lines_[i].get(time));
}

void RecordedInputs::endReplay(PropertyHandler& inputs) { swapControls(inputs); }

void RecordedInputs::swapControls(PropertyHandler& inputs)
{
    for (int i = 0; i < inputs.count(); ++i) {
        unidevice::Property* const input = inputs.propertyAt(i);
        Control* const before = input->control();
        input->bind(bound_[static_cast<std::size_t>(i)]);
        bound_[static_cast<std::size_t>(i)] = before;
    }
}

bool RecordedInputs::extent(double& first, double& last) const
{
    bool any = false;
    for (const auto& line : lines_) {
        if (line.empty())
            continue;
        const double begin = line.records().front().time;
        const double end = line.records().back().time;
        first = any ? std::min(first, begin) : begin;
        last = any ? std::max(last, end) : end;
        any = true;
    }
    return any;
}

} // namespace tvw::rgs::core
