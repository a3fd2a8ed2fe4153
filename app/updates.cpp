#include "app/updates.h"

#include "app/update_manager.h"
#include "app/window_base.h"
#include "core/core_implementation.h"
#include "core/version.h"
#include "gui/componentinterface/dialog.h"
#include "gui/componentinterface/label.h"
#include "gui/message_ids.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

#include <utility>
#include <vector>

namespace tvw::rgs::app {

using Outcome = UpdateManager::Outcome;

namespace {

enum Id { kWindow = 100, kList = 101, kClose = 102, kIcon = 200, kText = 201, kButton = 202 };

constexpr const char* kWarningIcon = "[images]/warning.png";
constexpr const char* kToPage = "Click here to go to the download page for this version.";

const char* textOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Newer:
        return "Click here to update to the latest version of Rigstage.";
    case Outcome::UpToDate:
        return "You are up to date";
    case Outcome::NoConnection:
        return "Unable to connect to version server. Are you behind a firewall? Click here to "
               "check "
               "for updates manually";
    case Outcome::BadReply:
        break;
    }
    return "Unable to connect to version server. Click here to check for updates manually";
}

/// Plain text as rich text; what comes from the server must not bring its own tags.
std::string escaped(const std::string& text)
{
    return QString::fromStdString(text).toHtmlEscaped().replace('\n', "<br/>").toStdString();
}

std::string replaced(std::string text, const std::string& what, const std::string& by)
{
    const std::size_t at = text.find(what);
    return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

std::string messageOf(const UpdateManager::Entry& entry)
{
    std::string text;
    if (!entry.changeLog.empty())
        text += escaped(entry.changeLog) + "<br/>";
    if (!entry.affects.empty())
        text += "Affects: " + escaped(entry.affects) + "<br/>";
    return text + kToPage;
}

std::string headingOf(const UpdateManager::Entry& entry)
{
    const std::string date = entry.releaseDate.empty() ? "" : " (" + entry.releaseDate + ")";
    return "<b>" + escaped(entry.version + date) + "</b><br/>";
}

/// The entry with the highest version, or null.
const UpdateManager::Entry* newest(const std::vector<UpdateManager::Entry>& entries)
{
    const UpdateManager::Entry* best = nullptr;
    for (const UpdateManager::Entry& entry : entries) {
        if (!best || compareVersions(entry.version, best->version) > 0)
            best = &entry;
    }
    return best;
}

/// A click on a subsection opens its page.
class EntryListener final : public MessageNode
{
public:
    explicit EntryListener(std::string page) : MessageNode("EntryListener"), page_(std::move(page))
    {
    }
    void receive(Message& message, bool) override
    {
        if (message.id == gui::message::buttonClicked)
            QDesktopServices::openUrl(QUrl(QString::fromStdString(page_)));
    }

private:
    std::string page_;
};

/// Takes the events of a subsection that has nothing to open.
class EmptyEntryListener final : public MessageNode
{
public:
    EmptyEntryListener() : MessageNode("EmptyEntryListener") {}
    void receive(Message&, bool) override {}
};

} // namespace

class UpdateWindow::Implementation final : public WindowBase
{
public:
    Implementation() : WindowBase("UpdateWindow"), manager_(UpdateManager::configuredServer()) {}

    void checkQuietly();
    void open();

    std::function<void(gui::Component*)> barReceiver;

private:
    void handle(gui::Component& component, Message& message) override;
    bool prepare();
    void onFinish();
    void giveBar();
    void showResult();
    void clearSections();
    void addSection(const std::string& version, const std::string& message, const std::string& page,
                    bool isWarning);

    UpdateManager manager_;
    bool isAsked_ = false; ///< the user waits for what the check on brings
    std::vector<std::unique_ptr<MessageNode>> listeners_;
};

void UpdateWindow::Implementation::checkQuietly()
{
    if (!manager_.server().empty() && !manager_.isChecking())
        manager_.check([this] { onFinish(); });
}

