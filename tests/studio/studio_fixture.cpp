#include "tests/studio/studio_fixture.h"

#include "adaptor/stage/tool_items.h"
#include "gui/qt/boxes.h"
#include "gui/qt/gui_start.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QWidget>

#include <cmath>

namespace tvw::rgs::tests {

StudioTest::StudioTest()
{
    auto started = studio::Studio::start(folder.path());
    if (!started)
        throw std::runtime_error(started.reason());
    studio = *std::move(started);
    studio->show();
}

StudioTest::~StudioTest()
{
    if (core().isRunning())
        core().stopRecord();
    studio.reset();
}

bool StudioTest::waitFor(const std::function<bool()>& isSo, int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (!isSo()) {
        if (clock.elapsed() > milliseconds)
            return false;
        QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }
    return true;
}

void StudioTest::letRun(int milliseconds)
{
    static_cast<void>(waitFor([] { return false; }, milliseconds));
}

void StudioTest::hand(const QStringList& arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    ASSERT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; }));
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    letRun(50);
}

void StudioTest::clickAt(const QPoint& place)
{
    hand({"mousemove", QString::number(place.x()), QString::number(place.y())});
    hand({"click", "1"});
}

void StudioTest::click(QWidget& widget)
{
    clickAt(widget.mapToGlobal(widget.rect().center()));
}

void StudioTest::openDemo()
{
    studio->window().newDemo();
    ASSERT_TRUE(waitFor([&] { return studio->window().isActiveWindow(); })) << "no focus";
}

void StudioTest::startTake()
{
    press("F5");
    ASSERT_TRUE(waitFor([&] { return core().isRunning(); }));
    const auto& records = core().records();
    ASSERT_TRUE(waitFor([&] { return records.frameTime() > 0.1; })) << "the countdown never ends";
}

core::Instance& StudioTest::car()
{
    return studio->session().tool("Car")->instance();
}

stage::StageNode& StudioTest::body()
{
    return *scene().find("Car_CarBodyMesh");
}

std::map<double, Matrix4> StudioTest::keysOf(const stage::StageNode& node)
{
    std::map<double, Matrix4> keys;
    for (const double time : node.poseKeyTimes())
        keys[time] = node.local(time);
    return keys;
}

} // namespace tvw::rgs::tests

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    tvw::rgs::studio::setUpApplication();
    if (const tvw::Status started = tvw::gui::startGui(); !started) {
        std::fprintf(stderr, "%s\n", started.reason().c_str());
        return 1;
    }
    return RUN_ALL_TESTS();
}
