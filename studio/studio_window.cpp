#include "studio/studio_window.h"

#include "adaptor/stage/lost_takes.h"
#include "adaptor/stage/scene_file.h"
#include "app/app_windows.h"
#include "core/core_implementation.h"
#include "core/instance_reference.h"
#include "core/log.h"
#include "core/tool_record.h"
#include "core/version.h"
#include "demo/demo_scene.h"
#include "gui/box.h"
#include "gui/qt/boxes.h"
#include "studio/outliner.h"
#include "studio/properties.h"
#include "studio/timeline.h"
#include "studio/view_widget.h"
#include "unidevice/device_hub.h"
#include "util/xml/element.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QSettings>
#include <QSpinBox>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvw::rgs::studio {

namespace {

constexpr int kRefreshInterval = 66;    // [ms], of panels while nothing runs
constexpr double kSmooth = 0.1;         // share of the newest time in the readout
constexpr double kLeastPause = 12.0;    // [ms], between two pictures of a run
constexpr double kLongestPause = 250.0; // [ms], of a run that is late

core::CoreImplementation& core()
{
    return core::CoreImplementation::instance();
}

/// What the tools are set to, their inputs' bindings too, which no undo knows.
std::string toolRecords()
{
    util::xml::Element record;
    core::writeRecord(*core().instances().root(), core::recordflag::plain, record);
    return record.toString();
}

double smoothed(double before, double now)
{
    return before + kSmooth * (now - before);
}

} // namespace

StudioWindow::StudioWindow(stage::Session& session, app::AppWindows& windows)
    : session_(session), windows_(windows), view_(new ViewWidget(session)),
      timeline_(new Timeline(session)), outliner_(new Outliner(session)),
      properties_(new Properties(session))
{
    setObjectName("studio");
    resize(1280, 800);
    setCentralWidget(view_);
    buildDocks();
    buildMenus();
    buildTransport();
    timeline_->scrubbed = [this](double time) { goTo(time); };
    outliner_->changed = [this] { refresh(); };
    properties_->changed = [this] { refresh(); };
    view_->cameraChanged = [this] { fillCameras(); };
    view_->readout = [this] {
        return QString("simulation %1 ms\ninput %2 ms")
            .arg(frameMs_, 0, 'f', 2)
            .arg(inputMs_, 0, 'f', 3);
    };
    session_.stage().hooks.redrawViews = [this] { redrawIfDue(); };
    session_.onMessage = [this](const stage::Session::Message& message) {
        untold_.push_back(message.text);
        QTimer::singleShot(0, this, [this] { tellMessages(); });
    };
    core().records().addObserver(this);
    connect(&playTimer_, &QTimer::timeout, this, [this] { stepPlay(); });
    connect(&refreshTimer_, &QTimer::timeout, this, [this] {
        const stage::UndoStack& steps = session_.stage().undoStack();
        if (!core().isRunning() &&
            (session_.stage().version() != shownVersion_ || steps.state() != shownState_))
            refresh();
    });
    refreshTimer_.start(kRefreshInterval);
    sceneReplaced({});
}

StudioWindow::~StudioWindow()
{
    session_.stage().hooks.redrawViews = nullptr;
    session_.onMessage = nullptr;
    core().records().removeObserver(this);
}

void StudioWindow::refresh()
{
    shownVersion_ = session_.stage().version();
    shownState_ = session_.stage().undoStack().state();
    outliner_->refresh();
    if (!core().isRunning())
        properties_->refresh();
    timeline_->update();
    view_->scheduleRedraw();
    showUndoNames();
    showFrame();
    showTitle();
    showHint();
}

/// A take's frames go before its pictures: they get half of the time at most, and less when the
/// take is late. What else in this window moves with the take is painted with them, since each
/// repaint of the window costs as much as the view.
void StudioWindow::redrawIfDue()
{
    if (core().isRunning()) {
        const double pause = view_->msSincePicture();
        const double due = std::max(kLeastPause, view_->pictureMs());
        const bool isLate = core().records().framesBehind() > 0;
        if (pause < due || (isLate && pause < kLongestPause))
            return;
        timeline_->update();
        showFrame();
    }
    view_->scheduleRedraw();
}

