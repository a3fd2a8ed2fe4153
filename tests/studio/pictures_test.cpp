// Every window opens and shows something. With RIGSTAGE_PICTURES=FOLDER their pictures stay, for
// the documents: scripts/make-pictures.sh.
#include "adaptor/stage/tool_items.h"
#include "app/main_dialog.h"
#include "app/main_dialog_ids.h"
#include "core/core_implementation.h"
#include "gui/message_ids.h"
#include "tests/studio/studio_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QSet>

namespace tvw::rgs::tests {
namespace {

class PicturesTest : public StudioTest
{
protected:
    PicturesTest()
    {
        const QString given = qEnvironmentVariable("RIGSTAGE_PICTURES");
        pictures_ = given.isEmpty() ? QDir(QString::fromStdString(folder.path())) : QDir(given);
    }

    /// What the screen shows of a window, and that it is more than one colour.
    void keep(const QString& name, const QRect& place)
    {
        const QImage image =
            QGuiApplication::primaryScreen()
                ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
                .toImage();
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); y += 5) {
            for (int x = 0; x < image.width(); x += 5)
                colours.insert(image.pixel(x, y));
        }
        EXPECT_GT(colours.size(), 8) << name.toStdString();
        EXPECT_TRUE(image.save(pictures_.filePath(name + ".png")));
    }
    void keep(const QString& name, const QWidget& window)
    {
        letRun(500); // its frame comes later
        keep(name, window.frameGeometry());
    }

    /// The window that comes up; presses what brings it.
    QWidget* comesUp(const std::function<void()>& bring)
    {
        const QWidgetList before = shown();
        bring();
        QWidget* found = nullptr;
        EXPECT_TRUE(waitFor([&] {
            for (QWidget* const each : shown()) {
                if (!before.contains(each))
                    found = each;
            }
            return found != nullptr;
        }));
        return found;
    }
    static QWidgetList shown()
    {
        QWidgetList out;
        for (QWidget* const each : QApplication::topLevelWidgets()) {
            if (each->isVisible() && each->windowType() != Qt::ToolTip)
                out << each;
        }
        return out;
    }

    /// Of the menus of the main window.
    void choose(int item)
    {
        gui::Component* const bar = studio->windows().mainDialog()->find(app::id::menubar);
        Message chosen(gui::message::menuChosen, static_cast<std::uint32_t>(item), 0);
        bar->originate(chosen);
    }

    void keepAndClose(const QString& name, const std::function<void()>& bring)
    {
        QWidget* const window = comesUp(bring);
        ASSERT_NE(window, nullptr) << name.toStdString();
        window->raise();
        keep(name, *window);
        window->close();
        letRun(150);
    }

    QDir pictures_;
};

TEST_F(PicturesTest, EveryWindowShowsSomething)
{
    openDemo();
    QWidget& main = *ofMain(app::id::window).window();
    letRun(500);
    keep("studio", studio->window().frameGeometry().united(main.frameGeometry()));
    keep("main", main);

    whenAsked([&] {
        QWidget* const menu = QApplication::activePopupWidget();
        keep("tools", main.frameGeometry().united(menu->geometry()));
        press("Escape");
    });
    moveTo(ofMain(app::id::cameras).mapToGlobal(ofMain(app::id::cameras).rect().center()));
    hand({"mousedown", "1", "sleep", "1.2", "mouseup", "1"});

    clickAt(rowOf("Car"));
    keepAndClose("config", [&] { click(ofMain(app::id::configure)); });

    clickAt(rowOf("Car"));
    QWidget* const inputs = comesUp([&] { click(ofMain(app::id::inputs)); });
    ASSERT_NE(inputs, nullptr);
    keep("inputs", *inputs);
    keepAndClose("curve", [&] { press(button("Advanced", "Gas Pedal (Forw/Backw)")); });
    QWidget* const detection = comesUp([&] { press(button("Detect", "Gas Pedal (Forw/Backw)")); });
    ASSERT_NE(detection, nullptr);
    keep("detect", *inputs);
    press(button("Cancel"));
    inputs->close();

    keepAndClose("preferences", [&] { choose(app::id::itemPreferences); });
    keepAndClose("about", [&] { choose(app::id::itemAbout); });
    keepAndClose("updates", [&] { choose(app::id::itemUpdates); });

    studio->window().activateWindow();
    letRun(200);
    press("F5");
    ASSERT_TRUE(waitFor([&] { return core().isRunning(); }));
    letRun(900);
    keep("countdown", studio->window());
    hand({"keydown", "Up"});
    ASSERT_TRUE(waitFor([&] { return core().records().frameTime() > 3.5; }));
    keep("studio-take", studio->window());
    hand({"keyup", "Up"});
    press("space");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning(); }));
}

} // namespace
} // namespace tvw::rgs::tests
