/// The journal of the take in progress: what the hands did, on the disk while they still do it.
///
/// While a take is recorded, the raw input of its tools goes to an append-only file in the folder
/// "journal" of the user's files, beside a copy of the scene as it was before the take. When the
/// take has ended and stands in the scene, both go. What a crash, a kill or a power cut leaves
/// behind is a lost take (lost_takes.h).
///
/// A frame costs a copy of its values; the file is written every quarter of a second at most, and
/// never waited for. A take whose journal can't be written is recorded all the same: the trouble is
/// told once.
#pragma once

#include "core/record_manager.h"
#include "util/result.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace tvw::rgs::stage {

class Session;

/// Has the system bring a file's bytes to the disk, on a thread of its own: whoever asks does not
/// wait.
class DiskSync
{
public:
    ~DiskSync() { end(); }

    void begin(int file); ///< open until `end`
    void ask() noexcept;  ///< no lock; several requests at once are one
    void end();           ///< waits for what is under way

private:
    void work(int file) noexcept;

    std::atomic<unsigned> requests_{0};
    std::atomic<bool> ended_{false};
    std::thread thread_;
};

class Journal final : public core::RunObserver
{
public:
    /// say: hears why a take has no journal. The session must outlive the journal.
    Journal(Session& session, std::function<void(std::string)> say);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// Of the take in progress; empty: none.
    [[nodiscard]] const std::string& path() const { return path_; }

    // RunObserver.
    void runComing() override;
    void runStarted(double start, const std::vector<core::Instance*>& running) override;
    void frameDone(double time, const std::vector<core::Instance*>& running) override;
    void runEnded() override;

private:
    using WallClock = std::chrono::steady_clock;

    Status open();
    void writeHeader(double start);
    void append(double time, bool isStart);
    void beginBlock(std::uint32_t kind);
    void flush();
    void fail(const std::string& reason);
    void remove();
    [[nodiscard]] std::string snapshotPath() const;

    Session& session_;
    std::function<void(std::string)> say_;
    std::string path_;
    int file_ = -1;
    DiskSync sync_;
    bool writes_ = false; ///< false: what stands in the file is all that it gets
    bool told_ = false;
    std::vector<core::Instance*> running_;
    std::vector<std::size_t> inputCounts_; ///< of each running tool
    std::size_t frameBytes_ = 0;
    std::string buffer_; ///< the block that is being filled
    std::size_t capacity_ = 0;
    WallClock::time_point flushed_;
};

} // namespace tvw::rgs::stage
