#include "core/log.h"

#include <utility>

namespace tvw::rgs::core {

LogEntry::LogEntry(std::int32_t id, LogEntry* parent, NewLog* root, std::string text, LogKind kind,
                   LogSeverity severity)
    : id_(id), parent_(parent), root_(root), text_(std::move(text)),
      created_(std::chrono::system_clock::now()), changed_(created_), kind_(kind), severity_(severity)
{
}

LogEntry& LogEntry::add(std::string text, LogKind kind, LogSeverity severity)
{
    LogEntry* entry = nullptr;
    {
        const std::lock_guard guard(mutex_);
        children_.push_back(std::make_unique<LogEntry>(root_->nextId(), this, root_, std::move(text),
                                                       kind, severity));
        entry = children_.back().get();
    }
    root_->added(*entry);
    return *entry;
}

void LogEntry::setText(std::string text)
{
    const std::lock_guard guard(mutex_);
    text_ = std::move(text);
    changed_ = std::chrono::system_clock::now();
}

std::string LogEntry::text() const
{
    const std::lock_guard guard(mutex_);
    return text_;
}

LogEntry::Time LogEntry::changed() const
{
    const std::lock_guard guard(mutex_);
    return changed_;
}

std::vector<const LogEntry*> LogEntry::children() const
{
    const std::lock_guard guard(mutex_);
    std::vector<const LogEntry*> all;
    all.reserve(children_.size());
    for (const auto& child : children_)
        all.push_back(child.get());
    return all;
}

NewLog::NewLog() : LogEntry(0, nullptr, this, "root", LogKind::Root, LogSeverity::Notice) {}

void NewLog::setObserver(Observer observer)
{
    const std::lock_guard guard(listMutex_);
    observer_ = std::move(observer);
}

std::size_t NewLog::count() const
{
    const std::lock_guard guard(listMutex_);
    return entries_.size();
}

const LogEntry* NewLog::entryAt(std::size_t index) const
{
    const std::lock_guard guard(listMutex_);
    return index < entries_.size() ? entries_[index] : nullptr;
}

std::int32_t NewLog::nextId()
{
    const std::lock_guard guard(listMutex_);
    return ++lastId_;
}

void NewLog::added(const LogEntry& entry)
{
    Observer observer;
    {
        const std::lock_guard guard(listMutex_);
        entries_.push_back(&entry);
        observer = observer_;
    }
    if (observer)
        observer(entry);
}

NewLog& theLog()
{
    static NewLog log;
    return log;
}

void log(LogKind kind, LogSeverity severity, std::string text)
{
    theLog().add(std::move(text), kind, severity);
}

} // namespace tvw::rgs::core
