/// Input windows over a session whose clock and boxes the test drives.
#pragma once

#include "app/input_windows.h"
#include "core/tool.h"
#include "core/windows.h"
#include "gui/message_ids.h"
#include "tests/support/offscreen_test.h"
#include "tests/support/session_test.h"
#include "unidevice/device_hub.h"
#include "unidevice/keyboard_device.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <deque>

namespace tvw::rgs::tests {

/// Answers message boxes, and keeps what they said.
class AnsweringWindows final : public core::Windows
{
public:
    std::uint32_t messageBox(void*, const std::string& text, const std::string&,
                             std::uint32_t flags, bool) override
    {
        texts.push_back(text);
        if (!(flags & core::box::yes))
            return core::box::ok;
        const bool isYes = answers.empty() || answers.front();
        if (!answers.empty())
            answers.pop_front();
        return isYes ? core::box::yes : core::box::no;
    }
    std::string chooseFile(const std::string&, const std::string&) override { return file; }
    void closeWindowsOf(core::Instance* instance) override
    {
        if (inputs)
            inputs->closeOf(*instance);
    }

    std::vector<std::string> texts;
    std::deque<bool> answers; ///< to questions; yes when there is none left
    std::string file;
    app::InputWindows* inputs = nullptr;
};

inline std::vector<QDialog*> shownDialogs()
{
    std::vector<QDialog*> found;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<QDialog*>(widget);
        if (dialog && dialog->isVisible())
            found.push_back(dialog);
    }
    return found;
}

/// A button, box or label in the widgets of a window or of a part of it, by what it says.
template <class W>
W* saying(const QWidget& in, const QString& text)
{
    for (W* const widget : in.findChildren<W*>()) {
        if (widget->text() == text)
            return widget;
    }
    return nullptr;
}

class InputWindowTest : public gui::OffscreenTest
{
protected:
    static constexpr std::uint32_t kAxis = unidevice::kind::trinary | unidevice::kind::analogue;

    InputWindowTest()
    {
        auto started = stage::Session::start({.userFolder = user.path(),
                                              .clock = &clock,
                                              .windows = &boxes,
                                              .registerGui = [] { gui::registerComponents(); },
                                              .startInput = {}});
        EXPECT_TRUE(started) << started.reason();
        session = *std::move(started);
        core::addCorePlugin(new TinyPlugin);
        tool = &(*session->create("Tiny", "Toy"))->instance();
        turn = tool->addProperty("Turn", kAxis);
        push = tool->findProperty("Push");
        pad = &session->addDevice("Pad", {.axes = 2, .hats = 0, .buttons = 2});
        keyboard = dynamic_cast<unidevice::KeyboardDevice*>(hub().findDevice("Keyboard", 0));
        boxes.inputs = &inputs.emplace();
    }
    ~InputWindowTest() override
    {
        boxes.inputs = nullptr;
        inputs.reset();
        session.reset();
    }

    static unidevice::DeviceHub& hub() { return unidevice::DeviceHub::instance(); }

    QDialog& open()
    {
        inputs->open(*tool);
        pass();
        QDialog* const shown = window();
        EXPECT_NE(shown, nullptr);
        return *shown;
    }
    QDialog* window() const
    {
        for (QDialog* const dialog : shownDialogs()) {
            if (dialog->windowTitle().startsWith("Inputs for"))
                return dialog;
        }
        return nullptr;
    }
    /// The modal dialog on top, of the input windows.
    static QDialog& dialog()
    {
        auto* const modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        EXPECT_NE(modal, nullptr);
        return *modal;
    }
    static bool hasDialog() { return QApplication::activeModalWidget() != nullptr; }

    /// The panel of an input.
    QGroupBox& panel(const char* input)
    {
        for (QGroupBox* const group : window()->findChildren<QGroupBox*>()) {
            if (group->title() == input)
                return *group;
        }
        ADD_FAILURE() << input;
        return *window()->findChild<QGroupBox*>();
    }
    /// Device and control of the first choice, then of the second.
    QComboBox& box(const char* input, int place)
    {
        return *panel(input).findChildren<QComboBox*>().at(place);
    }
    void choose(const char* input, int place, const QString& text)
    {
        QComboBox& combo = box(input, place);
        ASSERT_GE(combo.findText(text), 0) << text.toStdString();
        combo.setCurrentIndex(combo.findText(text));
    }
    static void press(QWidget& in, const char* button)
    {
        auto* const found = saying<QPushButton>(in, button);
        ASSERT_NE(found, nullptr) << button;
        ASSERT_TRUE(found->isEnabled()) << button;
        QTest::mouseClick(found, Qt::LeftButton);
    }
    static bool says(QWidget& in, const char* text) { return saying<QLabel>(in, text) != nullptr; }

    /// The timers of the windows fire some times.
    void pass(int times = 6)
    {
        for (int i = 0; i < times; ++i)
            clock.fireNext();
    }

    /// A take, with the windows' timers between its frames. The tool's way in it [m].
    double record(double seconds)
    {
        core::RecordManager& records = session->core().records();
        EXPECT_EQ(session->core().startRecord(), 0);
        while (records.isRunning() && records.frameTime() < seconds)
            clock.fireNext();
        session->core().stopRecord();
        hub().updateAll(); // the tool tells its outputs
        return tool->controlAt(0)->value();
    }

    /// Answers the next prompts, each by one of the texts; "" cancels.
    void type(std::deque<QString> texts)
    {
        typing_ = std::move(texts);
        QTimer::singleShot(0, [this] { typeNext(); });
    }

    TemporaryFolder user;
    core::VirtualClock clock;
    AnsweringWindows boxes;
    std::unique_ptr<stage::Session> session;
    std::optional<app::InputWindows> inputs;
    core::Instance* tool = nullptr;
    unidevice::Property* turn = nullptr; ///< wants an axis
    unidevice::Property* push = nullptr; ///< takes anything; the tool moves by it
    unidevice::ScriptedDevice* pad = nullptr;
    unidevice::KeyboardDevice* keyboard = nullptr;

private:
    void typeNext()
    {
        auto* const prompt = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        if (!prompt || typing_.empty())
            return;
        const QString text = typing_.front();
        typing_.pop_front();
        if (!typing_.empty())
            QTimer::singleShot(0, [this] { typeNext(); });
        prompt->setTextValue(text);
        text.isEmpty() ? prompt->reject() : prompt->accept();
    }
    std::deque<QString> typing_;
};

} // namespace tvw::rgs::tests
