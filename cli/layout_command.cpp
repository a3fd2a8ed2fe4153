/// A look at a layout file. The only command that opens a window.
#include "cli/commands.h"
#include "cli/terminal.h"
#include "core/resources.h"
#include "gui/qt/gui_start.h"
#include "gui/qt/layout_viewer.h"

#include <cstdlib>

namespace tvw::rgs::cli {

namespace {

std::string folderOf(const std::string& file)
{
    const std::size_t end = file.find_last_of('/');
    return end == std::string::npos ? "." : file.substr(0, end);
}

/// A picture is drawn without a display; a window needs one, and Qt would end the process.
void choosePlatform(bool isPicture)
{
    if (isPicture)
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
    else if (!gui::hasDisplay())
        throw Failure("there is no display to show a window on; --screenshot FILE needs none");
}

} // namespace

void addLayout(CLI::App& program)
{
    struct Options
    {
        std::string file, images, screenshot;
    };
    auto* const command = program.add_subcommand("layout", "Show the window of a layout file");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "The layout (.xml)")->required();
    command->add_option("--images", options->images,
                        "The folder of its images (default: that of the file)");
    command->add_option("--screenshot", options->screenshot,
                        "Draw it into this file (.png) and end; needs no display");
    command->callback([options] {
        choosePlatform(!options->screenshot.empty());
        core::installResourceLoader();
        const std::string images =
            options->images.empty() ? folderOf(options->file) : options->images;
        const Status shown = gui::showLayout(options->file, images, options->screenshot);
        if (!shown)
            throw Failure(shown.reason());
    });
}

} // namespace tvw::rgs::cli
