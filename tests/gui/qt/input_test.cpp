#include "gui/box.h"
#include "gui/componentinterface/button.h"
#include "gui/componentinterface/checkbox.h"
#include "gui/componentinterface/combobox.h"
#include "gui/componentinterface/dialog.h"
#include "gui/componentinterface/listbox.h"
#include "gui/componentinterface/spinner.h"
#include "gui/componentinterface/textbox.h"
#include "gui/qt/boxes.h"
#include "gui/qt/floating_menu.h"
#include "gui/qt/spinner.h"
#include "tests/gui/qt/gui_fixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

namespace tvw::gui {

namespace {

using Input = GuiTest;

void click(QWidget& widget, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseClick(&widget, button, {}, QPoint(8, widget.height() / 2));
}

/// Runs once a popup or a modal window is up; fails the test when none comes.
template <class Act>
void whenModal(Act act)
{
    QTimer::singleShot(50, [act] {
        QWidget* const popup = QApplication::activePopupWidget();
        QWidget* const up = popup ? popup : QApplication::activeModalWidget();
        ASSERT_NE(up, nullptr);
        act(*up);
    });
}

TEST_F(Input, aButtonCyclesThroughItsChildren)
{
    open("<button id='1'><label id='11'>a</label><label id='12'>b</label><label id='13'>c</label>"
         "</button>");
    const Listener heard(at(1));
    const auto shown = [&] {
        std::vector<int> ids;
        for (const int id : {11, 12, 13}) {
            if (at(id).isShown() && widget(id)->isVisible())
                ids.push_back(id);
        }
        return ids;
    };
    EXPECT_EQ(shown(), (std::vector<int>{11}));
    for (const int expected : {12, 13, 11}) {
        QTest::mouseClick(widget(1), Qt::LeftButton);
        EXPECT_EQ(shown(), (std::vector<int>{expected}));
    }
    using namespace message;
    EXPECT_EQ(heard.count(buttonPressed), 3u);
    EXPECT_EQ(heard.count(buttonReleased), 3u);
    EXPECT_EQ(heard.params(buttonClicked), (std::vector<int>{1, 1, 1})) << "its id";
}

TEST_F(Input, aToggleTellsItsState)
{
    open("<button id='1' toggle='yes'/>");
    const Listener heard(at(1));
    click(*widget(1));
    click(*widget(1));
    toButton(&at(1))->setChecked(true);
    EXPECT_EQ(heard.params(message::buttonClicked), (std::vector<int>{1, 0}))
        << "not our own change";
}

/// A spinner whose mouse is moved by the test.
class DraggedSpinner : public component::qt::Spinner
{
public:
    using Spinner::Spinner;
    QPoint mouse{100, 100};

