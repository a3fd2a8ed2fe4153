/// Binding by hand and by detection, and what the panels show meanwhile.
#include "tests/app/inputs/fixture.h"
#include "unidevice/emulated_trinary_device.h"

#include <QProgressBar>

#include <functional>

namespace tvw::rgs::app {

namespace {

using tests::saying;
using unidevice::Control;

class Bindings : public tests::InputWindowTest
{
protected:
    /// What a user does to a device while the detection listens.
    struct Move
    {
        const char* type; ///< of the pad; null: a key
        int index;        ///< of the pad's, or the key's code
        double value;
    };
    void make(const Move& move)
    {
        if (move.type)
            pad->set(move.type, move.index, move.value);
        else
            keyboard->keyEvent(move.index, move.value != 0.0);
        pass();
    }
    void detect(const char* input, const std::vector<Move>& moves)
    {
        press(panel(input), "Detect");
        for (const Move& move : moves)
            make(move);
    }
    Control* padControl(int place) { return pad->controlAt(place); }
    Control* key(int code) { return keyboard->controlOfKey(code); }
};

constexpr int kA = 65, kB = 66;
constexpr const char* kBoth = "emulated control (Keyboard:A, Keyboard:B)";

TEST_F(Bindings, aDetectedControlDrivesTheTool)
{
    open();
    push->deadzone = 0.0;
    detect("Push", {});
    EXPECT_TRUE(says(dialog(), "Please press or move the control you want to bind"));
    make({"Axis", 1, 0.5});
    EXPECT_TRUE(says(dialog(), "Use this control?"));
    EXPECT_TRUE(says(dialog(), "Axis 2"));
    press(dialog(), "Ok");
    EXPECT_FALSE(hasDialog());
    EXPECT_EQ(push->control(), padControl(1));
    EXPECT_EQ(box("Push", 0).currentText(), "Pad");
    EXPECT_EQ(box("Push", 1).currentText(), "Axis 2");
    pass();
    EXPECT_TRUE(says(panel("Push"), "0.50"));
    // 25 frames of 0.04 s at 1 + 0.5 m/s, and the first ones of the clock's rounding
    EXPECT_NEAR(record(1.0), 1.5, 0.13);
}

TEST_F(Bindings, detectionTakesWhatTheInputNeeds)
{
    struct Case
    {
        const char *name, *input;
        std::vector<Move> moves;
        const char* prompt;
        const char* found;         ///< what the window says then
        double before, multiplier; ///< ahead of it, and after Ok
    };
    constexpr const char* kUse = "Use this control?";
    constexpr const char* kMore = "Please press or move another control";
    const Move pressA{nullptr, kA, 1.0}, releaseA{nullptr, kA, 0.0}, pressB{nullptr, kB, 1.0};
    const Case cases[] = {
        {"an axis moved back", "Turn", {{"Axis", 0, -1.0}}, kUse, "Axis 1", 1.0, -1.0},
        {"an axis moved on", "Turn", {{"Axis", 0, 0.5}}, kUse, "Axis 1", 1.0, 1.0},
        {"turns one back", "Turn", {{"Axis", 0, 1.0}}, kUse, "Axis 1", -2.5, 2.5},
        {"which moves most", "Turn", {{"Axis", 0, 0.1}, {"Axis", 1, 1}}, kUse, "Axis 2", 1.0, 1.0},
        {"a key is enough here", "Push", {pressA}, kUse, "A", 1.0, 1.0},
        {"a key is half an axis", "Turn", {pressA}, kMore, "A", 1.0, 1.0},
        {"two keys are an axis", "Turn", {pressA, pressB}, kUse, kBoth, 1.0, 1.0},
        {"the first again", "Turn", {pressA, releaseA, pressA}, kMore, "A", 1.0, 1.0},
    };
    open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        pad->set("Axis", 0, 0.0);
        pad->set("Axis", 1, 0.0);
        turn->multiplier = push->multiplier = c.before;
        detect(c.input, c.moves);
        EXPECT_TRUE(says(dialog(), c.prompt));
        EXPECT_TRUE(says(dialog(), c.found));
        press(dialog(), "Ok");
        const unidevice::Property& input = c.input == std::string("Turn") ? *turn : *push;
        ASSERT_NE(input.control(), nullptr);
        EXPECT_EQ(input.control()->description, c.found);
        EXPECT_EQ(input.multiplier, c.multiplier);
    }
}

/// The window's own reading must not swallow it.
TEST_F(Bindings, aMovementIsFoundWheneverItComes)
{
    open();
    for (int wait = 0; wait < 6; ++wait) {
        detect("Push", {{"Button", 0, 0.0}});
        pass(wait);
        make({"Button", 0, 1.0});
        EXPECT_TRUE(says(dialog(), "Button 1")) << wait;
        press(dialog(), "Cancel");
    }
}

TEST_F(Bindings, retryLeavesTheWrongKeyOut)
{
    open();
    detect("Push", {{nullptr, kA, 1.0}});
    press(dialog(), "Retry");
    EXPECT_TRUE(says(dialog(), "Please press or move the control you want to bind"));
    make({nullptr, kA, 0.0});
    make({nullptr, kA, 1.0});
    EXPECT_TRUE(says(dialog(), "Please press or move the control you want to bind"));
    make({nullptr, kB, 1.0});
    press(dialog(), "Ok");
    EXPECT_EQ(push->control(), key(kB));
    detect("Push", {{nullptr, kA, 1.0}}); // a new detection knows nothing of it
    EXPECT_TRUE(says(dialog(), "A"));
    press(dialog(), "Cancel");
    EXPECT_EQ(push->control(), key(kB));
}

TEST_F(Bindings, keysDontPressTheButtonsOfTheDetection)
{
    open();
    detect("Push", {});
    QPushButton* const retry = saying<QPushButton>(dialog(), "Retry");
    retry->setFocus();
    for (const Qt::Key pressed : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space}) {
        QTest::keyClick(retry, pressed);
        ASSERT_TRUE(hasDialog()) << pressed;
    }
    make({nullptr, 27, 1.0});
    EXPECT_TRUE(says(dialog(), "Escape"));
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&dialog(), &repeated); // it is still held
    ASSERT_TRUE(hasDialog());
    QTest::keyClick(&dialog(), Qt::Key_Escape);
    EXPECT_FALSE(hasDialog());
    EXPECT_EQ(push->control(), nullptr);
}

