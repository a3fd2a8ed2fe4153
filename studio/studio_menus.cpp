/// What is in the studio's menus, docks and transport bar.
#include "adaptor/stage/scene_file.h"
#include "app/app_windows.h"
#include "app/choose_output.h"
#include "core/core_implementation.h"
#include "core/version.h"
#include "gui/qt/style.h"
#include "studio/outliner.h"
#include "studio/properties.h"
#include "studio/studio_window.h"
#include "studio/timeline.h"
#include "studio/undo_keys.h"
#include "studio/view_widget.h"
#include "view/playblast.h"

#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSettings>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace tvw::rgs::studio {

namespace {

constexpr const char* kScenes = "Scenes (*.glb);;All files (*)";

core::CoreImplementation& core()
{
    return core::CoreImplementation::instance();
}

} // namespace

void StudioWindow::buildMenus()
{
    buildFileMenu();
    buildEditMenu();
    buildViewMenu();
    buildPlayMenu();
    QMenu* const help = menuBar()->addMenu("&Help");
    help->addAction("Guide", this, [this] { windows_.openHelp(""); });
    help->addAction(
        "First take", this, [this] { showHelp(); }, QKeySequence::HelpContents);
    help->addAction(
        "Rigstage window", this, [] { core().openMainWindow(nullptr); }, QKeySequence("F9"));
}

void StudioWindow::buildFileMenu()
{
    QMenu* const menu = menuBar()->addMenu("&File");
    menu->addAction(
        "&New", this, [this] { newScene(); }, QKeySequence::New);
    menu->addAction("New &demo scene", this, [this] {
        if (mayLeave())
            newDemo();
    });
    menu->addAction(
        "&Open...", this, [this] { open(); }, QKeySequence::Open);
    recent_ = menu->addMenu("Open &recent");
    fillRecent();
    menu->addSeparator();
    idleOnly_ = {menu->addAction(
                     "&Save", this, [this] { save(); }, QKeySequence::Save),
                 menu->addAction(
                     "Save &as...", this, [this] { saveAs(); }, QKeySequence("Ctrl+Shift+S"))};
    menu->addSeparator();
    idleOnly_.push_back(menu->addAction("&Import...", this, [this] { importFile(); }));
    idleOnly_.push_back(menu->addAction("&Export animation...", this, [this] { exportFile(); }));
    idleOnly_.push_back(menu->addAction("&Playblast...", this, [this] { playblast(); }));
    menu->addSeparator();
    menu->addAction(
        "&Quit", this, [this] { close(); }, QKeySequence::Quit);
}

void StudioWindow::buildEditMenu()
{
    QMenu* const menu = menuBar()->addMenu("&Edit");
    undo_ = menu->addAction(
        "Undo", this, [this] { undo(); }, QKeySequence::Undo);
    redo_ = menu->addAction("Redo", this, [this] { redo(); });
    redo_->setShortcuts({QKeySequence("Ctrl+Y"), QKeySequence("Ctrl+Shift+Z")});
    menu->addSeparator();
    idleOnly_.push_back(menu->addAction("Add empty", this, [this] {
        session_.stage().beginUndo("Add empty");
        session_.stage().select(session_.stage().addEmpty("Empty"), false);
        session_.stage().endUndo();
        refresh();
    }));
    QAction* const addCamera = menu->addAction("Add camera", this, [this] {
        session_.stage().beginUndo("Add camera");
        const view::Lens lens = view_->lens();
        session_.stage().select(
            session_.stage().addCamera("Camera", 45.0, orthonormalise(lens.world)), false);
        session_.stage().endUndo();
        refresh();
    });
    addCamera->setToolTip("Where the view stands now.");
    idleOnly_.push_back(addCamera);
    QAction* const remove =
        menu->addAction("Delete", this, [this] { outliner_->removeSelected(); });
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut); // of the view; in a table it means the cell
    view_->addAction(remove);
    idleOnly_.push_back(remove);
    menu->addSeparator();
    menu->addAction("Preferences...", this, [this] { windows_.openPreferences(); });
}