    void press() { send(QEvent::MouseButtonPress, Qt::LeftButton, {}); }
    void moveUp(int pixels, Qt::KeyboardModifiers modifiers)
    {
        mouse.ry() -= pixels;
        send(QEvent::MouseMove, Qt::NoButton, modifiers);
    }

protected:
    QPoint cursor() const override { return mouse; }
    void moveCursor(const QPoint& position) override { mouse = position; }

private:
    void send(QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
    {
        QMouseEvent event(type, QPointF(3, 3), button, Qt::LeftButton, modifiers);
        QApplication::sendEvent(this, &event);
    }
};

TEST_F(Input, aSpinnerIsDraggedByItsTriggerLength)
{
    util::xml::Element element;
    ASSERT_EQ(
        element.parse("<spinner id='4' min='-1000' max='1000' step='0.5' triggerlength='4'/>"), 0);
    DraggedSpinner spinner(element);
    const Listener heard(spinner);
    spinner.press();
    struct Move
    {
        int pixels;
        Qt::KeyboardModifiers modifiers;
        double value;
    };
    const Move moves[] = {{3, Qt::NoModifier, 0.0},
                          {1, Qt::NoModifier, 0.5},
                          {4, Qt::ControlModifier, 5.5},
                          {-4, Qt::ShiftModifier, 0.5},
                          {-9, Qt::NoModifier, -0.5},
                          {-3, Qt::NoModifier, -1.0},
                          {4, Qt::ControlModifier | Qt::ShiftModifier, 49.0}};
    for (const Move& move : moves) {
        spinner.moveUp(move.pixels, move.modifiers);
        EXPECT_DOUBLE_EQ(spinner.value(), move.value) << move.pixels;
        EXPECT_EQ(spinner.mouse, QPoint(100, 100)) << "the mouse is put back";
    }
    EXPECT_EQ(heard.params(message::spinnerChanged), (std::vector<int>{4, 4, 4, 4, 4, 4}));
}

TEST_F(Input, aSpinnersKeysAndButtons)
{
    open("<list><spinner id='1' min='0' max='100' decimals='2' defaultvalue='20'/></list>");
    auto* const spinner = toSpinner(&at(1));
    Listener heard(at(1));
    spinner->setValue(500);
    EXPECT_EQ(spinner->value(), 100);
    EXPECT_EQ(heard.count(message::spinnerChanged), 1u) << "also our own change is told";
    click(*widget(1), Qt::RightButton);
    EXPECT_EQ(spinner->value(), 20);
    heard.heard.clear();
    widget(1)->setFocus();
    QTest::keyClick(widget(1), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(widget(1), "33.5");
    EXPECT_EQ(heard.count(message::spinnerChanged), 0u) << "half a number is none";
    QTest::keyClick(widget(1), Qt::Key_Return);
    EXPECT_EQ(spinner->value(), 33.5);
    EXPECT_EQ(heard.count(message::spinnerChanged), 1u);
    QTest::keyClick(widget(1), Qt::Key_Enter);
    EXPECT_EQ(heard.count(message::spinnerChanged), 2u) << "Return tells even of the same value";
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget(1), &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(spinner->value(), 33.5);
}

TEST_F(Input, checkBoxesAreSilentForUsAndResetByTheRightButton)
{
    open("<checkbox id='1' defaultstate='true'/>");
    auto* const box = toCheckBox(&at(1));
    const Listener heard(at(1));
    box->setValue(false);
    box->setState(CheckState::Undetermined);
    EXPECT_EQ(heard.count(message::checkChanged), 0u);
    EXPECT_FALSE(box->value());
    click(*widget(1));
    EXPECT_EQ(box->state(), CheckState::On);
    click(*widget(1));
    EXPECT_EQ(box->state(), CheckState::Off) << "two states, even after the third";
    click(*widget(1), Qt::RightButton);
    EXPECT_TRUE(box->value());
    EXPECT_EQ(heard.count(message::checkChanged), 3u);
}

TEST_F(Input, aCheckBoxPaintsItsGroup)
{
    open("<list><checkbox id='1' paintgroup='0'/><checkbox id='2' paintgroup='0'/>"
         "<checkbox id='3' paintgroup='5'/><checkbox id='4'/></list>");
    Listener heard;
    for (const int id : {1, 2, 3, 4})
        heard.listenTo(&at(id));
    QTest::mousePress(widget(1), Qt::LeftButton, {}, QPoint(8, widget(1)->height() / 2));
    EXPECT_TRUE(toCheckBox(&at(1))->value()) << "at the press";
    for (const int id : {2, 3, 4}) {
        const QPoint there = widget(id)->mapToGlobal(QPoint(8, widget(id)->height() / 2));
        const QPoint local = widget(1)->mapFromGlobal(there);
        QMouseEvent move(QEvent::MouseMove, local, there, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(widget(1), &move);
    }
    QTest::mouseRelease(widget(1), Qt::LeftButton, {}, QPoint(8, widget(1)->height() / 2));
    EXPECT_TRUE(toCheckBox(&at(1))->value()) << "and the release changes nothing more";
    EXPECT_TRUE(toCheckBox(&at(2))->value());
    EXPECT_FALSE(toCheckBox(&at(3))->value()) << "another group";
    EXPECT_FALSE(toCheckBox(&at(4))->value()) << "no group";
    EXPECT_EQ(heard.params(message::checkChanged), (std::vector<int>{1, 2}));
}

TEST_F(Input, listsTellOfTheUsersChanges)
{
    open("<list><combobox id='1'><item>A</item><item>B</item></combobox>"
         "<listbox id='2'><item>A</item><item>B</item></listbox></list>");
    const Listener combo(at(1)), list(at(2));
    auto* const choice = toComboBox(&at(1));
    choice->selectText("B");
    choice->insertItem("First", 0);
    choice->clear();
    choice->addItem("C");
    EXPECT_TRUE(combo.heard.empty()) << combo.heard.size();
    choice->addItem("D");
    choice->selectIndex(0);
    QTest::keyClick(widget(1), Qt::Key_Down);
    EXPECT_EQ(choice->currentText(), "D");
    EXPECT_EQ(combo.count(message::selectionChanged), 1u);
    EXPECT_EQ(combo.count(message::itemActivated), 1u);

    toListBox(&at(2))->selectIndex(1);
    toListBox(&at(2))->insertItem("Mid", 1);
    EXPECT_EQ(toListBox(&at(2))->currentText(), "B");
    auto& rows = widgetAs<QListWidget>(2);
    const QPoint first = rows.visualItemRect(rows.item(0)).center();
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(rows.viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(toListBox(&at(2))->currentText(), "A");
    EXPECT_EQ(list.count(message::itemActivated), 1u);
    EXPECT_GE(list.count(message::selectionChanged), 2u);
}

TEST_F(Input, theTooltipLineFollowsTheMouse)
{
    open("<list><label id='108'/><button id='1'><tooltip>Presses it</tooltip></button>"
         "<list tooltipid='-2'><button id='2'><tooltip>Not shown</tooltip></button></list>"
         "<list tooltipid='3'><button id='4'><tooltip>Elsewhere</tooltip></button>"
         "<label id='3'/></list></list>",
         "tooltipid='108'");
    const Listener heard(at(1));
    const auto send = [&](int id, QEvent::Type type) {
        QEvent event(type);
        QApplication::sendEvent(widget(id), &event);
        return widgetAs<QLabel>(108).text().toStdString();
    };
    EXPECT_EQ(send(1, QEvent::Enter), "Presses it");
    EXPECT_EQ(send(1, QEvent::Leave), "");
    EXPECT_EQ(send(2, QEvent::Enter), "") << "switched off";
    EXPECT_EQ(send(4, QEvent::Enter), "") << "another line is nearer";
    EXPECT_EQ(widgetAs<QLabel>(3).text(), "Elsewhere");
    window->setTooltipId(3);
    send(1, QEvent::Enter);
    send(2, QEvent::Enter); // it has its own
    EXPECT_EQ(widgetAs<QLabel>(3).text(), "Presses it");
    EXPECT_EQ(heard.count(message::mouseEntered), 2u);
    EXPECT_EQ(heard.count(message::mouseLeft), 1u);
}

TEST_F(Input, aListenerSwallowsAKey)
{
    open("<textbox id='1'/>");
    Listener heard(at(1));
    heard.onMessage = [](Message& sent) {
        if (sent.id == message::keyPressed &&
            reinterpret_cast<const KeyStroke*>(sent.value)->key == Qt::Key_B)
            sent.attachments.emplace_back(new DynamicObject);
    };
    widget(1)->setFocus();
    QTest::keyClicks(widget(1), "abc");
    EXPECT_EQ(toTextBox(&at(1))->text(), "ac");
    EXPECT_EQ(heard.params(message::keyPressed),
              (std::vector<int>{Qt::Key_A, Qt::Key_B, Qt::Key_C}));
    EXPECT_EQ(heard.count(message::keyReleased), 3u);
    QTest::keyClick(widget(1), Qt::Key_Return);
    EXPECT_EQ(heard.count(message::textEdited), 1u);
}

TEST_F(Input, undoKeysReachTheDialog)
{
    open("<list><textbox id='1'/><spinner id='2'/><button id='3'/></list>");
    Listener heard(*window);
    toTextBox(&at(1))->setText("");
    widget(1)->setFocus();
    QTest::keyClicks(widget(1), "x");
    for (const int id : {1, 2, 3}) {
        heard.heard.clear();
        widget(id)->setFocus();
        QTest::keyClick(widget(id), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(widget(id), Qt::Key_Y, Qt::ControlModifier);
        QTest::keyClick(widget(id), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(heard.count(message::undoKey), 1u) << id;
        EXPECT_EQ(heard.count(message::redoKey), 1u) << id;
    }
    heard.heard.clear();
    QTest::keyPress(widget(3), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyRelease(widget(3), Qt::Key_Control);
    QTest::keyRelease(widget(3), Qt::Key_Z);
    QTest::keyClick(widget(3), Qt::Key_Z);
    EXPECT_EQ(heard.count(message::undoKey), 1u) << "Ctrl may be let go first";
    EXPECT_EQ(toTextBox(&at(1))->text(), "x") << "the text box has not undone its own";
}

TEST_F(Input, theRightButtonOpensTheNearestPopup)
{
    open("<list><popup><item id='40' label='A'/><popup label='More'><item id='41' label='B'/>"
         "</popup></popup><list><popup/><button id='1'/></list><listbox id='2'/></list>");
    const Listener button(at(1)), list(at(2));
    const auto choose = [](const char* text) {
        return [text](QWidget& up) {
            auto& menu = dynamic_cast<QMenu&>(up);
            for (QAction* const action : menu.findChildren<QAction*>()) {
                if (action->text() == text) {
                    menu.setActiveAction(action);
                    QTest::keyClick(&menu, Qt::Key_Return);
                    return;
                }
            }
            menu.close();
        };
    };
    whenModal(choose("A"));
    click(*widget(1), Qt::RightButton);
    EXPECT_EQ(button.params(message::popupChosen), (std::vector<int>{40}))
        << "past the one that has no items";
    whenModal([](QWidget& up) { up.close(); });
    click(*widgetAs<QListWidget>(2).viewport(), Qt::RightButton);
    EXPECT_EQ(list.count(message::popupChosen), 0u) << "nothing was chosen";
}

TEST_F(Input, dialogsShowModallyAndKeepTheirPlace)
{
    window = build("<dialog id='5' width='120' height='90'><label/></dialog>");
    auto* const dialog = toDialog(window.get());
    Listener heard(*window);
    heard.onMessage = [&](Message& sent) {
        if (sent.id == message::modalShown) {
            EXPECT_TRUE(dialog->modal());
            QTimer::singleShot(0, [dialog] { dialog->close(7); });
        }
    };
    EXPECT_EQ(dialog->exec(), 7);
    EXPECT_FALSE(dialog->modal());
    EXPECT_FALSE(window->isShown());
    heard.onMessage = [&](Message& sent) {
        if (sent.id == message::modalShown)
            dialog->close(3); // ahead of the loop
    };
    EXPECT_EQ(dialog->exec(), 3);
    EXPECT_EQ(heard.count(message::showEnded), 2u);
    EXPECT_EQ(heard.count(message::hideEnded), 2u);

    window->show();
    QTest::keyClick(window->widget(), Qt::Key_Escape);
    EXPECT_TRUE(window->isShown()) << "Escape ends modal windows only";
    window->widget()->resize(150, 130);
    window->widget()->close(); // by the user
    EXPECT_FALSE(window->isShown());
    window->show();
    EXPECT_EQ(window->widget()->size(), QSize(150, 130));
    QEvent active(QEvent::WindowActivate), inactive(QEvent::WindowDeactivate);
    heard.heard.clear();
    QApplication::sendEvent(window->widget(), &active);
    QApplication::sendEvent(window->widget(), &inactive);
    EXPECT_EQ(heard.count(message::windowActive), 1u);
    EXPECT_EQ(heard.count(message::windowInactive), 1u);
    window->hide();
    dialog->showModal();
    EXPECT_FALSE(window->widget()->isVisible()) << "closed by the listener";
    heard.onMessage = nullptr;
    dialog->showModal();
    EXPECT_TRUE(window->widget()->isVisible());
    EXPECT_TRUE(window->widget()->isModal());
    dialog->endModal();
    EXPECT_FALSE(window->widget()->isVisible());
    dialog->showModal();
    QTest::keyClick(window->widget(), Qt::Key_Escape);
    EXPECT_FALSE(window->isShown() || dialog->modal() || window->widget()->isModal());
}

TEST_F(Input, aFlyOutIsTornOffAndComesBack)
{
    open(
        "<flmbutton id='1' delay='0'><list id='2'><button id='3' label='Car'/></list></flmbutton>");
    auto& button = widgetAs<QToolButton>(1);
    auto& menu = *dynamic_cast<FloatingMenu*>(button.menu());
    whenModal([&](QWidget& up) {
        EXPECT_EQ(&up, &menu);
        EXPECT_TRUE(widget(3)->isVisible());
        click(*menu.findChild<QPushButton*>(), Qt::LeftButton); // the strip is the first
    });
    button.showMenu();
    ASSERT_NE(menu.tornOff(), nullptr);
    EXPECT_TRUE(menu.tornOff()->isVisible());
    EXPECT_EQ(widget(2)->window(), menu.tornOff());
    EXPECT_TRUE(widget(3)->isVisible());
    EXPECT_TRUE(menu.tornOff()->windowFlags() & Qt::WindowStaysOnTopHint);
    menu.tornOff()->close();
    EXPECT_EQ(widget(2)->window(), &menu);
    bool wasBack = false;
    whenModal([&](QWidget& up) {
        wasBack = widget(3)->isVisible() && widget(3)->window() == &up;
        up.close();
    });
    button.showMenu();
    EXPECT_TRUE(wasBack);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Escape}) {
        whenModal([key](QWidget& up) {
            QTest::keyClick(up.windowHandle(), key); // as the screen's server sends it
            EXPECT_EQ(up.isVisible(), key != Qt::Key_Escape);
            up.close();
        });
        button.showMenu();
    }
    menu.createMenuDialog();
    window.reset(); // while torn off
}

TEST(FlyOut, staysOnTheScreen)
{
    const QRect screen(0, 0, 1000, 800);
    const QSize menu(200, 300);
    const std::pair<QRect, QPoint> cases[] = {
        {{100, 100, 50, 20}, {100, 120}}, // under it
        {{900, 100, 50, 20}, {800, 120}}, // shifted left
        {{100, 600, 50, 20}, {100, 300}}, // above
        {{900, 100, 50, 690}, {800, 0}},  // neither fits
    };
    for (const auto& [button, expected] : cases)
        EXPECT_EQ(flyOutPlace(button, menu, screen), expected) << button.left() << button.top();
}

TEST_F(Input, boxesAnswerWithTheirFlags)
{
    const auto press = [](QMessageBox::StandardButton which) {
        return [which](QWidget& up) { dynamic_cast<QMessageBox&>(up).button(which)->click(); };
    };
    whenModal(press(QMessageBox::No));
    EXPECT_EQ(messageBox(nullptr, "text", "title", box::yes | box::no | box::question, false),
              box::no);
    whenModal([](QWidget& up) { QTest::keyClick(&up, Qt::Key_Escape); });
    EXPECT_EQ(messageBox(nullptr, "text", "title", box::ok | box::cancel, false), box::cancel);
    setSilentMode(true);
    EXPECT_EQ(messageBox(nullptr, "text", "title", box::yes | box::no, false), box::yes);
    whenModal(press(QMessageBox::No));
    EXPECT_EQ(messageBox(nullptr, "text", "title", box::yes | box::no, true), box::no);
    setSilentMode(false);

    std::string text = "as it was";
    whenModal([](QWidget& up) { QTest::keyClick(&up, Qt::Key_Escape); });
    EXPECT_FALSE(inputBox(nullptr, "title", "prompt", "default", text));
    EXPECT_EQ(text, "as it was");
    whenModal([](QWidget& up) { dynamic_cast<QInputDialog&>(up).accept(); });
    EXPECT_TRUE(inputBox(nullptr, "title", "prompt", "default", text));
    EXPECT_EQ(text, "default");
}

} // namespace

} // namespace tvw::gui
