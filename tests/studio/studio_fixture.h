/// The whole studio on a display, driven by real keys and clicks.
#pragma once

#include "core/instance.h"
#include "studio/studio.h"
#include "tests/support/session_test.h"

#include <QPoint>
#include <QStringList>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QAbstractButton;
class QWidget;

namespace tvw::rgs::tests {

class StudioTest : public testing::Test
{
protected:
    StudioTest();
    ~StudioTest() override;

    /// Lets the program run until that is so. False: it never was, in that time.
    static bool waitFor(const std::function<bool()>& isSo, int milliseconds = 20000);
    static void letRun(int milliseconds);

    /// xdotool, as from a hand: the program runs on meanwhile.
    static void hand(const QStringList& arguments);
    static void press(const char* key) { hand({"key", key}); }
    static void moveTo(const QPoint& place); ///< of the screen [logical pixels]
    static void clickAt(const QPoint& place);
    static void click(QWidget& widget);

    /// What the hand does as soon as a menu or a window keeps the program to itself; say it before
    /// what opens that.
    void whenAsked(std::function<void()> act);

    // The windows of the system, as a user sees them.
    QWidget& ofMain(int id); ///< a component of the main window
    /// The button that bears the text, in a window that is shown; within: below a group's title.
    static QAbstractButton* button(const QString& text, const QString& within = {});
    void press(QAbstractButton* found); ///< with the mouse; a failure when there is none
    /// A row of the main window's tree whose text begins so.
    QPoint rowOf(const QString& text);

    /// The demo scene, and the focus with the studio.
    void openDemo();

    /// F5, and waits until the take's first frame is done.
    void startTake();

    core::CoreImplementation& core() { return studio->session().core(); }
    stage::Stage& scene() { return studio->session().stage(); }
    core::Instance& car();
    stage::StageNode& body();

    /// The local matrices of a node's keys, by time.
    static std::map<double, Matrix4> keysOf(const stage::StageNode& node);

    TemporaryFolder folder;
    std::unique_ptr<studio::Studio> studio;
};

} // namespace tvw::rgs::tests