void StudioWindow::buildViewMenu()
{
    QMenu* const menu = menuBar()->addMenu("&View");
    menu->addAction(
        "Frame selection", this, [this] { view_->frameSelection(); }, QKeySequence("F"));
    cameras_ = menu->addMenu("Look through");
    connect(cameras_, &QMenu::aboutToShow, this, [this] { fillCameras(); });
    menu->addSeparator();
    const auto toggle = [&](const char* text, bool& flag) {
        QAction* const action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(flag);
        connect(action, &QAction::toggled, this, [this, &flag](bool on) {
            flag = on;
            view_->scheduleRedraw();
        });
        return action;
    };
    toggle("Grid", view_->options.grid)->setShortcut(QKeySequence("G"));
    toggle("Helpers", view_->options.helpers)->setShortcut(QKeySequence("H"));
    toggle("Shadows", view_->options.shadows);
    toggle("Cameras", view_->options.cameras);
    toggle("Motion path", view_->showsPath);
    toggle("Frame times", view_->showsTimes);
    menu->addSeparator();
    for (const QDockWidget* const dock : findChildren<QDockWidget*>())
        menu->addAction(dock->toggleViewAction());
}

void StudioWindow::buildPlayMenu()
{
    QMenu* const menu = menuBar()->addMenu("&Play");
    play_ = menu->addAction("Play");
    play_->setShortcut(QKeySequence("Space"));
    play_->setCheckable(true);
    connect(play_, &QAction::toggled, this, [this](bool on) { play(on); });
    menu->addAction(
        "First frame", this, [this] { goTo(session_.stage().range().start); },
        QKeySequence("Home"));
    menu->addAction(
        "Last frame", this, [this] { goTo(session_.stage().range().end); }, QKeySequence("End"));
    menu->addSeparator();
    record_ = menu->addAction(
        "Record", this, [this] { record(); }, QKeySequence("F5"));
    record_->setCheckable(true);
    record_->setToolTip("Record animation for the checked tools. Space stops.");
    resimulate_ = menu->addAction(
        "Resimulate", this, [this] { resimulate(); }, QKeySequence("F6"));
    resimulate_->setToolTip("Runs the recorded performance again with the present settings.");
    menu->addSeparator();
    keyMode_ = menu->addAction("Key mode");
    keyMode_->setCheckable(true);
    keyMode_->setToolTip("What you move by hand gets a key at the present frame.");
    connect(keyMode_, &QAction::toggled, this,
            [this](bool on) { session_.stage().setKeyMode(on); });
    for (QAction* const action : {play_, resimulate_, keyMode_})
        idleOnly_.push_back(action);
}

void StudioWindow::buildDocks()
{
    const auto dock = [&](const char* title, QWidget* content, Qt::DockWidgetArea area) {
        auto* const out = new QDockWidget(title);
        out->setObjectName(QString("dock_") + title);
        out->setWidget(content);
        addDockWidget(area, out);
        return out;
    };
    constexpr int kPanelWidth = 310; // [pixels]
    QDockWidget* const scene = dock("Scene", outliner_, Qt::LeftDockWidgetArea);
    QDockWidget* const panel = dock("Properties", properties_, Qt::LeftDockWidgetArea);
    resizeDocks({scene, panel}, {kPanelWidth, kPanelWidth}, Qt::Horizontal);
    resizeDocks({scene, panel}, {1, 1}, Qt::Vertical);
}

void StudioWindow::buildTransport()
{
    auto* const bar = new QWidget;
    auto* const all = new QVBoxLayout(bar);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(4);
    const auto button = [&](QAction* action, const char* text) {
        auto* const out = new QToolButton;
        out->setDefaultAction(action);
        out->setText(text);
        out->setMinimumSize(72, 26);
        out->setProperty(gui::kRecords, action != play_);
        row->addWidget(out);
    };
    button(record_, "Record");
    button(resimulate_, "Resimulate");
    button(play_, "Play");
    button(keyMode_, "Key mode");
    row->addStretch();
    frameLabel_ = new QLabel;
    frameLabel_->setObjectName("frame");
    row->addSpacing(8);
    row->addWidget(frameLabel_);
    row->addSpacing(8);
    row->addStretch();
    const auto box = [&](const char* name, const char* label) {
        row->addWidget(new QLabel(label));
        auto* const out = new QSpinBox;
        out->setObjectName(name);
        out->setRange(-1000000, 10000000);
        out->setKeyboardTracking(false);
        out->setToolTip("Frame");
        letUndoPass(*out);
        row->addWidget(out);
        connect(out, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { setRange(); });
        return out;
    };
    startBox_ = box("rangeStart", "Start");
    endBox_ = box("rangeEnd", "End");
    buildRateBox(*row);
    all->addLayout(row);
    all->addWidget(timeline_);
    auto* const dock = new QDockWidget("Time line");
    dock->setObjectName("dock_time");
    dock->setTitleBarWidget(new QWidget);
    dock->setWidget(bar);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
}

