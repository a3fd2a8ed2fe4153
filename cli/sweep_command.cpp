/// One take under many settings, each in a process of its own.
///
/// The scene is opened once; the children are forked from there and share its memory. What they
/// find goes into a table that all of them share: each writes its own row.
#include "adaptor/stage/take_verify.h"
#include "cli/commands.h"
#include "cli/scene.h"
#include "cli/sweep.h"
#include "core/record_manager.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvw::rgs::cli {

using stage::Session;
using stage::StageNode;

namespace {

struct Sweep
{
    std::string file, folder;
    std::vector<std::string> settings;
    int jobs = 1;
    bool json = false;
};

// Positions of the base take.

/// World positions of all nodes that move, at each frame of the take.
class Paths
{
public:
    Paths(Session& session, const stage::TakeExtent& extent)
    {
        const double step = session.stage().getFrameDuration();
        const auto first = core::RecordManager::timeToFrame(extent.start, step);
        for (std::int32_t frame = first; frame * step <= extent.end + step / 2; ++frame)
            times_.push_back(frame * step);
        session.stage().forEachNode([&](StageNode& node) {
            if (moves(node))
                nodes_.push_back(&node);
        });
        positions_.reserve(nodes_.size() * times_.size());
        for (const StageNode* const node : nodes_) {
            for (const double time : times_)
                positions_.push_back(positionOf(*node, time));
        }
    }

    [[nodiscard]] const std::vector<const StageNode*>& nodes() const { return nodes_; }

    /// How far the node is at most from where it was [m].
    [[nodiscard]] double distance(std::size_t node) const
    {
        double largest = 0.0;
        for (std::size_t i = 0; i < times_.size(); ++i) {
            const Vector3d is = positionOf(*nodes_[node], times_[i]);
            const Vector3d was = positions_[node * times_.size() + i];
            largest = std::max(largest, std::hypot(is.x - was.x, is.y - was.y, is.z - was.z));
        }
        return largest;
    }

private:
    static bool moves(const StageNode& node)
    {
        for (const StageNode* at = &node; at; at = at->parent()) {
            if (!at->poseKeys().empty())
                return true;
        }
        return false;
    }
    static Vector3d positionOf(const StageNode& node, double time)
    {
        const Matrix4 pose = node.world(time);
        return {pose[12], pose[13], pose[14]};
    }

    std::vector<const StageNode*> nodes_;
    std::vector<double> times_;
    std::vector<Vector3d> positions_; ///< for each node one for each time
};

// Rows that children fill.

/// Memory that forked processes share.
class SharedRows
{
public:
    static constexpr std::size_t kReasonBytes = 512;

    SharedRows(std::size_t rows, std::size_t columns)
        : rowBytes_(kReasonBytes + columns * sizeof(double)), bytes_(rows * rowBytes_)
    {
        memory_ =
            ::mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory_ == MAP_FAILED)
            throw std::bad_alloc();
    }
    ~SharedRows() { ::munmap(memory_, bytes_); }
    SharedRows(const SharedRows&) = delete;
    SharedRows& operator=(const SharedRows&) = delete;

    /// Why the run failed; empty: it did not.
    [[nodiscard]] char* reason(std::size_t row) const
    {
        return static_cast<char*>(memory_) + row * rowBytes_;
    }
    [[nodiscard]] double* distances(std::size_t row) const
    {
        return reinterpret_cast<double*>(reason(row) + kReasonBytes);
    }
    void setReason(std::size_t row, const std::string& text) const
    {
        std::snprintf(reason(row), kReasonBytes, "%s", text.c_str());
    }

private:
    std::size_t rowBytes_;
    std::size_t bytes_;
    void* memory_;
};

struct Plan
{
    const Sweep& sweep;
    Session& session;
    stage::TakeExtent extent;
    std::vector<std::vector<Setting>> runs;
    Paths base;
    SharedRows rows;

    [[nodiscard]] std::string outputOf(std::size_t run) const
    {
        char number[16];
        std::snprintf(number, sizeof(number), "-%04zu.glb", run + 1);
        return sweep.folder + "/" + std::filesystem::path(sweep.file).stem().string() + number;
    }
};

// A child's work.

[[noreturn]] void runChild(const Plan& plan, std::size_t run)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    int status = 0;
    try {
        for (const Setting& setting : plan.runs[run])
            apply(plan.session, setting);
        check(plan.session.resimulate(plan.extent.start, plan.extent.end));
        saveFile(plan.session, plan.outputOf(run));
        for (std::size_t i = 0; i < plan.base.nodes().size(); ++i)
            plan.rows.distances(run)[i] = plan.base.distance(i);
    } catch (const std::exception& error) {
        plan.rows.setReason(run, error.what());
        status = 1;
    }
    ::_exit(status);
}