/// A tool's outputs are controls too: this one has none.
TEST_F(Bindings, detectionWithoutDevicesSaysSo)
{
    session->removeDevice(*pad);
    session->removeDevice(*keyboard);
    session->clear();
    tool = &(*session->create("ObserverCam"))->instance();
    open();
    press(*window(), "Detect");
    EXPECT_TRUE(says(dialog(), "No device detected"));
    pass();
    press(dialog(), "Cancel");
    EXPECT_FALSE(hasDialog());
}

TEST_F(Bindings, byHand)
{
    open();
    choose("Turn", 0, "Pad");
    EXPECT_EQ(box("Turn", 1).count(), 5) << "[none] and four controls";
    EXPECT_EQ(turn->control(), nullptr);
    choose("Turn", 1, "Button 1");
    EXPECT_EQ(turn->control(), padControl(2)) << "half the axis";
    ASSERT_TRUE(box("Turn", 2).isVisible()) << "a place for the other half";
    choose("Turn", 2, "Pad");
    choose("Turn", 3, "Button 2");
    pad->set("Button", 1, 1.0);
    pass();
    EXPECT_EQ(turn->value(), -1.0);
    EXPECT_TRUE(says(panel("Turn"), "-1.00"));
    press(panel("Turn"), "Clear");
    EXPECT_EQ(turn->control(), padControl(3)) << "the one that is left";
    EXPECT_EQ(box("Turn", 1).currentText(), "Button 2");
    choose("Turn", 1, "Axis 1");
    EXPECT_EQ(turn->control(), padControl(0));
    EXPECT_FALSE(box("Turn", 2).isVisible());
    choose("Turn", 1, "Button 1");
    choose("Turn", 2, "Pad");
    choose("Turn", 3, "Button 2");
    choose("Turn", 1, "Axis 1");
    choose("Turn", 1, "Button 1");
    EXPECT_EQ(turn->control(), padControl(2)) << "the second choice went with the axis";
    choose("Turn", 1, "Axis 1");
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box("Turn", 1), &wheel);
    EXPECT_EQ(turn->control(), padControl(0)) << "who scrolls the page changes nothing";
    choose("Turn", 0, "[none]");
    EXPECT_EQ(turn->control(), nullptr);
    for (const QLabel* const label : panel("Turn").findChildren<QLabel*>())
        EXPECT_TRUE(label->pixmap(Qt::ReturnByValue).isNull()) << "no device, no picture";
}

