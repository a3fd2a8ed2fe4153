#include "adaptor/stage/journal.h"

#include "adaptor/stage/journal_format.h"
#include "adaptor/stage/scene_file.h"
#include "adaptor/stage/session.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/paths.h"
#include "core/version.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace tvw::rgs::stage {

namespace format = journalformat;

namespace {

constexpr auto kFlushEvery = std::chrono::milliseconds(250);
constexpr std::size_t kLeastBuffer = std::size_t{64} * 1024;

std::string systemReason(const std::string& path)
{
    return "cannot write " + path + ": " + std::strerror(errno);
}

/// A new file of that name with a number behind it, locked as long as it is open: whoever finds it
/// unlocked knows that its program is gone.
int createNumbered(const std::string& stem, std::string& path)
{
    for (int number = 1;; ++number) {
        path = stem + "-" + std::to_string(number) + format::kEnding;
        const int file =
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0600);
        if (file < 0 && errno == EEXIST)
            continue;
        if (file >= 0)
            ::flock(file, LOCK_EX | LOCK_NB);
        return file;
    }
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t done = ::write(file, bytes.data(), bytes.size());
        if (done < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(done > 0 ? static_cast<std::size_t>(done) : 0);
    }
    return true;
}

} // namespace

// The disk.

void DiskSync::begin(int file)
{
    ended_ = false;
    thread_ = std::thread([this, file] { work(file); });
}

void DiskSync::ask() noexcept
{
    requests_.fetch_add(1);
    requests_.notify_one();
}

void DiskSync::end()
{
    if (!thread_.joinable())
        return;
    ended_ = true;
    ask();
    thread_.join();
}

void DiskSync::work(int file) noexcept
{
    for (unsigned done = 0; !ended_;) {
        requests_.wait(done);
        done = requests_;
        if (!ended_)
            ::fdatasync(file);
    }
}

// The journal.

Journal::Journal(Session& session, std::function<void(std::string)> say)
    : session_(session), say_(std::move(say))
{
    session_.core().records().addObserver(this);
}

Journal::~Journal()
{
    session_.core().records().removeObserver(this);
    remove();
}

std::string Journal::snapshotPath() const
{
    return path_ + format::kSnapshotEnding;
}

void Journal::runComing()
{
    remove();
    const Status opened = open();
    writes_ = true;
    if (!opened)
        fail(opened.reason());
}

/// The file first, and locked, so that nobody takes the copy of the scene for one that was left
/// behind.
Status Journal::open()
{
    const std::string user = core::getUserPath();
    if (user.empty())
        return Status::failure("there is no folder for the user's files");
    const std::string folder = core::joinPath(user, "/journal");
    if (!core::makeDirectories(folder))
        return Status::failure("cannot make the folder " + folder);
    const std::string scene = std::filesystem::path(session_.scenePath()).stem().string();
    file_ = createNumbered(folder + "/" + (scene.empty() ? "unsaved" : scene) + "-" +
                               std::to_string(::getpid()),
                           path_);
    if (file_ < 0)
        return Status::failure(systemReason(std::exchange(path_, {})));
    return saveScene(session_, snapshotPath());
}

void Journal::runStarted(double start, const std::vector<core::Instance*>& running)
{
    if (!writes_)
        return;
    running_ = running;
    inputCounts_.clear();
    frameBytes_ = sizeof(double);
    for (core::Instance* const instance : running) {
        inputCounts_.push_back(static_cast<std::size_t>(instance->properties().count()));
        frameBytes_ += inputCounts_.back() * sizeof(double);
    }
    writeHeader(start);
    if (!writes_)
        return;
    capacity_ = std::max(kLeastBuffer, format::kBlockHead + 16 * frameBytes_);
    buffer_.reserve(capacity_);
    sync_.begin(file_);
    beginBlock(format::kFramesBlock);
    append(start, true);
    flush();
}

void Journal::writeHeader(double start)
{
    core::TimeRange range;
    session_.stage().getRange(range);
    buffer_.clear();
    if (!writeAll(file_, {format::kMagic, sizeof(format::kMagic)}))
        return fail(systemReason(path_));
    beginBlock(format::kHeaderBlock);
    format::put(buffer_, format::kVersion);
    for (const double value : {session_.stage().getFramesPerSecond(),
                               session_.stage().getFrameDuration(), start, range.start, range.end})
        format::put(buffer_, value);
    format::put(buffer_, static_cast<std::int32_t>(session_.core().getTimeScale()));
    format::putText(buffer_, std::string(kProductName) + " " + kVersion);
    format::putText(buffer_, session_.scenePath());
    format::put(buffer_, static_cast<std::uint32_t>(running_.size()));
    for (core::Instance* const instance : running_) {
        format::putText(buffer_, instance->name());
        format::put(buffer_, static_cast<std::uint32_t>(instance->properties().count()));
        for (int i = 0; i < instance->properties().count(); ++i)
            format::putText(buffer_, instance->properties().propertyAt(i)->name());
    }
    flush();
}

void Journal::frameDone(double time, const std::vector<core::Instance*>& running)
{
    if (!writes_)
        return;
    if (running != running_)
        return fail("the tools of the run have changed");
    if (buffer_.size() + frameBytes_ > capacity_)
        flush();
    append(time, false);
    if (writes_ && WallClock::now() - flushed_ >= kFlushEvery)
        flush();
}

/// Values as the take itself has kept them. Within what is reserved: allocates nothing.
void Journal::append(double time, bool isStart)
{
    format::put(buffer_, time);
    for (std::size_t tool = 0; tool < running_.size(); ++tool) {
        const core::RecordedInputs& inputs = running_[tool]->recordedInputs();
        const auto& starts = inputs.starts();
        const std::span<const double> newest = inputs.newest();
        for (std::size_t i = 0; i < inputCounts_[tool]; ++i) {
            if (isStart)
                format::put(buffer_, i < starts.size() ? starts[i].get(time) : 0.0);
            else
                format::put(buffer_, i < newest.size() ? newest[i] : 0.0);
        }
    }
}

/// The head's length and checksum are filled in when the block is written.
void Journal::beginBlock(std::uint32_t kind)
{
    buffer_.clear();
    format::put(buffer_, kind);
    format::put(buffer_, std::uint32_t{0});
    format::put(buffer_, std::uint64_t{0});
}

void Journal::flush()
{
    flushed_ = WallClock::now();
    if (!writes_ || buffer_.size() <= format::kBlockHead)
        return;
    const std::string_view content = std::string_view(buffer_).substr(format::kBlockHead);
    const auto size = static_cast<std::uint32_t>(content.size());
    const std::uint64_t sum = format::checksum(content);
    std::memcpy(buffer_.data() + 4, &size, sizeof(size));
    std::memcpy(buffer_.data() + 8, &sum, sizeof(sum));
    if (!writeAll(file_, buffer_))
        return fail(systemReason(path_));
    sync_.ask();
    beginBlock(format::kFramesBlock);
}

void Journal::runEnded()
{
    remove();
}

/// What has been written stays: it is the take up to here.
void Journal::fail(const std::string& reason)
{
    writes_ = false;
    if (!std::exchange(told_, true))
        say_("This take is not protected against a crash: " + reason + ".");
}

void Journal::remove()
{
    writes_ = false;
    running_.clear();
    sync_.end();
    if (path_.empty())
        return;
    ::unlink(path_.c_str());
    ::unlink(snapshotPath().c_str());
    if (file_ >= 0)
        ::close(std::exchange(file_, -1));
    path_.clear();
}

} // namespace tvw::rgs::stage
