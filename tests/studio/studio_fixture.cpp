#include "tests/studio/studio_fixture.h"

#include "app/main_dialog.h"
#include "app/main_dialog_ids.h"
#include "gui/qt/boxes.h"
#include "gui/qt/gui_start.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QProcess>
#include <QScrollArea>
#include <QTimer>
#include <QTreeView>
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
    letRun(400); // the window manager has placed the windows
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

void StudioTest::moveTo(const QPoint& place)
{
    const double ratio = qApp->devicePixelRatio();
    hand({"mousemove", QString::number(std::lround(place.x() * ratio)),
          QString::number(std::lround(place.y() * ratio))});
}

void StudioTest::clickAt(const QPoint& place)
{
    moveTo(place);
    hand({"click", "1"});
}

void StudioTest::click(QWidget& widget)
{
    clickAt(widget.mapToGlobal(widget.rect().center()));
}

void StudioTest::whenAsked(std::function<void()> act)
{
    auto* const look = new QTimer(&studio->window());
    QObject::connect(look, &QTimer::timeout, look, [look, act = std::move(act)] {
        if (!QApplication::activeModalWidget() && !QApplication::activePopupWidget())
            return;
        look->stop();
        look->deleteLater();
        letRun(150); // until it is painted
        act();
    });
    look->start(30);
}

QWidget& StudioTest::ofMain(int id)
{
    return *studio->windows().mainDialog()->find(id)->widget();
}

QAbstractButton* StudioTest::button(const QString& text, const QString& within)
{
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        for (auto* const each : window->findChildren<QAbstractButton*>()) {
            if (each->text() != text || !each->isVisible())
                continue;
            const QWidget* around = within.isEmpty() ? nullptr : each;
            const auto isGroup = [&] {
                const auto* const group = qobject_cast<const QGroupBox*>(around);
                return group && group->title() == within;
            };
            while (around && !isGroup())
                around = around->parentWidget();
            if (within.isEmpty() || around)
                return each;
        }
    }
    return nullptr;
}

void StudioTest::press(QAbstractButton* found)
{
    ASSERT_NE(found, nullptr) << "there is no such button";
    for (QWidget* around = found->parentWidget(); around; around = around->parentWidget()) {
        if (auto* const scroll = qobject_cast<QScrollArea*>(around))
            scroll->ensureWidgetVisible(found);
    }
    letRun(100);
    click(*found);
}

QPoint StudioTest::rowOf(const QString& text)
{
    auto& tree = dynamic_cast<QTreeView&>(ofMain(app::id::tree));
    const QAbstractItemModel& model = *tree.model();
    for (QModelIndex row = tree.indexAt({20, 4}); row.isValid(); row = tree.indexBelow(row)) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const QModelIndex cell = row.sibling(row.row(), column);
            if (cell.data().toString().startsWith(text))
                return tree.viewport()->mapToGlobal(tree.visualRect(cell).center());
        }
    }
    ADD_FAILURE() << "the tree has no row " << text.toStdString();
    return {};
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
