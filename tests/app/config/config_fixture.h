/// The configuration window over a session, with boxes and file dialogs that answer by themselves.
#pragma once

#include "app/config_views.h"
#include "app/config_window.h"
#include "app/main_dialog.h"
#include "gui/message_ids.h"
#include "gui/stdcomponent.h"
#include "tests/support/offscreen_test.h"
#include "tests/support/session_test.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QTest>
#include <QTimer>

#include <deque>
#include <string>
#include <vector>

namespace tvw::rgs::tests {

/// Hands on to the window what the core asks for, and answers its boxes.
class ScriptedWindows final : public core::Windows
{
public:
    void closeWindowsOf(core::Instance* tool) override
    {
        if (window && tool)
            window->closeOf(*tool);
    }
    void refreshTree() override
    {
        if (window)
            window->refreshTree();
        if (main)
            main->refreshTree();
    }
    std::uint32_t messageBox(void*, const std::string& text, const std::string& title,
                             std::uint32_t flags, bool) override
    {
        said.push_back(title + ": " + text);
        const bool isQuestion = flags & core::box::yes;
        return isQuestion ? (says ? core::box::yes : core::box::no) : core::box::ok;
    }
    std::string chooseFile(const std::string&, const std::string&) override { return file; }

    app::ConfigWindow* window = nullptr;
    app::MainDlg* main = nullptr;
    bool says = true; ///< the answer to questions
    std::string file;
    std::vector<std::string> said;
};

class ConfigWindowTest : public gui::OffscreenTest
{
protected:
    void SetUp() override
    {
        auto started = stage::Session::start({.userFolder = user.path(), .windows = &windows});
        ASSERT_TRUE(started) << started.reason();
        session = *std::move(started);
        window = std::make_unique<app::ConfigWindow>();
        windows.window = window.get();
        // Answers the dialogs that wait for the user: names and paths in turn, then gives up.
        QObject::connect(&answers, &QTimer::timeout, [this] { answerDialog(); });
        answers.start(1);
    }
    void TearDown() override
    {
        answers.stop();
        windows.window = nullptr;
        window.reset();
        session.reset();
    }

    core::Instance& open(const std::string& type)
    {
        auto made = session->create(type);
        EXPECT_TRUE(made) << made.reason();
        core::Instance& tool = (*made)->instance();
        window->open(&tool);
        QApplication::processEvents();
        return tool;
    }

    QWidget* top() { return window->root()->widget(); }
    gui::Component* at(int id) { return window->root()->findById(id); }
    template <class W>
    W& widget(int id)
    {
        return dynamic_cast<W&>(*at(id)->widget());
    }
    template <class W>
    W& itemWidget(const core::configadaptor::Node& item)
    {
        return widget<W>(app::kFirstPanelId + static_cast<int>(item.id()));
    }
    void press(int id)
    {
        windows.said.clear();
        QTest::mouseClick(at(id)->widget(), Qt::LeftButton);
    }
    /// As the user does who opens the list and takes an entry.
    void choose(const std::string& profile)
    {
        windows.said.clear();
        auto& box = widget<QComboBox>(101);
        box.setCurrentText(QString::fromStdString(profile));
        emit box.activated(box.currentIndex());
    }
    std::string shownProfile() { return widget<QComboBox>(101).currentText().toStdString(); }
    bool offersToSave() { return dynamic_cast<gui::StdComponent*>(at(103))->isHighlighted(); }

    static core::configadaptor::Node& item(core::Instance& tool, const std::string& label)
    {
        core::configadaptor::Node* const found = findBy(*tool.configuration(), label);
        EXPECT_NE(found, nullptr) << label;
        return *found;
    }

    TemporaryFolder user;
    ScriptedWindows windows;
    std::unique_ptr<stage::Session> session;
    std::unique_ptr<app::ConfigWindow> window;
    std::deque<std::string> names; ///< to type
    std::string path;              ///< to save under
    QTimer answers;

private:
    void answerDialog()
    {
        QWidget* const waiting = QApplication::activeModalWidget();
        if (auto* const prompt = qobject_cast<QInputDialog*>(waiting)) {
            if (names.empty())
                return prompt->reject();
            prompt->setTextValue(QString::fromStdString(names.front()));
            names.pop_front();
            prompt->accept();
        } else if (auto* const files = qobject_cast<QFileDialog*>(waiting)) {
            files->selectFile(QString::fromStdString(path));
            static_cast<QDialog*>(files)->accept();
        }
    }

    static core::configadaptor::Node* findBy(core::configadaptor::Node& node,
                                             const std::string& label)
    {
        if (node.label() == label && node.id() != core::configadaptor::kNoId)
            return &node;
        for (core::configadaptor::Node* const child : node.children()) {
            if (core::configadaptor::Node* const found = findBy(*child, label))
                return found;
        }
        return nullptr;
    }
};

} // namespace tvw::rgs::tests