/// Starts the runs, as many at once as asked for, and waits for all.
void runAll(const Plan& plan)
{
    ProgressLine line("Sweeping");
    std::map<pid_t, std::size_t> active;
    std::size_t next = 0;
    std::size_t done = 0;
    while (done < plan.runs.size()) {
        while (next < plan.runs.size() && static_cast<int>(active.size()) < plan.sweep.jobs) {
            const pid_t child = ::fork();
            if (child == 0)
                runChild(plan, next);
            if (child > 0)
                active[child] = next;
            else if (active.empty())
                throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
            else
                break;
            ++next;
        }
        int status = 0;
        const pid_t ended = ::waitpid(-1, &status, 0);
        const auto found = active.find(ended);
        if (found == active.end())
            continue;
        if (WIFSIGNALED(status))
            plan.rows.setReason(found->second, std::string("the run ended with: ") +
                                                   ::strsignal(WTERMSIG(status)));
        active.erase(found);
        line.show(static_cast<double>(++done) / static_cast<double>(plan.runs.size()));
    }
}

// The table.

void printJson(const Plan& plan)
{
    Json runs = Json::array();
    for (std::size_t run = 0; run < plan.runs.size(); ++run) {
        const std::string reason = plan.rows.reason(run);
        Json settings = Json::object();
        for (const Setting& setting : plan.runs[run])
            settings[setting.item] = setting.value;
        Json row = {{"file", plan.outputOf(run)}, {"settings", settings}};
        if (!reason.empty()) {
            row["error"] = reason;
        } else {
            Json distances = Json::object();
            for (std::size_t i = 0; i < plan.base.nodes().size(); ++i)
                distances[plan.base.nodes()[i]->name()] = plan.rows.distances(run)[i];
            row["difference"] = distances;
        }
        runs.push_back(row);
    }
    print({{"base", plan.sweep.file},
           {"start", plan.extent.start},
           {"end", plan.extent.end},
           {"runs", runs}});
}

/// Tab-separated: the file, the settings, then for each node that moves its largest distance [m].
void printTable(const Plan& plan)
{
    std::string head = "file";
    for (const Setting& setting : plan.runs.front())
        head += "\t" + setting.item;
    for (const StageNode* const node : plan.base.nodes())
        head += "\t" + node->name() + " [m]";
    std::puts(head.c_str());
    for (std::size_t run = 0; run < plan.runs.size(); ++run) {
        std::string row = plan.outputOf(run);
        for (const Setting& setting : plan.runs[run])
            row += "\t" + setting.value;
        const std::string reason = plan.rows.reason(run);
        if (!reason.empty())
            row += "\tfailed: " + reason;
        for (std::size_t i = 0; reason.empty() && i < plan.base.nodes().size(); ++i)
            row += "\t" + textOf(plan.rows.distances(run)[i]);
        std::puts(row.c_str());
    }
}

void run(const Sweep& sweep)
{
    std::vector<SweptItem> items;
    for (const std::string& text : sweep.settings)
        items.push_back(parseSweptItem(text));
    auto runs = combinations(items);
    const SessionPointer session = openFile(sweep.file);
    const auto extent = stage::takeExtent(*session);
    if (!extent)
        throw Failure(sweep.file + " has no take: record one first");
    for (const Setting& setting : runs.front())
        splitToolPath(*session, setting.item); // a wrong name fails once, not in each run
    std::error_code failed;
    std::filesystem::create_directories(sweep.folder, failed);
    if (failed)
        throw Failure("cannot make the folder " + sweep.folder + ": " + failed.message());
    Paths base(*session, *extent);
    const std::size_t columns = base.nodes().size();
    const std::size_t count = runs.size();
    const Plan plan{sweep, *session, *extent, std::move(runs), std::move(base), {count, columns}};
    runAll(plan);
    sweep.json ? printJson(plan) : printTable(plan);
    std::size_t failures = 0;
    for (std::size_t i = 0; i < count; ++i)
        failures += *plan.rows.reason(i) ? 1 : 0;
    if (failures > 0)
        throw Failure(std::to_string(failures) + " of " + std::to_string(count) +
                      " runs failed: " + "the table says why");
}

} // namespace

void addSweep(CLI::App& program)
{
    auto* const command =
        program.add_subcommand("sweep", "Resimulate the takes under all combinations of settings");
    const auto sweep = std::make_shared<Sweep>();
    addFile(*command, sweep->file);
    command->add_option("--set", sweep->settings, "\"Tool/Item=first:last:step\"; may be repeated")
        ->allow_extra_args(false)
        ->required();
    addOutput(*command, sweep->folder, "The folder for the scenes, one for each combination");
    command->add_option("--jobs", sweep->jobs, "How many run at once")
        ->capture_default_str()
        ->check(CLI::Range(1, 1024));
    addJson(*command, sweep->json);
    command->callback([sweep] { run(*sweep); });
}

} // namespace tvw::rgs::cli