void StudioWindow::showHint()
{
    const bool hasTools = !core().instances().collect(false).empty();
    const bool takesPart = !core().instances().collect(true).empty();
    if (core().isRunning() && !takesPart)
        view_->hint = "No tool takes part: nothing is recorded.  Space stops.\n"
                      "The red dots in the Rigstage window switch tools on.";
    else if (core().isRunning())
        view_->hint = core().isResimulating() ? QString() : "Recording.  Space stops.";
    else if (!hasTools)
        view_->hint = "Create a tool in the Rigstage window (F9), or choose File > New demo scene.";
    else if (takes_ == 0)
        view_->hint = "Press Record (F5), then perform: the arrow keys drive.  Space stops.";
    else if (takes_ == 1)
        view_->hint = "Drag in the time line to look at the take, Ctrl+Z takes it back.\n"
                      "Change the tool's settings and press Resimulate (F6): the same performance "
                      "runs again.";
    else
        view_->hint.clear();
}

void StudioWindow::complain(const std::string& what)
{
    ask(what, gui::box::ok | gui::box::warning);
}

/// Not in a run: no box comes between the hands and a take.
void StudioWindow::tellMessages()
{
    if (core().isRunning())
        return;
    for (const std::string& text : std::exchange(untold_, {}))
        complain(text);
}

/// Forced are the questions about the user's work: nobody else can answer whether to overwrite or
/// to lose it.
std::uint32_t StudioWindow::ask(const std::string& text, std::uint32_t flags, bool force)
{
    core::log(core::LogKind::Box, core::LogSeverity::Notice, text);
    return gui::messageBox(this, text, kProductName, flags, force);
}

void StudioWindow::goTo(double time)
{
    if (core().isRunning())
        return;
    session_.stage().setTime(time);
    properties_->refresh();
    timeline_->update();
    view_->scheduleRedraw();
    showFrame();
}

// Files.

bool StudioWindow::mayLeave()
{
    if (core().isRunning())
        core().stopRecord();
    core().records().finishResimulation();
    if (!isChanged() && toolRecords() == savedTools_)
        return true;
    const std::uint32_t answer =
        ask("The scene has changes that are not saved. Save them?",
            gui::box::save | gui::box::discard | gui::box::cancel | gui::box::question, true);
    if (answer == gui::box::save)
        return save();
    return answer == gui::box::discard;
}

bool StudioWindow::isChanged() const
{
    return changedBesides_ || session_.stage().undoStack().state() != savedState_;
}

void StudioWindow::noteSaved()
{
    savedState_ = session_.stage().undoStack().state();
    savedTools_ = toolRecords();
    changedBesides_ = false;
}

void StudioWindow::sceneReplaced(const QString& path)
{
    session_.setScenePath(path.toStdString());
    noteSaved();
    keyMode_->setChecked(session_.stage().keyMode());
    takes_ = 0;
    fillCameras();
    refresh();
}

void StudioWindow::newScene()
{
    if (!mayLeave())
        return;
    recovered_.reset(); // left without saving: it is offered again
    session_.clear();
    sceneReplaced({});
    view_->frameSelection();
}

void StudioWindow::newDemo()
{
    recovered_.reset();
    session_.clear();
    if (const Status built = demo::build(session_); !built)
        complain(built.reason());
    sceneReplaced({});
    view_->lookThrough(session_.stage().find("Car_FollowCam"));
    refresh();
}

bool StudioWindow::openFile(const QString& path)
{
    const QString whole = QFileInfo(path).absoluteFilePath();
    if (const Status opened = stage::openScene(session_, whole.toStdString()); !opened) {
        complain(opened.reason());
        if (!QFileInfo::exists(whole))
            forget(whole);
        return false;
    }
    recovered_.reset();
    sceneReplaced(whole);
    remember(whole);
    view_->frameSelection();
    return true;
}

bool StudioWindow::save()
{
    const std::string& path = session_.scenePath();
    return path.empty() ? saveAs() : saveTo(QString::fromStdString(path));
}

bool StudioWindow::saveTo(const QString& path)
{
    if (const Status saved = stage::saveScene(session_, path.toStdString()); !saved) {
        complain(saved.reason());
        return false;
    }
    session_.setScenePath(path.toStdString());
    noteSaved();
    if (recovered_) { // the file has it now
        if (const Status gone = stage::discardLostTake(*recovered_); !gone)
            complain(gone.reason());
        recovered_.reset();
    }
    remember(path);
    showTitle();
    return true;
}

void StudioWindow::forget(const QString& path)
{
    QSettings settings;
    QStringList files = settings.value("recent").toStringList();
    files.removeAll(path);
    settings.setValue("recent", files);
    fillRecent();
}

void StudioWindow::remember(const QString& path)
{
    constexpr int kRecent = 10;
    QSettings settings;
    QStringList files = settings.value("recent").toStringList();
    files.removeAll(path);
    files.prepend(path);
    while (files.size() > kRecent)
        files.removeLast();
    settings.setValue("recent", files);
    fillRecent();
}

