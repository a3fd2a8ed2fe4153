#include "adaptor/stage/session.h"
#include "app/app_windows.h"
#include "app/qt_clock.h"
#include "core/core_implementation.h"
#include "core/version.h"
#include "gui/qt/gui_start.h"
#include "studio/live_input.h"
#include "studio/studio_window.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QScreen>
#include <QSurfaceFormat>
#include <QWindow>

#include <cstdio>
#include <memory>

namespace tvw::rgs::studio {

namespace {

void askForOpenGl()
{
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    format.setSamples(qEnvironmentVariableIntValue("RIGSTAGE_SAMPLES"));
    QSurfaceFormat::setDefaultFormat(format);
}

/// Beside the studio, at the right edge of the screen.
void placeMainWindow(app::AppWindows& windows, const QWidget& studio)
{
    auto* const handle = reinterpret_cast<WId>(windows.mainWindowHandle()) != 0
                             ? QWidget::find(reinterpret_cast<WId>(windows.mainWindowHandle()))
                             : nullptr;
    if (!handle)
        return;
    const QRect screen = studio.screen()->availableGeometry();
    const int x = std::min(studio.frameGeometry().right() + 8,
                           screen.right() - handle->frameGeometry().width());
    handle->move(x, studio.frameGeometry().top());
}

int run(int argc, char** argv)
{
    QCoreApplication::setApplicationName("rigstage-studio");
    QCoreApplication::setOrganizationName("Rigstage");
    QCoreApplication::setApplicationVersion(kVersion);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    askForOpenGl();
    if (const Status started = gui::startGui(); !started) {
        std::fprintf(stderr, "rigstage-studio: %s\n", started.reason().c_str());
        return 1;
    }
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
    parser.process(arguments);

    app::QtClock clock;
    app::AppWindows windows;
    std::unique_ptr<LiveInput> input;
    auto session =
        stage::Session::start({.userFolder = parser.value(user).toStdString(),
                               .clock = &clock,
                               .windows = &windows,
                               .registerGui = [] { gui::registerComponents(); },
                               .startInput = [&] { input = std::make_unique<LiveInput>(); }});
    if (!session) {
        std::fprintf(stderr, "rigstage-studio: %s\n", session.reason().c_str());
        return 1;
    }
    windows.attach();
    int result = 0;
    {
        StudioWindow window(**session, windows);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        window.resize(std::min(1280, screen.width() - 380), std::min(820, screen.height() - 60));
        window.move(screen.left() + 8, screen.top() + 8);
        window.show();
        (*session)->core().openMainWindow(nullptr);
        placeMainWindow(windows, window);
        if (!parser.positionalArguments().isEmpty())
            window.openFile(parser.positionalArguments().first());
        else if (parser.isSet(demo))
            window.newDemo();
        window.offerLostTakes();
        window.activateWindow();
        result = QApplication::exec();
    }
    windows.detach();
    input.reset();
    session = Result<std::unique_ptr<stage::Session>>::failure("ended");
    return result;
}

} // namespace

} // namespace tvw::rgs::studio

int main(int argc, char** argv)
{
    return tvw::rgs::studio::run(argc, argv);
}
