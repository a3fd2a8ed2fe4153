/// The animation as a film or pictures.
#include "cli/commands.h"
#include "cli/scene.h"
#include "view/playblast.h"

#include <algorithm>
#include <cstdio>

namespace tvw::rgs::cli {

namespace {

struct Given
{
    std::string file, size, range;
    view::Playblast what;
    bool noGrid = false;
};

/// Both numbers of "AxB" or "A:B".
std::pair<double, double> pairOf(const std::string& text, char between, const std::string& what)
{
    const std::size_t cut = text.find(between);
    const auto first = numberOf(text.substr(0, cut));
    const auto second = cut == std::string::npos ? std::nullopt : numberOf(text.substr(cut + 1));
    if (!first || !second)
        throw Failure(what + ", not \"" + text + "\"", kUsage);
    return {*first, *second};
}

void readSize(Given& given)
{
    if (given.size.empty())
        return;
    const auto [width, height] = pairOf(given.size, 'x', "--size takes WIDTHxHEIGHT in pixels");
    const auto whole = [](double v) { return static_cast<int>(std::clamp(v, 0.0, 1e6)); };
    given.what.width = whole(width);
    given.what.height = whole(height);
}

void makePlayblast(Given& given)
{
    readSize(given);
    if (!given.range.empty()) {
        const auto [start, end] = pairOf(given.range, ':', "--range takes START:END in seconds");
        given.what.range = core::TimeRange{start, end};
    }
    given.what.grid = !given.noGrid;
    const SessionPointer session = openFile(given.file);
    ProgressLine line("playblast");
    given.what.progress = [&](double fraction) {
        line.show(fraction);
        return true;
    };
    check(view::playblast(session->stage(), given.what));
}

} // namespace

void addPlayblast(CLI::App& program)
{
    auto* const command =
        program.add_subcommand("playblast", "Draw the animation as a film or pictures");
    const auto given = std::make_shared<Given>();
    addFile(*command, given->file);
    addOutput(*command, given->what.output,
              "A film (.mp4, by ffmpeg), one picture (.png) or a folder of pictures");
    command->add_option("--camera", given->what.camera,
                        "The camera to look through; else the first FollowCam, else all in view");
    command->add_option("--size", given->size, "WIDTHxHEIGHT in pixels [1280x720]");
    command->add_option("--range", given->range, "START:END in seconds; else the scene's range");
    command->add_option("--samples", given->what.samples, "Samples of each pixel; 0 is fastest")
        ->check(CLI::Range(0, 16))
        ->capture_default_str();
    command->add_flag("--no-grid", given->noGrid, "Leave the grid out");
    command->callback([given] { makePlayblast(*given); });
}

} // namespace tvw::rgs::cli