void StudioWindow::offerLostTakes()
{
    for (const stage::LostTake& take : session_.lostTakes()) {
        const QString when =
            QLocale().toString(QDateTime::fromSecsSinceEpoch(take.writtenAt), QLocale::ShortFormat);
        const std::uint32_t answer =
            ask(QString("A take of %1 s was cut off (%2). Bring it back?")
                    .arg(take.end, 0, 'f', 1)
                    .arg(when)
                    .toStdString(),
                gui::box::yes | gui::box::no | gui::box::discard | gui::box::question, true);
        if (answer == gui::box::discard) {
            if (const Status gone = stage::discardLostTake(take); !gone)
                complain(gone.reason());
        }
        if (answer != gui::box::yes)
            continue;
        if (const Status done = session_.recover(take); !done)
            complain(done.reason());
        else
            recovered_ = take;
        const QString path = QString::fromStdString(session_.scenePath());
        sceneReplaced(path);
        changedBesides_ = true; // only here so far
        view_->frameSelection();
        refresh();
        return;
    }
}

void StudioWindow::closeEvent(QCloseEvent* event)
{
    if (!mayLeave()) {
        event->ignore();
        return;
    }
    QSettings settings;
    settings.setValue("geometry", saveGeometry());
    settings.setValue("panels", saveState());
    event->accept();
    qApp->quit();
}

void StudioWindow::restorePlace()
{
    const QSettings settings;
    restoreGeometry(settings.value("geometry").toByteArray());
    restoreState(settings.value("panels").toByteArray());
}

void StudioWindow::showTitle()
{
    const std::string& path = session_.scenePath();
    const QString name =
        path.empty() ? QString("Untitled") : QFileInfo(QString::fromStdString(path)).fileName();
    setWindowTitle(name + "[*] - " + kProductName);
    setWindowModified(isChanged());
}

// The run.

void StudioWindow::record()
{
    core::CoreImplementation& running = core();
    if (running.isRunning() && !running.isResimulating())
        running.stopRecord();
    else if (!running.isRunning())
        running.startRecord();
    record_->setChecked(running.isRunning() && !running.isResimulating());
}

void StudioWindow::resimulate()
{
    if (core().isRunning())
        return;
    const core::TimeRange range = session_.stage().range();
    core().startResimulation(
        windows_.resimulateFromFirstFrame() ? range.start : session_.stage().getTime(), range.end);
}

void StudioWindow::runStarted(double start, const std::vector<core::Instance*>&)
{
    play(false); // from whichever window it was started
    lockForRun(true);
    takeStart_ = start;
    timeline_->setTakeStart(start);
    record_->setChecked(!core().isResimulating());
    showHint();
    view_->scheduleRedraw();
    view_->setFocus(); // a take's keys are the hands', not a spin box's
}

/// A run writes into an undo step that is open: what else changed the scene would go with the take.
void StudioWindow::lockForRun(bool on)
{
    for (QAction* const action : idleOnly_)
        action->setEnabled(!on);
    if (on) { // what there is to undo is shown when the run is over
        undo_->setEnabled(false);
        redo_->setEnabled(false);
    }
    for (QWidget* const panel :
         std::initializer_list<QWidget*>{outliner_, properties_, startBox_, endBox_, rateBox_})
        panel->setEnabled(!on);
}

void StudioWindow::beforeFrame(double)
{
    frameClock_.start();
}

void StudioWindow::frameDone(double, const std::vector<core::Instance*>&)
{
    inputMs_ = smoothed(inputMs_, unidevice::DeviceHub::instance().lastUpdateMs());
    frameMs_ = smoothed(frameMs_, static_cast<double>(frameClock_.nsecsElapsed()) / 1e6 -
                                      unidevice::DeviceHub::instance().lastUpdateMs());
    redrawIfDue();
}

void StudioWindow::runEnded()
{
    timeline_->setTakeStart({});
    record_->setChecked(false);
    lockForRun(false);
    ++takes_;
    const double now = session_.stage().getTime();
    const double last =
        core().isResimulating() ? now : std::max(takeStart_, core().records().frameTime());
    QTimer::singleShot(0, this, [this, now, last] { // when the run is over for all
        if (session_.stage().getTime() == now)
            goTo(last); // the clock stands between two frames: a next take would begin there
        refresh();
        tellMessages();
    });
}

} // namespace tvw::rgs::studio
