/// Takes: recorded from a table, simulated again, checked.
#include "adaptor/stage/drive_table.h"
#include "adaptor/stage/take_verify.h"
#include "cli/commands.h"
#include "cli/scene.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"

#include <cmath>
#include <cstdio>
#include <optional>
#include <utility>

namespace tvw::rgs::cli {

using stage::DriveTable;
using stage::Session;
using unidevice::Property;

namespace {

struct Run
{
    std::string file, output, drive, tool;
    std::vector<std::string> settings;
    double seconds = 0.0;
    std::optional<double> start, from, to;
    bool json = false;
};

// Recording.

/// A pad with one axis for each column of a table, bound to the inputs that the columns name. The
/// inputs get their own bindings back at the end: a table is no part of the scene.
class Driver
{
public:
    Driver(Session& session, const DriveTable& table, const std::string& tool)
        : session_(session), table_(table)
    {
        for (const std::string& column : table.columns())
            held_.push_back(noted(inputOf(column, tool)));
        const int axes = static_cast<int>(held_.size());
        device_ = &session.addDevice("Table", {.axes = axes});
        for (int i = 0; i < axes; ++i)
            held_[static_cast<std::size_t>(i)].input->bind(device_->controlAt(i));
    }
    ~Driver()
    {
        for (const Held& held : held_) {
            held.input->bind(held.control);
            held.input->pendingControl() = held.pending;
        }
        session_.removeDevice(*device_);
    }
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    void setAll(double time)
    {
        for (std::size_t i = 0; i < held_.size(); ++i)
            device_->set("Axis", static_cast<int>(i), table_.valueAt(i, time));
    }

private:
    struct Held
    {
        Property* input;
        unidevice::Control* control;
        util::xml::Element pending;
    };

    static Held noted(Property& input) { return {&input, input.control(), input.pendingControl()}; }

    /// Of the tool, or with no tool given "Tool/Input".
    Property& inputOf(const std::string& column, const std::string& tool)
    {
        const ToolPath path = tool.empty() ? splitToolPath(session_, column)
                                           : ToolPath{&toolNamed(session_, tool), column};
        auto& inputs = path.tool->properties();
        if (!path.tool->reference()->takesPart())
            note("\"" + path.tool->name() + "\" is switched off and takes no part in the run");
        if (Property* const input = inputs.findProperty(path.rest))
            return *input;
        std::string names;
        for (int i = 0; i < inputs.count(); ++i)
            names += (i == 0 ? "\"" : ", \"") + inputs.propertyAt(i)->name() + "\"";
        throw Failure("\"" + path.tool->name() + "\" has no input \"" + path.rest + "\": it has " +
                      (names.empty() ? "none" : names));
    }

