/// A scene to look at, driven by a script.
#include "cli/commands.h"
#include "cli/scene.h"
#include "demo/demo_scene.h"
#include "view/playblast.h"

namespace tvw::rgs::cli {

namespace {

struct Given
{
    std::string output, film;
    bool still = false;
};

void makeDemo(const Given& given)
{
    const SessionPointer session = startSession();
    check(demo::build(*session));
    if (!given.still) {
        ProgressLine line("driving");
        check(demo::driveAlong(*session, [&](double fraction) { line.show(fraction); }));
    }
    saveFile(*session, given.output);
    if (given.film.empty())
        return;
    ProgressLine line("film");
    view::Playblast film{.output = given.film};
    film.progress = [&](double fraction) {
        line.show(fraction);
        return true;
    };
    check(view::playblast(session->stage(), film));
}

} // namespace

void addDemo(CLI::App& program)
{
    auto* const command =
        program.add_subcommand("demo", "Make the demo scene and drive its car along the course");
    const auto given = std::make_shared<Given>();
    addOutput(*command, given->output);
    command->add_option("--film", given->film,
                        "Also draw it: a film (.mp4, by ffmpeg) or a folder of pictures");
    command->add_flag("--no-drive", given->still, "Leave the car at its start");
    command->callback([given] { makeDemo(*given); });
}

} // namespace tvw::rgs::cli
