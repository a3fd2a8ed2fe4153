#include "adaptor/stage/lost_takes.h"

#include "adaptor/stage/scene_file.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/paths.h"
#include "util/file.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tvw::rgs::stage {

namespace format = journalformat;

// Reading a journal.

namespace {

/// Days of frames; a longer file is none of ours.
constexpr off_t kLargestJournal = off_t{1} << 32;

/// The content of the next whole block of that kind; false at the end of what is good.
bool nextBlock(format::Cursor& file, std::uint32_t kind, std::string_view& content)
{
    std::uint32_t found = 0;
    std::uint32_t size = 0;
    std::uint64_t sum = 0;
    return file.get(found) && file.get(size) && file.get(sum) && found == kind &&
           file.getBytes(size, content) && format::checksum(content) == sum;
}

bool readOrigin(format::Cursor& in, format::TakeOrigin& origin)
{
    std::uint32_t version = 0;
    if (!in.get(version) || version != format::kVersion)
        return false;
    for (double* const value : {&origin.framesPerSecond, &origin.step, &origin.start,
                                &origin.rangeStart, &origin.rangeEnd}) {
        if (!in.get(*value) || !std::isfinite(*value))
            return false;
    }
    return origin.step > 0.0 && in.get(origin.timeScale) && in.getText(origin.build) &&
           in.getText(origin.scene);
}

bool readTools(format::Cursor& in, JournalContent& out)
{
    std::uint32_t count = 0;
    if (!in.get(count) || count > in.left() / 8) // a name and a count each
        return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        format::ToolInputs tool;
        std::uint32_t inputs = 0;
        if (!in.getText(tool.tool) || !in.get(inputs) || inputs > in.left() / 4)
            return false;
        tool.inputs.resize(inputs);
        for (std::string& name : tool.inputs) {
            if (!in.getText(name))
                return false;
        }
        out.inputCount += inputs;
        out.tools.push_back(std::move(tool));
    }
    return true;
}

/// False, and the frames up to there stand, where a block holds what no take does.
bool readFrames(std::string_view content, JournalContent& out)
{
    format::Cursor in(content);
    const std::size_t frameBytes = (1 + out.inputCount) * sizeof(double);
    while (in.left() >= frameBytes) {
        double time = 0.0;
        (void)in.get(time);
        if (!std::isfinite(time) || (!out.times.empty() && !(time > out.times.back())))
            return false;
        out.times.push_back(time);
        for (std::size_t i = 0; i < out.inputCount; ++i) {
            double value = 0.0;
            (void)in.get(value);
            out.values.push_back(value);
        }
    }
    return in.left() == 0;
}

} // namespace

Result<JournalContent> readJournal(const std::string& path)
{
    using Answer = Result<JournalContent>;
    struct stat info = {};
    if (::stat(path.c_str(), &info) == 0 && info.st_size > kLargestJournal)
        return Answer::failure(path + " is too long for the journal of a take");
    const Result<std::string> bytes = readFile(path);
    if (!bytes)
        return Answer::failure(bytes.reason());
    format::Cursor file(*bytes);
    std::string_view content;
    if (!file.getBytes(sizeof(format::kMagic), content) ||
        content != std::string_view(format::kMagic, sizeof(format::kMagic)))
        return Answer::failure(path + " is not the journal of a take");
    JournalContent out;
    if (!nextBlock(file, format::kHeaderBlock, content))
        return Answer::failure("the journal " + path + " breaks off before the take begins");
    format::Cursor header(content);
    if (!readOrigin(header, out.origin) || !readTools(header, out))
        return Answer::failure("the journal " + path + " is of another version");
    while (nextBlock(file, format::kFramesBlock, content) && readFrames(content, out)) {
    }
    return out;
}

// Finding and removing.

namespace {

/// Whether the program that wrote the file still holds it.
bool isHeld(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool held = ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(file);
    return held;
}

LostTake describe(const std::string& path, const JournalContent& content)
{
    LostTake take;
    take.journal = path;
    take.snapshot = path + format::kSnapshotEnding;
    take.origin = content.origin;
    take.frames = content.times.size() - 1;
    take.end = content.times.back();
    struct stat info = {};
    if (::stat(path.c_str(), &info) == 0)
        take.writtenAt = info.st_mtime;
    return take;
}

} // namespace