/// The end that was not changed gives way: a range has a frame at least.
void StudioWindow::setRange()
{
    const int start = startBox_->value();
    const int end = endBox_->value();
    if (end <= start) {
        QSpinBox* const other = sender() == startBox_ ? endBox_ : startBox_;
        const QSignalBlocker quiet(other);
        other->setValue(other == endBox_ ? start + 1 : end - 1);
    }
    const double rate = session_.stage().getFramesPerSecond();
    session_.stage().beginUndo("Range");
    session_.stage().setRange({startBox_->value() / rate, endBox_->value() / rate});
    session_.stage().endUndo();
    refresh();
}

void StudioWindow::buildRateBox(QHBoxLayout& row)
{
    rateBox_ = new QComboBox;
    rateBox_->setObjectName("rate");
    rateBox_->setToolTip("Frames per second");
    for (const int rate : {24, 25, 30, 48, 50, 60, 100, 120})
        rateBox_->addItem(QString("%1 fps").arg(rate), rate);
    row.addWidget(rateBox_);
    connect(rateBox_, QOverload<int>::of(&QComboBox::activated), this, [this](int place) {
        const double rate = rateBox_->itemData(place).toDouble();
        if (!core().isRunning() && rate != session_.stage().getFramesPerSecond()) {
            session_.stage().beginUndo("Frame rate");
            session_.stage().setFramesPerSecond(rate);
            session_.stage().endUndo();
        }
        refresh();
    });
}

/// One that is not in the list joins it.
void StudioWindow::showRate(double rate)
{
    int place = rateBox_->findData(rate);
    if (place < 0) {
        rateBox_->addItem(QString("%1 fps").arg(rate), rate);
        place = rateBox_->count() - 1;
    }
    rateBox_->setCurrentIndex(place);
}

void StudioWindow::open()
{
    if (!mayLeave())
        return;
    const QString path = QFileDialog::getOpenFileName(this, "Open", {}, kScenes);
    if (!path.isEmpty())
        openFile(path);
}

bool StudioWindow::saveAs()
{
    const QString path = app::chooseOutput(
        this, "Save as", QString::fromStdString(session_.scenePath()), kScenes, ".glb");
    return !path.isEmpty() && saveTo(path);
}

void StudioWindow::importFile()
{
    const QString path =
        QFileDialog::getOpenFileName(this, "Import", {},
                                     "Meshes and scenes (*.obj *.fbx *.glb *.gltf *.dae *.ply "
                                     "*.stl *.3ds *.blend);;All files (*)");
    if (path.isEmpty())
        return;
    if (const auto made = stage::importFile(session_.stage(), path.toStdString()); !made)
        complain(made.reason());
    refresh();
}

void StudioWindow::exportFile()
{
    const QString path = app::chooseOutput(this, "Export animation", {}, "glTF (*.glb)", ".glb");
    if (path.isEmpty())
        return;
    if (const Status done = stage::exportScene(session_.stage(), path.toStdString()); !done)
        complain(done.reason());
}

void StudioWindow::playblast()
{
    const QString path =
        app::chooseOutput(this, "Playblast", {}, "Film (*.mp4);;Picture (*.png)", ".mp4");
    if (path.isEmpty())
        return;
    QProgressDialog shown("Drawing the animation...", "Cancel", 0, 1000, this);
    shown.setWindowModality(Qt::ApplicationModal); // no take may begin meanwhile
    shown.setMinimumDuration(0);
    view::Playblast what{.output = path.toStdString()};
    if (view_->camera())
        what.camera = view_->camera()->name();
    else
        what.lens = view_->lens();
    what.progress = [&](double fraction) {
        shown.setValue(static_cast<int>(std::lround(fraction * 1000.0)));
        return !shown.wasCanceled();
    };
    const Status done = view::playblast(session_.stage(), what);
    shown.reset();
    if (!done && done.reason() != "cancelled")
        complain(done.reason());
}

void StudioWindow::undo()
{
    session_.stage().hostUndo();
    refresh();
}

void StudioWindow::redo()
{
    session_.stage().hostRedo();
    refresh();
}