    Session& session_;
    const DriveTable& table_;
    std::vector<Held> held_;
    unidevice::ScriptedDevice* device_ = nullptr;
};

void takeFrom(Session& session, const Run& run, const std::optional<DriveTable>& table)
{
    std::optional<Driver> driver;
    if (table)
        driver.emplace(session, *table, run.tool);
    if (driver)
        driver->setAll(session.stage().getTime());
    ProgressLine line("Recording");
    Session::Take take;
    take.seconds = run.seconds;
    take.progress = [&](double fraction) { line.show(fraction); };
    take.beforeFrame = [&](double time) {
        if (driver)
            driver->setAll(time);
    };
    if (session.core().instances().collect(true).empty())
        note(run.file + " has no tool that takes part in a run: nothing is recorded");
    check(session.record(take));
}

/// What a run has left in the scene, for who goes on from there.
void report(Session& session, const Run& run)
{
    if (!run.json)
        return;
    Json out = {{"file", run.output}};
    if (const auto extent = stage::takeExtent(session)) {
        out["start"] = extent->start;
        out["end"] = extent->end;
    }
    out["fps"] = session.stage().getFramesPerSecond();
    print(out);
}

void record(const Run& run)
{
    const std::vector<Setting> settings = parseSettings(run.settings);
    if (!std::isfinite(run.seconds) || run.seconds <= 0.0)
        throw Failure("the length of a take must be a number of seconds above 0", kUsage);
    std::optional<DriveTable> table;
    if (!run.drive.empty())
        table = valueOf(DriveTable::load(run.drive));
    const SessionPointer session = openFile(run.file);
    if (!run.tool.empty())
        toolNamed(*session, run.tool);
    for (const Setting& setting : settings)
        apply(*session, setting);
    session->stage().setTime(run.start.value_or(session->stage().range().start));
    takeFrom(*session, run, table);
    saveFile(*session, run.output);
    report(*session, run);
}

// Resimulating.

void resimulate(const Run& run)
{
    const std::vector<Setting> settings = parseSettings(run.settings);
    const SessionPointer session = openFile(run.file);
    const auto extent = stage::takeExtent(*session);
    if (!extent && (!run.from || !run.to))
        throw Failure(run.file + " has no take: give the stretch with --from and --to");
    for (const Setting& setting : settings)
        apply(*session, setting);
    const double from = run.from ? *run.from : extent->start;
    const double to = run.to ? *run.to : extent->end;
    if (!(from < to))
        throw Failure("the stretch from " + textOf(from) + " to " + textOf(to) + " s is empty",
                      kUsage);
    {
        ProgressLine line("Resimulating");
        check(session->resimulate(from, to, [&](double fraction) { line.show(fraction); }));
    }
    saveFile(*session, run.output);
    report(*session, run);
}

// Verifying.

std::string sentence(const stage::TakeDifference& difference)
{
    const auto text = [](const std::optional<double>& value) {
        return value ? textOf(*value) : std::string("no key");
    };
    return "at " + textOf(difference.time) + " s, node \"" + difference.node + "\", " +
           difference.value + ": the take has " + text(difference.taken) + ", the resimulation " +
           text(difference.resimulated);
}

Json toJson(const std::string& file, const stage::TakeComparison& comparison, double step)
{
    Json out = {{"file", file},
                {"identical", !comparison.difference},
                {"start", comparison.extent.start},
                {"end", comparison.extent.end},
                {"keys", comparison.keys},
                {"difference", nullptr}};
    if (comparison.difference) {
        const stage::TakeDifference& at = *comparison.difference;
        const auto value = [](const std::optional<double>& number) {
            return number ? Json(*number) : Json(nullptr);
        };
        out["difference"] = {{"frame", std::llround(at.time / step)},
                             {"time", at.time},
                             {"node", at.node},
                             {"value", at.value},
                             {"take", value(at.taken)},
                             {"resimulated", value(at.resimulated)}};
    }
    return out;
}

void verify(const Run& run)
{
    const SessionPointer session = openFile(run.file);
    const Result<stage::TakeComparison> verified = [&] {
        ProgressLine line("Verifying");
        return stage::verifyTake(*session, [&](double fraction) { line.show(fraction); });
    }();
    if (!verified)
        throw Failure("cannot verify " + run.file + ": " + verified.reason());
    const stage::TakeComparison& comparison = *verified;
    const double step = session->stage().getFrameDuration();
    if (run.json)
        print(toJson(run.file, comparison, step));
    if (comparison.difference)
        throw Failure("the take of " + run.file + " is not what its input gives today: frame " +
                      std::to_string(std::llround(comparison.difference->time / step)) + ", " +
                      sentence(*comparison.difference));
    if (!run.json)
        std::printf("%s: %zu keys from %s to %s s are the same, bit for bit\n", run.file.c_str(),
                    comparison.keys, textOf(comparison.extent.start).c_str(),
                    textOf(comparison.extent.end).c_str());
}

} // namespace

void addRecord(CLI::App& program)
{
    auto* const command = program.add_subcommand("record", "Record a take at machine speed");
    const auto run = std::make_shared<Run>();
    addFile(*command, run->file);
    command->add_option(
        "--drive", run->drive,
        "Table of input (.csv): a column of times in seconds, then one for each input");
    command->add_option("--tool", run->tool,
                        "The tool whose inputs the columns name; else they are \"Tool/Input\"");
    command->add_option("--seconds", run->seconds, "Length of the take")->required();
    command->add_option("--start", run->start,
                        "Start of the take in seconds; else that of the range");
    addSettings(*command, run->settings, "\"Tool/Item=value\" before the take; may be repeated");
    addOutput(*command, run->output);
    addJson(*command, run->json);
    command->callback([run] { record(*run); });
}

void addResimulate(CLI::App& program)
{
    auto* const command = program.add_subcommand("resimulate", "Simulate the takes again");
    const auto run = std::make_shared<Run>();
    addFile(*command, run->file);
    command->add_option("--from", run->from, "Start in seconds; else that of the takes");
    command->add_option("--to", run->to, "End in seconds; else that of the takes");
    addSettings(*command, run->settings, "\"Tool/Item=value\" before the run; may be repeated");
    addOutput(*command, run->output);
    addJson(*command, run->json);
    command->callback([run] { resimulate(*run); });
}

void addVerify(CLI::App& program)
{
    auto* const command = program.add_subcommand(
        "verify", "Check that a resimulation gives the same keys, bit for bit");
    const auto run = std::make_shared<Run>();
    addFile(*command, run->file);
    addJson(*command, run->json);
    command->callback([run] { verify(*run); });
}

} // namespace tvw::rgs::cli
