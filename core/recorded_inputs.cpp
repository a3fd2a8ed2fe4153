#include "core/recorded_inputs.h"

#include <algorithm>

namespace tvw::rgs::core {

using unidevice::Control;
using unidevice::PropertyHandler;

namespace {

bool hasRecordAt(const AVar_Linear<double>& line, double time)
{
    const int nearest = line.find(time);
    return nearest >= 0 && line.records()[static_cast<std::size_t>(nearest)].time == time;
}

} // namespace

void RecordedInputs::growTo(int count)
{
    for (Lines* const lines : {&lines_, &starts_}) {
        if (static_cast<int>(lines->size()) < count)
            lines->resize(static_cast<std::size_t>(count));
    }
}

void RecordedInputs::startRecording(double time, PropertyHandler& inputs, CInterface& runtime)
{
    runtime.pushUndo(new CVariableModUndo<Lines>(&lines_));
    runtime.pushUndo(new CVariableModUndo<Lines>(&starts_));
    growTo(inputs.count());
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        lines_[i].cutBehind(time);
        starts_[i].cutFrom(time);
    }
    for (int i = 0; i < inputs.count(); ++i) {
        auto& line = lines_[static_cast<std::size_t>(i)];
        const double raw = inputs.propertyAt(i)->raw();
        starts_[static_cast<std::size_t>(i)].set(time, raw);
        if (!hasRecordAt(line, time))
            line.set(time, raw);
    }
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
        waiting_.push_back(std::make_unique<Waiting>());
        temporary_.push_back(std::move(control));
    }
    for (int i = 0; i < inputs.count(); ++i) {
        unidevice::Property* const input = inputs.propertyAt(i);
        waiting_[static_cast<std::size_t>(i)]->hold(input->control());
        input->bind(temporary_[static_cast<std::size_t>(i)].get());
    }
    replay(time);
    for (std::size_t i = 0; i < std::min(temporary_.size(), starts_.size()); ++i) {
        if (hasRecordAt(starts_[i], time))
            temporary_[i]->current = starts_[i].get(time);
    }
}

void RecordedInputs::replay(double time)
{
    const std::size_t count = std::min(temporary_.size(), lines_.size());
    for (std::size_t i = 0; i < count; ++i)
        temporary_[i]->read(lines_[i].get(time));
}

void RecordedInputs::endReplay(PropertyHandler& inputs)
{
    const int count = std::min(inputs.count(), static_cast<int>(waiting_.size()));
    for (int i = 0; i < count; ++i) {
        Waiting& waiting = *waiting_[static_cast<std::size_t>(i)];
        inputs.propertyAt(i)->bind(waiting.control());
        waiting.hold(nullptr);
    }
    inputs.retryPending(); // a device that left meanwhile may be back
}

void RecordedInputs::Waiting::hold(Control* control)
{
    if (control_)
        control_->removeTarget(this);
    control_ = control;
    if (control_)
        control_->addTarget(this);
}

void RecordedInputs::Waiting::controlDeleted(Control*) { control_ = nullptr; }

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
