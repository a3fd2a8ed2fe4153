#include "gui/qt/gui_start.h"
#include "studio/studio.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

namespace tvw::rgs::studio {

namespace {

int fail(const std::string& reason)
{
    std::fprintf(stderr, "rigstage-studio: %s\n", reason.c_str());
    return 1;
}

int run(int argc, char** argv)
{
    setUpApplication();
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QCommandLineParser parser;
    parser.setApplicationDescription("Perform animation live, keep the take, resimulate it.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption demo("demo", "Open the demo scene.");
    const QCommandLineOption user("user", "Keep profiles and settings in another folder.",
                                  "folder");
    parser.addOptions({demo, user});
    parser.addPositionalArgument("scene", "The scene (.glb) to open.");
    if (!parser.parse(arguments))
        return fail(parser.errorText().toStdString());
    if (parser.isSet("help") || parser.isSet("version")) {
        const QCoreApplication plain(argc, argv); // neither needs a display
        parser.process(plain);
    }
    if (parser.positionalArguments().size() > 1)
        return fail("one scene at a time can be open");
    if (const Status started = gui::startGui(); !started)
        return fail(started.reason());

    auto studio = Studio::start(parser.value(user).toStdString());
    if (!studio)
        return fail(studio.reason());
    StudioWindow& window = (*studio)->window();
    (*studio)->show();
    if (!parser.positionalArguments().isEmpty())
        window.openFile(parser.positionalArguments().first());
    else if (parser.isSet(demo))
        window.newDemo();
    window.offerLostTakes();
    window.activateWindow();
    return QApplication::exec();
}

} // namespace

} // namespace tvw::rgs::studio

int main(int argc, char** argv)
{
    return tvw::rgs::studio::run(argc, argv);
}
