#include "app/app_windows.h"

#include "app/about.h"
#include "app/config_window.h"
#include "app/countdown_dialog.h"
#include "app/help_window.h"
#include "app/input_windows.h"
#include "app/main_dialog.h"
#include "app/preferences.h"
#include "app/resimulate_window.h"
#include "app/updates.h"
#include "core/core_implementation.h"
#include "core/documentation.h"
#include "core/library_manager.h"
#include "core/log.h"
#include "core/tool.h"
#include "gui/qt/boxes.h"
#include "util/factory.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QUrl>

namespace tvw::rgs::app {

using core::CoreImplementation;

AppWindows::AppWindows() = default;
AppWindows::~AppWindows() = default;

void AppWindows::attach()
{
    gui::setBoxIcon(productIcon());
    gui::setSilentMode(CoreImplementation::instance().getSettings().silentMode);
    config_ = std::make_unique<ConfigWindow>();
    inputs_ = std::make_unique<InputWindows>();
    preferences_ = std::make_unique<PreferencesWindow>();
    config_->setPreferencesDoor([this] { preferences_->open(); });
    about_ = std::make_unique<AboutRGS>();
    updates_ = std::make_unique<UpdateWindow>();
    resimulation_ = std::make_unique<ResimulateWindow>();
    main_ = std::make_unique<MainDlg>(MainDialogDoors{
        .openConfiguration = [this](core::Instance* tool) { config_->open(tool); },
        .refreshConfiguration = [this] { config_->refreshTree(); },
        .openInputs = [this](core::Instance* tool) { inputs_->open(*tool); },
        .openPreferences = [this] { preferences_->open(); },
        .openAbout = [this] { about_->open(); },
        .openUpdates = [this] { updates_->open(); },
    });
    main_->init();
    updates_->setBarReceiver([this](gui::Component* bar) { main_->addUpdateBar(bar); });
    CoreImplementation::instance().records().setView(resimulation_.get());
}

void AppWindows::detach()
{
    if (CoreImplementation::exists())
        CoreImplementation::instance().records().setView(nullptr);
    countdown_.reset();
    help_.reset();
    main_.reset();
    resimulation_.reset();
    updates_.reset();
    about_.reset();
    preferences_.reset();
    inputs_.reset();
    config_.reset();
}

std::uint32_t AppWindows::messageBox(void*, const std::string& text, const std::string& title,
                                     std::uint32_t flags, bool force)
{
    core::log(core::LogKind::Box, core::LogSeverity::Notice, title + ": " + text);
    QWidget* const parent = main_ && main_->isShown() ? main_->root()->widget() : nullptr;
    return gui::messageBox(parent, text, title, flags, force);
}

// The main window.

int AppWindows::openMainWindow(void*)
{
    if (!main_ || !main_->root())
        return core::kNoWindowOpen;
    if (main_->isShown()) {
        main_->raise();
        return core::kWindowAlreadyOpen;
    }
    main_->open();
    if (!checkedForUpdates_ && CoreImplementation::instance().getSettings().checkForUpdates)
        updates_->checkQuietly();
    checkedForUpdates_ = true;
    return 0;
}

int AppWindows::closeMainWindow()
{
    if (!isMainWindowOpen())
        return core::kNoWindowOpen;
    main_->hide();
    return 0;
}

bool AppWindows::isMainWindowOpen()
{
    return main_ && main_->isShown();
}

gui::Component* AppWindows::mainComponent()
{
    return main_ ? main_->root() : nullptr;
}

gui::Component* AppWindows::createComponent(const util::xml::Element& element)
{
    return AbstractFactory<gui::Component>::instance().create(element);
}

void AppWindows::addImageTokens(gui::Component* component)
{
    if (component)
        app::addImageTokens(*component);
}

void* AppWindows::mainWindowHandle()
{
    QWidget* const widget = isMainWindowOpen() ? main_->root()->widget() : nullptr;
    return widget ? reinterpret_cast<void*>(widget->winId()) : nullptr;
}

bool AppWindows::autoExpandTimeline()
{
    return !main_ || main_->autoExpand();
}
bool AppWindows::lowPolyOnRecord()
{
    return main_ && main_->lowPolyOnRecord();
}
bool AppWindows::resimulateFromFirstFrame()
{
    return !main_ || main_->resimulateFromFirst();
}

void AppWindows::refreshTree()
{
    if (main_)
        main_->refreshTree();
}

void AppWindows::refreshToolLists()
{
    if (main_)
        main_->refreshToolLists();
}

void AppWindows::refreshRunState()
{
    if (main_)
        main_->refreshRunState();
}

void AppWindows::treeEntryChanged(core::InstanceReference*)
{
    if (main_)
        main_->treeEntryChanged();
}

void AppWindows::beginRename(core::InstanceReference* reference)
{
    if (main_)
        main_->beginRename(reference);
}

void AppWindows::openPreferences()
{
    if (preferences_)
        preferences_->open();
}

// A tool's windows.

void AppWindows::openConfiguration(core::Instance* instance)
{
    if (config_)
        config_->open(instance);
}

void AppWindows::openInputs(core::Instance* instance)
{
    if (inputs_ && instance)
        inputs_->open(*instance);
}

void AppWindows::closeWindowsOf(core::Instance* instance)
{
    if (!instance || !config_)
        return;
    config_->closeOf(*instance);
    inputs_->closeOf(*instance);
}

/// A tool's page, or the guide; where no documentation lies with the program, the introduction.
void AppWindows::openHelp(const std::string& pluginName)
{
    const core::Tool* const tool =
        pluginName.empty() ? nullptr : core::LibraryManager::instance().findTool(pluginName);
    const std::string page = tool ? tool->getHelpPath() : core::findPage("guide.md");
    if (page.ends_with(".md")) {
        if (!help_)
            help_ = std::make_unique<HelpWindow>();
        help_->open(page);
    } else if (!page.empty() && QFileInfo::exists(QString::fromStdString(page))) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(page)));
    } else {
        messageBox(
            nullptr,
            tool ? tool->getDescription()
                 : std::string("The documentation lies in the folder \"docs\" beside the program."),
            tool ? tool->getDisplayName() : std::string("Help"),
            core::box::ok | core::box::information, true);
    }
}

std::string AppWindows::chooseFile(const std::string& title, const std::string& filter)
{
    return QFileDialog::getOpenFileName(nullptr, QString::fromStdString(title), {},
                                        QString::fromStdString(filter))
        .toStdString();
}

// A run.

void AppWindows::showCountdown(int seconds, double fraction)
{
    if (!countdown_)
        countdown_ = std::make_unique<CountdownDialog>();
    countdown_->show(seconds, fraction);
}

void AppWindows::hideCountdown()
{
    if (countdown_)
        countdown_->hide();
}

void AppWindows::flushEvents()
{
    QCoreApplication::sendPostedEvents();
}

} // namespace tvw::rgs::app