std::vector<LostTake> findLostTakes()
{
    std::vector<LostTake> takes;
    const std::string user = core::getUserPath();
    if (user.empty())
        return takes;
    const std::string pattern = std::string("*") + format::kEnding;
    for (const std::string& path : core::listFiles(user + "/journal", pattern, false)) {
        if (isHeld(path))
            continue;
        const Result<JournalContent> content = readJournal(path);
        if (content && content->times.size() > 1)
            takes.push_back(describe(path, *content));
    }
    std::stable_sort(takes.begin(), takes.end(), [](const LostTake& a, const LostTake& b) {
        return a.writtenAt < b.writtenAt;
    });
    return takes;
}

Status discardLostTake(const LostTake& take)
{
    for (const std::string& path : {take.journal, take.snapshot}) {
        if (::unlink(path.c_str()) != 0 && errno != ENOENT)
            return Status::failure("cannot remove " + path + ": " + std::strerror(errno));
    }
    return {};
}

// Bringing one back.

namespace {

/// The tools of the journal in the scene, in its order. The reason when one is missing or has other
/// inputs.
Result<std::vector<core::Instance*>> toolsOf(Session& session, const JournalContent& content)
{
    using Answer = Result<std::vector<core::Instance*>>;
    std::vector<core::Instance*> tools;
    for (const format::ToolInputs& saved : content.tools) {
        core::InstanceReference* const reference = session.tool(saved.tool);
        if (!reference)
            return Answer::failure("the scene has no tool \"" + saved.tool + "\"");
        core::Instance& instance = reference->instance();
        const auto count = static_cast<std::size_t>(instance.properties().count());
        bool same = count == saved.inputs.size();
        for (std::size_t i = 0; same && i < count; ++i)
            same = instance.properties().propertyAt(static_cast<int>(i))->name() == saved.inputs[i];
        if (!same)
            return Answer::failure("the inputs of \"" + saved.tool +
                                   "\" are others than in the take");
        tools.push_back(&instance);
    }
    return tools;
}

/// As `RecordedInputs` has it of a take that begins at the first of the times.
void putInputs(core::RecordedInputs& inputs, const JournalContent& content, std::size_t first,
               std::size_t count)
{
    const double start = content.times.front();
    inputs.lines().resize(std::max(inputs.lines().size(), count));
    inputs.starts().resize(std::max(inputs.starts().size(), count));
    for (std::size_t i = 0; i < count; ++i) {
        auto& line = inputs.lines()[i];
        auto& starts = inputs.starts()[i];
        const auto value = [&](std::size_t frame) {
            return content.values[frame * content.inputCount + first + i];
        };
        line.cutBehind(start);
        starts.cutFrom(start);
        starts.set(start, value(0));
        if (line.empty() || line.records().back().time != start)
            line.set(start, value(0));
        for (std::size_t frame = 1; frame < content.times.size(); ++frame)
            line.set(content.times[frame], value(frame));
    }
}

} // namespace

Status recoverLostTake(Session& session, const LostTake& take, const Progress& progress)
{
    if (session.core().isRunning())
        return Status::failure("a run is on");
    const Result<JournalContent> content = readJournal(take.journal);
    if (!content)
        return Status::failure(content.reason());
    if (content->times.size() < 2)
        return Status::failure("the journal " + take.journal + " holds no frames");
    if (const Status opened = openScene(session, take.snapshot); !opened)
        return opened;
    session.setScenePath(content->origin.scene);
    const Result<std::vector<core::Instance*>> tools = toolsOf(session, *content);
    if (!tools)
        return Status::failure("cannot recover " + take.journal + ": " + tools.reason());
    std::size_t first = 0;
    for (std::size_t i = 0; i < tools->size(); ++i) {
        const std::size_t count = content->tools[i].inputs.size();
        core::Instance& tool = *(*tools)[i];
        putInputs(tool.recordedInputs(), *content, first, count);
        tool.liveSpinners().takeBegan(content->times.front(), tool.configuration());
        first += count;
    }
    return session.resimulate(content->times.front(), content->times.back(), progress);
}

} // namespace tvw::rgs::stage
