#include "adaptor/stage/undo_stack.h"

#include <algorithm>
#include <numeric>

namespace tvw::rgs::stage {

namespace {

/// Sets a flag for the length of a block.
class Restoring
{
public:
    Restoring(bool& flag, int& brackets) : flag_(flag), brackets_(brackets) { flag_ = true; }
    ~Restoring()
    {
        flag_ = false;
        brackets_ = 0;
    }
    Restoring(const Restoring&) = delete;
    Restoring& operator=(const Restoring&) = delete;

private:
    bool& flag_;
    int& brackets_;
};

} // namespace

void UndoStack::begin(std::string name)
{
    if (restoring_) {
        ++bracketsInRestore_; // opened by what a record set off: it must not end a bracket of ours
        return;
    }
    if (names_.empty()) {
        ++bracket_;
        cancelled_ = false;
        inUseBefore_ = inUse();
    }
    names_.push_back(std::move(name));
}

void UndoStack::end()
{
    if (restoring_) {
        bracketsInRestore_ = std::max(0, bracketsInRestore_ - 1);
        return;
    }
    if (names_.empty())
        return;
    open_.name = std::move(names_.back());
    names_.pop_back();
    if (names_.empty())
        close();
}

void UndoStack::cancel()
{
    if (!restoring_ && !names_.empty())
        cancelled_ = true;
    end();
}

bool UndoStack::push(CUndo* record)
{
    if (!isOpen()) {
        if (record)
            record->destroy();
        return false;
    }
    if (!record)
        return true;
    if (open_.records.empty())
        dropUndone(); // a new step has begun: what was undone can't be redone on top of it
    open_.records.push_back(record);
    return true;
}

void UndoStack::close()
{
    Step step = std::move(open_);
    open_ = {};
    if (step.records.empty())
        return;
    if (cancelled_) {
        takeBack(step);
        destroyBackward(step);
        return;
    }
    step.state = ++lastState_;
    step.grown = inUse() - inUseBefore_;
    done_.push_back(std::move(step));
    trim();
}

void UndoStack::takeBack(Step& step)
{
    const Restoring guard(restoring_, bracketsInRestore_);
    for (auto record = step.records.rbegin(); record != step.records.rend(); ++record)
        (*record)->restore(false);
}

bool UndoStack::undo()
{
    if (restoring_ || !names_.empty() || done_.empty())
        return false;
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    const Restoring guard(restoring_, bracketsInRestore_);
    const std::vector<CUndo*>& records = undone_.back().records;
    for (auto record = records.rbegin(); record != records.rend(); ++record)
        (*record)->restore(true);
    return true;
}

bool UndoStack::redo()
{
    if (restoring_ || !names_.empty() || undone_.empty())
        return false;
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    const Restoring guard(restoring_, bracketsInRestore_);
    for (CUndo* record : done_.back().records)
        record->redo();
    return true;
}

std::vector<std::string> UndoStack::undoNames() const
{
    std::vector<std::string> names;
    for (const Step& step : done_)
        names.push_back(step.name);
    return names;
}

std::vector<std::string> UndoStack::redoNames() const
{
    std::vector<std::string> names;
    for (const Step& step : undone_)
        names.push_back(step.name);
    return names;
}

void UndoStack::setLimit(std::size_t steps)
{
    limit_ = std::max<std::size_t>(1, steps);
    trim();
}

void UndoStack::setMemoryLimit(std::size_t bytes, std::size_t (*counter)())
{
    memoryLimit_ = static_cast<std::int64_t>(bytes);
    memoryInUse_ = counter;
    trim();
}

std::int64_t UndoStack::inUse() const
{
    return memoryInUse_ ? static_cast<std::int64_t>(memoryInUse_()) : 0;
}

bool UndoStack::isTooMuch() const
{
    if (!memoryInUse_ || done_.size() < 2)
        return done_.size() > limit_;
    const std::int64_t grown =
        std::accumulate(done_.begin(), done_.end(), std::int64_t{0},
                        [](std::int64_t sum, const Step& step) { return sum + step.grown; });
    return done_.size() > limit_ || grown > memoryLimit_;
}

void UndoStack::trim()
{
    while (isTooMuch()) {
        base_ = done_.front().state;
        destroyForward(done_.front());
        done_.erase(done_.begin());
    }
}

void UndoStack::dropUndone()
{
    const std::int64_t before = inUse();
    // The list's back is the oldest step, its front the newest.
    std::vector<Step> dropped;
    dropped.swap(undone_);
    for (Step& step : dropped)
        destroyBackward(step);
    inUseBefore_ -= before - inUse(); // what they held is none of the open step's
}

void UndoStack::destroyForward(Step& step)
{
    for (CUndo* record : step.records)
        record->destroy();
    step.records.clear();
}

void UndoStack::destroyBackward(Step& step)
{
    for (auto record = step.records.rbegin(); record != step.records.rend(); ++record)
        (*record)->destroy();
    step.records.clear();
}

void UndoStack::clear()
{
    base_ = ++lastState_;
    ++bracket_; // whoever has noted a change in an open bracket must note the next one anew
    dropUndone();
    std::vector<Step> dropped;
    dropped.swap(done_);
    dropped.push_back(std::move(open_));
    open_ = {};
    for (Step& step : dropped)
        destroyForward(step);
}

} // namespace tvw::rgs::stage