void StudioWindow::showUndoNames()
{
    const auto show = [](QAction* action, const char* verb, const std::vector<std::string>& names) {
        action->setEnabled(!names.empty() && !core().isRunning());
        action->setText(names.empty()
                            ? QString(verb)
                            : QString("%1 %2").arg(verb, QString::fromStdString(names.back())));
    };
    show(undo_, "Undo", session_.stage().undoStack().undoNames());
    show(redo_, "Redo", session_.stage().undoStack().redoNames());
}

void StudioWindow::showFrame()
{
    const stage::Stage& scene = session_.stage();
    const double rate = session_.stage().getFramesPerSecond();
    const double time = session_.stage().getTime();
    frameLabel_->setText(QString("frame %1    %2 s")
                             .arg(static_cast<long>(std::lround(time * rate)))
                             .arg(time, 0, 'f', 2));
    showRate(rate);
    const core::TimeRange range = scene.range();
    for (const auto& [box, at] :
         {std::pair(startBox_, range.start), std::pair(endBox_, range.end)}) {
        const QSignalBlocker quiet(box);
        if (!box->hasFocus())
            box->setValue(static_cast<int>(std::lround(at * rate)));
    }
}

void StudioWindow::play(bool on)
{
    if (play_->isChecked() != on)
        play_->setChecked(on);
    if (on && !core().isRunning()) {
        const core::TimeRange range = session_.stage().range();
        playFrom_ = session_.stage().getTime();
        if (playFrom_ >= range.end - 1e-9)
            playFrom_ = range.start;
        playClock_.start();
        playTimer_.start(5);
    } else {
        playTimer_.stop();
        play_->setChecked(false);
    }
}

/// By the clock, not by the pictures: a slow view leaves some out and keeps the speed.
void StudioWindow::stepPlay()
{
    const core::TimeRange range = session_.stage().range();
    const double rate = session_.stage().getFramesPerSecond();
    double time = playFrom_ + static_cast<double>(playClock_.elapsed()) / 1000.0;
    if (time > range.end) {
        playFrom_ = time = range.start;
        playClock_.start();
    }
    const double frame = std::floor(time * rate + 1e-6) / rate;
    if (frame != session_.stage().getTime())
        goTo(frame);
}

void StudioWindow::fillRecent()
{
    recent_->clear();
    for (const QString& path : QSettings().value("recent").toStringList()) {
        recent_
            ->addAction(QFileInfo(path).fileName(), this,
                        [this, path] {
                            if (mayLeave())
                                openFile(path);
                        })
            ->setToolTip(path);
    }
    recent_->setEnabled(!recent_->isEmpty());
}

void StudioWindow::fillCameras()
{
    cameras_->clear();
    const auto add = [&](const QString& text, stage::StageNode* camera) {
        QAction* const action =
            cameras_->addAction(text, this, [this, camera] { view_->lookThrough(camera); });
        action->setCheckable(true);
        action->setChecked(view_->camera() == camera);
    };
    add("The view's own eye", nullptr);
    cameras_->addSeparator();
    session_.stage().forEachNode([&](stage::StageNode& node) {
        if (node.hasLens())
            add(QString::fromStdString(node.name()), &node);
    });
}

void StudioWindow::keyPressEvent(QKeyEvent* event)
{
    const double rate = session_.stage().getFramesPerSecond();
    const core::TimeRange range = session_.stage().range();
    const double frame = std::round(session_.stage().getTime() * rate);
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)
        goTo(std::clamp((frame + (event->key() == Qt::Key_Left ? -1 : 1)) / rate, range.start,
                        range.end));
    else
        QMainWindow::keyPressEvent(event);
}

void StudioWindow::showHelp()
{
    QMessageBox::information(
        this, "First take",
        "<p><b>1</b> Create a tool in the Rigstage window (F9), or File > New demo scene.</p>"
        "<p><b>2</b> Its inputs are bound to the arrow keys and a pad; change them under "
        "Inputs.</p>"
        "<p><b>3</b> Record (F5), wait for the countdown, and drive. Space stops.</p>"
        "<p><b>4</b> Scrub the time line; Ctrl+Z takes the take back.</p>"
        "<p><b>5</b> Change the tool's configuration and press Resimulate (F6): the same "
        "performance, another car.</p>"
        "<p>File > Export animation writes it for other programs, File > Playblast as a film.</p>");
}

} // namespace tvw::rgs::studio
