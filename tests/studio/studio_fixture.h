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
    static void clickAt(const QPoint& place); ///< of the screen
    static void click(QWidget& widget);

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
