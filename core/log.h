/// The log: a tree of entries in memory.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tvw::rgs::core {

enum class LogKind : std::int32_t { General = 0, Root = 1, Box = 2 };
enum class LogSeverity : std::int32_t { Debug = 0, Information = 1, Notice = 2, Warning = 3, Error = 4 };

class NewLog;

/// One entry. Its mutex guards it against readers on other threads.
class LogEntry
{
public:
    using Time = std::chrono::system_clock::time_point;

    LogEntry(std::int32_t id, LogEntry* parent, NewLog* root, std::string text, LogKind kind,
             LogSeverity severity);
    virtual ~LogEntry() = default;
    LogEntry(const LogEntry&) = delete;
    LogEntry& operator=(const LogEntry&) = delete;

    /// Makes an entry below this one, owned by it, and tells the root's observer.
    LogEntry& add(std::string text, LogKind kind, LogSeverity severity);
    void setText(std::string text); ///< also moves the time of the last change

    std::int32_t id() const { return id_; }
    LogEntry* parent() const { return parent_; }
    std::string text() const;
    Time created() const { return created_; }
    Time changed() const;
    LogKind kind() const { return kind_; }
    LogSeverity severity() const { return severity_; }
    std::vector<const LogEntry*> children() const;

private:
    mutable std::mutex mutex_;
    std::int32_t id_;
    LogEntry* parent_;
    NewLog* root_;
    std::string text_;
    Time created_;
    Time changed_;
    LogKind kind_;
    LogSeverity severity_;
    std::vector<std::unique_ptr<LogEntry>> children_;
};

/// The root, and a flat list of all entries in the order of their making.
class NewLog final : public LogEntry
{
public:
    using Observer = std::function<void(const LogEntry&)>;

    NewLog();
    void setObserver(Observer observer); ///< hears of each new entry, on the thread that made it
    std::size_t count() const;
    const LogEntry* entryAt(std::size_t index) const; ///< null out of range

private:
    friend class LogEntry;
    std::int32_t nextId();
    void added(const LogEntry& entry);

    mutable std::mutex listMutex_;
    std::int32_t lastId_ = 0;
    std::vector<const LogEntry*> entries_;
    Observer observer_;
};

/// The process-wide log; made on first use, kept to the end of the process.
NewLog& theLog();

/// An entry below the root.
void log(LogKind kind, LogSeverity severity, std::string text);

} // namespace tvw::rgs::core
