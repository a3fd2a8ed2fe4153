#include "studio/studio.h"

#include "core/core_implementation.h"
#include "core/paths.h"
#include "core/version.h"
#include "gui/qt/gui_start.h"

#include <QApplication>
#include <QScreen>
#include <QSurfaceFormat>
#include <QWindow>

#include <algorithm>

namespace tvw::rgs::studio {

namespace {

constexpr int kFrame = 12;       // [pixels], of a window's frame, which comes later than its size
constexpr int kPanelWidth = 380; // [pixels], for the main window beside the studio
constexpr int kBarHeight = 60;   // [pixels], for a desktop's bar

void askForOpenGl()
{
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    format.setSamples(qEnvironmentVariableIntValue("RIGSTAGE_SAMPLES"));
    QSurfaceFormat::setDefaultFormat(format);
}

} // namespace

void setUpApplication()
{
    QCoreApplication::setApplicationName("rigstage-studio");
    QCoreApplication::setOrganizationName("Rigstage");
    QCoreApplication::setApplicationVersion(kVersion);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    askForOpenGl();
}

Result<std::unique_ptr<Studio>> Studio::start(const std::string& userFolder)
{
    std::unique_ptr<Studio> studio(new Studio);
    if (const Status begun = studio->begin(userFolder); !begun)
        return Result<std::unique_ptr<Studio>>::failure(begun.reason());
    return studio;
}

Status Studio::begin(const std::string& userFolder)
{
    if (!userFolder.empty() && !core::makeDirectories(userFolder))
        return Status::failure("cannot make the folder " + userFolder);
    auto session =
        stage::Session::start({.userFolder = userFolder,
                               .clock = &clock_,
                               .windows = &windows_,
                               .registerGui = [] { gui::registerComponents(); },
                               .startInput = [this] { input_ = std::make_unique<LiveInput>(); }});
    if (!session)
        return Status::failure(session.reason());
    session_ = *std::move(session);
    windows_.attach();
    window_ = std::make_unique<StudioWindow>(*session_, windows_);
    return {};
}

Studio::~Studio()
{
    window_.reset();
    windows_.detach();
    input_.reset();
    session_.reset();
}

void Studio::show()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    window_->resize(std::min(1280, screen.width() - kPanelWidth),
                    std::min(820, screen.height() - kBarHeight));
    window_->move(screen.left() + 8, screen.top() + 8);
    window_->restorePlace();
    window_->show();
    session_->core().openMainWindow(nullptr);
    placeMainWindow();
    window_->activateWindow();
}

/// Beside the studio, at the right edge of the screen at most, and no higher than that.
void Studio::placeMainWindow()
{
    const auto id = reinterpret_cast<WId>(windows_.mainWindowHandle());
    QWidget* const main = id != 0 ? QWidget::find(id) : nullptr;
    if (!main || !main->windowHandle())
        return;
    const QRect screen = window_->screen()->availableGeometry();
    main->resize(main->width(), std::min(main->height(), screen.height() - kBarHeight));
    const int x =
        std::min(window_->x() + window_->width() + kFrame, screen.right() - main->width() - kFrame);
    main->windowHandle()->setFramePosition({x, window_->y()});
}

} // namespace tvw::rgs::studio