void UpdateWindow::Implementation::open()
{
    if (!prepare())
        return;
    isAsked_ = true;
    clearSections();
    addSection("", "Asking the version server...", "", false);
    if (isShown())
        raise();
    else
        show();
    manager_.check([this] { onFinish(); });
}

bool UpdateWindow::Implementation::prepare()
{
    if (!root() && !build("rgs_update"))
        return false;
    listen({kWindow, kClose});
    root()->setLabel(std::string("Current version: ") + kVersion);
    if (auto* const dialog = gui::toDialog(root()); dialog && core::CoreImplementation::exists())
        dialog->setTopmost(core::CoreImplementation::instance().getSettings().alwaysOnTop);
    return true;
}

void UpdateWindow::Implementation::onFinish()
{
    if (std::exchange(isAsked_, false))
        showResult();
    else if (manager_.outcome() == Outcome::Newer)
        giveBar();
}

void UpdateWindow::Implementation::giveBar()
{
    if (!barReceiver)
        return;
    if (gui::Component* const bar =
            AbstractFactory<gui::Component>::instance().create(loadLayout("rgs_main_updatebar")))
        barReceiver(bar);
}

void UpdateWindow::Implementation::showResult()
{
    clearSections();
    const Outcome outcome = manager_.outcome();
    const auto pageOf = [&](const UpdateManager::Entry* entry) {
        return entry && !entry->page.empty() ? entry->page : manager_.server();
    };
    const bool hasFailed = outcome == Outcome::NoConnection || outcome == Outcome::BadReply;
    const bool isUpToDate = outcome == Outcome::UpToDate;
    addSection("", escaped(textOf(outcome)),
               isUpToDate ? std::string() : pageOf(newest(manager_.entries())), hasFailed);
    for (const UpdateManager::Entry& entry : manager_.entries())
        addSection(headingOf(entry), messageOf(entry), pageOf(&entry), false);
}

void UpdateWindow::Implementation::clearSections()
{
    gui::Component* const list = find(kList);
    while (list && list->childCount() > 0) {
        gui::Component* const last = list->childAt(list->childCount() - 1);
        if (last->isShown())
            last->hide();
        last->destroy();
    }
    listeners_.clear();
}

void UpdateWindow::Implementation::addSection(const std::string& version,
                                              const std::string& message, const std::string& page,
                                              bool isWarning)
{
    gui::Component* const list = find(kList);
    gui::ComponentPtr section(
        AbstractFactory<gui::Component>::instance().create(loadLayout("rgs_update_subsection")));
    if (!list || !section)
        return;
    if (gui::Component* const text = section->findById(kText))
        text->setLabel(
            replaced(replaced(text->label(), "%MESSAGE%", message), "%VERSION%", version));
    if (auto* const icon = gui::toLabel(section->findById(kIcon)); icon && isWarning)
        icon->setImagePath(kWarningIcon);
    if (gui::Component* const button = section->findById(kButton)) {
        if (page.empty()) {
            listeners_.push_back(std::make_unique<EmptyEntryListener>());
            button->setTooltip({});
        } else {
            listeners_.push_back(std::make_unique<EntryListener>(page));
        }
        listeners_.back()->listenTo(button);
    }
    gui::Component* const added = section.release();
    list->addChild(added);
    if (list->isShown())
        added->show();
}

void UpdateWindow::Implementation::handle(gui::Component& component, Message& message)
{
    if (component.id() == kWindow && core::CoreImplementation::exists())
        handleWindowKeys(message);
    else if (component.id() == kClose && message.id == gui::message::buttonClicked)
        hide();
}

UpdateWindow::UpdateWindow() : implementation_(std::make_unique<Implementation>()) {}
UpdateWindow::~UpdateWindow() = default;

void UpdateWindow::setBarReceiver(std::function<void(gui::Component* bar)> receiver)
{
    implementation_->barReceiver = std::move(receiver);
}

void UpdateWindow::checkQuietly()
{
    implementation_->checkQuietly();
}

void UpdateWindow::open()
{
    implementation_->open();
}

} // namespace tvw::rgs::app
