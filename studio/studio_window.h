/// The studio: view, time line, outliner and properties round one session.
#pragma once

#include "adaptor/stage/lost_takes.h"
#include "adaptor/stage/session.h"
#include "core/record_manager.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

#include <memory>
#include <optional>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;

namespace tvw::rgs::app {
class AppWindows;
}

namespace tvw::rgs::studio {

class Outliner;
class Properties;
class Timeline;
class ViewWidget;

class StudioWindow final : public QMainWindow, private core::RunObserver
{
public:
    /// Both outlive it.
    StudioWindow(stage::Session& session, app::AppWindows& windows);
    ~StudioWindow() override;

    /// The scene of a file in place of the present one. A box tells what is wrong; the present
    /// scene stays then.
    bool openFile(const QString& path);
    void newDemo(); ///< the demo scene, unsaved

    /// Lost takes of an earlier run are offered one after the other.
    void offerLostTakes();

    void restorePlace(); ///< where it was when it was closed last, on a screen that is there

    void refresh(); ///< everything shows the scene as it is now

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // What is in the menus.
    void buildMenus();
    void buildFileMenu();
    void buildEditMenu();
    void buildViewMenu();
    void buildPlayMenu();
    void buildDocks();
    void buildTransport();
    void buildRateBox(QHBoxLayout& row);
    void showRate(double rate);
    void newScene();
    void open();
    bool save();
    bool saveAs();
    bool saveTo(const QString& path);
    void importFile();
    void exportFile();
    void playblast();
    void undo();
    void redo();
    void play(bool on);
    void stepPlay();
    void goTo(double time);
    void setKeyMode(bool on);
    void record();
    void resimulate();
    void showHelp();

    bool mayLeave(); ///< asks about unsaved changes
    [[nodiscard]] bool isChanged() const;
    void noteSaved(); ///< the scene as it is now is the one of its file
    void sceneReplaced(const QString& path);
    void remember(const QString& path); ///< among the recent files
    void forget(const QString& path);
    void fillRecent();
    void showTitle();
    void fillCameras();
    void showUndoNames();
    void showFrame();
    void complain(const std::string& what);
    void tellMessages(); ///< of stage and journal
    /// Answers a flag of gui/box.h. In silent mode nothing is shown unless force is set.
    std::uint32_t ask(const std::string& text, std::uint32_t flags, bool force = false);
    void redrawIfDue();
    void lockForRun(bool on); ///< what would change the scene under a take
    void setRange();
    void showHint(); ///< what a new user does next

    // The run.
    void runStarted(double start, const std::vector<core::Instance*>&) override;
    void beforeFrame(double time) override;
    void frameDone(double time, const std::vector<core::Instance*>&) override;
    void runEnded() override;

    stage::Session& session_;
    app::AppWindows& windows_;
    ViewWidget* view_;
    Timeline* timeline_;
    Outliner* outliner_;
    Properties* properties_;
    QLabel* frameLabel_ = nullptr;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* play_ = nullptr;
    QAction* record_ = nullptr;
    QAction* resimulate_ = nullptr;
    QAction* keyMode_ = nullptr;
    std::vector<QAction*> idleOnly_; ///< not while a run is on
    QMenu* recent_ = nullptr;
    QMenu* cameras_ = nullptr;
    QSpinBox* startBox_ = nullptr;
    QSpinBox* endBox_ = nullptr;
    QComboBox* rateBox_ = nullptr;
    QTimer playTimer_;
    QTimer refreshTimer_;
    QElapsedTimer playClock_;
    double playFrom_ = 0.0;
    double takeStart_ = 0.0;
    std::optional<stage::LostTake> recovered_; ///< the scene holds it, and no file does yet
    std::uint64_t savedState_ = 0;
    std::string savedTools_;
    std::vector<std::string> untold_; ///< messages that came
    bool changedBesides_ = false;     ///< in a way that no undo takes back
    std::uint64_t shownVersion_ = 0;
    std::uint64_t shownState_ = 0; ///< of the undo list: a step need not change the scene
    QElapsedTimer frameClock_;
    int takes_ = 0;        ///< of the scene, since it was opened
    double frameMs_ = 0.0; ///< of simulation, smoothed
    double inputMs_ = 0.0;
};

} // namespace tvw::rgs::studio
