#include "core/recorded_inputs.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::rgs::core {

using unidevice::Control;
using unidevice::PropertyHandler;

namespace {

bool hasRecordAt(const AVar_Linear<double>& line, double time)
{
    const int nearest = line.find(time);
    return nearest >= 0 && line.records()[static_cast<std::size_t>(nearest)].time == time;
}

bool isConstant(const AVar_Linear<double>& line, double value)
{
    const auto records = line.records();
    return std::all_of(records.begin(), records.end(),
                       [value](const auto& record) { return record.value == value; });
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
    Lines before;
    before.reserve(lines_.size());
    for (auto& line : lines_) // a file may hold more of either than the tool has inputs
        before.push_back(retakenFrom(line, time));
    runtime.pushUndo(new CVariableModUndo<Lines>(&lines_, std::move(before)));
    runtime.pushUndo(new CVariableModUndo<Lines>(&starts_));
    growTo(inputs.count());
    for (auto& start : starts_)
        start.cutFrom(time);
    raw_.resize(static_cast<std::size_t>(inputs.count()));
    rows_.reset();
    firstPlace_ = rows_.add(raw_.data(), raw_.size() * sizeof(double));
    for (std::size_t i = 0; i < raw_.size(); ++i) {
        auto& line = lines_[i];
        const double raw = inputs.propertyAt(static_cast<int>(i))->raw();
        starts_[i].set(time, raw);
        if (!hasRecordAt(line, time))
            line.set(time, raw);
    }
}

void RecordedInputs::record(double time, const PropertyHandler& inputs)
{
    if (raw_.empty())
        return;
    for (std::size_t i = 0; i < raw_.size(); ++i)
        raw_[i] = inputs.propertyAt(static_cast<int>(i))->raw();
    if (rows_.full())
        takeRows();
    rows_.write(time);
}

void RecordedInputs::takeRows() const
{
    if (rows_.count() == 0)
        return;
    for (std::size_t i = 0; i < raw_.size(); ++i) {
        for (std::size_t row = 0; row < rows_.count(); ++row)
            lines_[i].set(rows_.time(row), rows_.at<double>(row, firstPlace_ + i * sizeof(double)));
    }
    rows_.clear();
}

void RecordedInputs::startReplay(double time, double step, PropertyHandler& inputs)
{
    growTo(inputs.count());
    while (static_cast<int>(temporary_.size()) < inputs.count()) {
        Control& control = temporary_.emplace_back(nullptr, unidevice::kind::any, 0.0);
        control.description = "Temporary control";
        control.index = static_cast<std::int32_t>(temporary_.size()) - 1;
        waiting_.emplace_back();
    }
    for (int i = 0; i < inputs.count(); ++i) {
        unidevice::Property* const input = inputs.propertyAt(i);
        waiting_[static_cast<std::size_t>(i)].hold(input->control());
        input->bind(&temporary_[static_cast<std::size_t>(i)]);
    }
    moving_.clear();
    for (std::size_t i = 0; i < temporary_.size(); ++i) {
        const double atStart =
            hasRecordAt(starts_[i], time) ? starts_[i].get(time) : lines_[i].get(time);
        temporary_[i].previous = temporary_[i].current = atStart;
        if (!isConstant(lines_[i], atStart))
            moving_.push_back(i);
    }
    coming_.resize(kAhead * moving_.size());
    next_ = kAhead;
    step_ = step;
}

void RecordedInputs::replay(double time)
{
    if (next_ == kAhead || comingTimes_[next_] != time)
        lookAhead(time);
    const double* value = coming_.data() + next_ * moving_.size();
    for (const std::size_t i : moving_)
        temporary_[i].read(*value++);
    ++next_;
}

/// Reads the frame at that time and those behind it.
void RecordedInputs::lookAhead(double time)
{
    const double frame = std::round(time / step_);
    comingTimes_[0] = time;
    for (std::size_t k = 1; k < kAhead; ++k)
        comingTimes_[k] = (frame + static_cast<double>(k)) * step_;
    for (std::size_t place = 0; place < moving_.size(); ++place) {
        const auto& line = lines_[moving_[place]];
        for (std::size_t k = 0; k < kAhead; ++k)
            coming_[k * moving_.size() + place] = line.get(comingTimes_[k]);
    }
    next_ = 0;
}

void RecordedInputs::endReplay(PropertyHandler& inputs)
{
    const int count = std::min(inputs.count(), static_cast<int>(waiting_.size()));
    for (int i = 0; i < count; ++i) {
        Waiting& waiting = waiting_[static_cast<std::size_t>(i)];
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

void RecordedInputs::Waiting::controlDeleted(Control*)
{
    control_ = nullptr;
}

bool RecordedInputs::extent(double& first, double& last) const
{
    bool any = false;
    for (const auto& line : lines()) {
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