TEST_F(Bindings, twoPadsOfOneNameAreToldApart)
{
    unidevice::ScriptedDevice& second = session->addDevice("Pad", {.axes = 1});
    open();
    choose("Turn", 0, "Pad (1)");
    choose("Turn", 1, "Axis 1");
    EXPECT_EQ(turn->control(), second.controlAt(0));
    session->removeDevice(second);
    pass();
    EXPECT_EQ(box("Turn", 0).currentText(), "Pad (1) (unplugged)");
}

TEST_F(Bindings, aDeviceThatComesAndGoesIsShown)
{
    push->bind(padControl(1));
    turn->bind(
        dynamic_cast<unidevice::EmulatedTrinaryDevice*>(hub().findDevice("TrinaryEmulator", 0))
            ->createEmulated(padControl(2), key(kA)));
    open();
    EXPECT_EQ(box("Turn", 1).currentText(), "Button 1");
    EXPECT_EQ(box("Turn", 2).currentText(), "Keyboard");
    session->removeDevice(*pad);
    pass();
    EXPECT_EQ(box("Push", 0).currentText(), "Pad (unplugged)");
    EXPECT_EQ(box("Push", 1).currentText(), "Axis 2");
    EXPECT_EQ(box("Turn", 0).currentText(), "Pad (unplugged)");
    EXPECT_EQ(box("Turn", 3).currentText(), "A");
    pad = &session->addDevice("Pad", {.axes = 2, .hats = 0, .buttons = 2});
    pass();
    EXPECT_EQ(push->control(), padControl(1));
    EXPECT_EQ(box("Push", 0).currentText(), "Pad");
    EXPECT_EQ(turn->control()->type, "control");
    session->removeDevice(*pad);
    pass();
    press(panel("Push"), "Clear");
    pad = &session->addDevice("Pad", {.axes = 2, .hats = 0, .buttons = 2});
    EXPECT_EQ(push->control(), nullptr) << "cleared by hand";
}

TEST_F(Bindings, aDeviceThatGoesWhileItIsDetectedIsNotBound)
{
    open();
    detect("Push", {{"Axis", 0, 1.0}});
    session->removeDevice(*pad);
    press(dialog(), "Ok");
    EXPECT_EQ(push->control(), nullptr);
}

TEST_F(Bindings, theToolMayGoWhileItIsShown)
{
    const auto deleted = [&] { core::InstanceManager::deleteReference(tool->reference(), true); };
    const auto cleared = [&] { session->clear(); };
    const auto allDeleted = [&] { session->core().deleteAllInstances(); };
    for (const char* const button : {"", "Detect", "Advanced"}) {
        for (const auto& end : std::vector<std::function<void()>>{deleted, cleared, allDeleted}) {
            tool = &(*session->create("Tiny"))->instance();
            open();
            if (*button)
                press(panel("Push"), button);
            end();
            EXPECT_EQ(window(), nullptr);
            EXPECT_FALSE(hasDialog());
            pad->set("Axis", 0, 1.0);
            pass();
            EXPECT_EQ(window(), nullptr);
        }
    }
}

/// The same take with and without the window; the hand moves the axis in it.
TEST_F(Bindings, aTakeIsNotDisturbed)
{
    push->bind(padControl(0));
    push->deadzone = 0.0;
    pad->set("Axis", 0, 0.25);
    const double expected = record(0.5);
    session->stage().setTime(0.0);
    open();
    press(panel("Push"), "Detect");
    EXPECT_EQ(session->core().startRecord(), 0);
    double frame = session->core().records().frameTime();
    for (int i = 0; i < 200; ++i) {
        const double before = padControl(0)->current;
        pad->set("Axis", 0, 0.001 * i);
        clock.fireNext();
        const double now = session->core().records().frameTime();
        EXPECT_TRUE(now != frame || padControl(0)->current == before) << "read between two frames";
        frame = now;
    }
    EXPECT_GT(frame, 0.0);
    EXPECT_FALSE(hasDialog()) << "the take has the devices";
    EXPECT_FALSE(saying<QPushButton>(panel("Push"), "Detect")->isEnabled());
    EXPECT_FALSE(box("Push", 0).isEnabled());
    session->core().stopRecord();
    pass();
    EXPECT_TRUE(box("Push", 0).isEnabled());
    pad->set("Axis", 0, 0.25);
    session->stage().setTime(0.0);
    EXPECT_EQ(record(0.5), expected);
}

} // namespace

} // namespace tvw::rgs::app
