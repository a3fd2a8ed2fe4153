/// Takes that a crash or a kill cut off.
#include "adaptor/stage/lost_takes.h"
#include "cli/commands.h"
#include "cli/scene.h"

#include <cstdio>
#include <ctime>

namespace tvw::rgs::cli {

using stage::LostTake;

namespace {

struct Recovery
{
    std::string output, userFolder;
    int take = 0; ///< its number in the list; 0: the last
    bool discard = false;
    bool json = false;
};

std::string dateOf(std::int64_t seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm local{};
    char text[32] = "";
    if (::localtime_r(&time, &local))
        std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

void list(const std::vector<LostTake>& takes, bool asJson)
{
    Json all = Json::array();
    for (std::size_t i = 0; i < takes.size(); ++i) {
        const LostTake& take = takes[i];
        const std::string scene =
            take.origin.scene.empty() ? "a scene never saved" : take.origin.scene;
        if (!asJson)
            std::printf("%zu: %s, %s, %zu frames from %s to %s s\n", i + 1,
                        dateOf(take.writtenAt).c_str(), scene.c_str(), take.frames,
                        textOf(take.origin.start).c_str(), textOf(take.end).c_str());
        all.push_back({{"number", i + 1},
                       {"journal", take.journal},
                       {"scene", take.origin.scene},
                       {"written_at", take.writtenAt},
                       {"frames", take.frames},
                       {"start", take.origin.start},
                       {"end", take.end},
                       {"build", take.origin.build}});
    }
    if (asJson)
        print(all);
    else if (takes.empty())
        std::puts("no take was lost");
}

const LostTake& chosen(const std::vector<LostTake>& takes, int number)
{
    const int count = static_cast<int>(takes.size());
    if (count == 0)
        throw Failure("no take was lost: there is nothing to recover");
    if (number < 0 || number > count)
        throw Failure("there is no lost take " + std::to_string(number) +
                      ": \"rigstage recover\" lists " + std::to_string(count));
    return takes[static_cast<std::size_t>(number == 0 ? count - 1 : number - 1)];
}

/// The journal goes only when the take stands in a file.
void recover(const Recovery& options)
{
    if (options.discard && !options.output.empty())
        throw Failure("a take is either recovered or discarded: give -o or --discard", kUsage);
    const SessionPointer session =
        startSession({.userFolder = options.userFolder, .journalled = false});
    const std::vector<LostTake> takes = session->lostTakes();
    if (!options.discard && options.output.empty())
        return list(takes, options.json);
    const LostTake& take = chosen(takes, options.take);
    if (!options.discard) {
        {
            ProgressLine line("Recovering");
            check(session->recover(take, [&](double fraction) { line.show(fraction); }));
        }
        saveFile(*session, options.output);
    }
    check(stage::discardLostTake(take));
    if (options.json && !options.discard)
        print({{"file", options.output},
               {"start", take.origin.start},
               {"end", take.end},
               {"frames", take.frames}});
}

} // namespace

void addRecover(CLI::App& program)
{
    auto* const command = program.add_subcommand(
        "recover", "List or bring back takes that a crash or a kill cut off");
    const auto options = std::make_shared<Recovery>();
    command->add_option("-o,--output", options->output, "Recover a take into this scene (.glb)");
    command->add_option("--take", options->take, "Number of the take in the list; else the last");
    command->add_flag("--discard", options->discard, "Throw the take away instead");
    command->add_option("--user", options->userFolder, "The user's folder; else your own");
    addJson(*command, options->json);
    command->callback([options] { recover(*options); });
}

} // namespace tvw::rgs::cli
