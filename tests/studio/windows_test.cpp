// The windows of the system from end to end, with real clicks and keys: create, name, group,
// bind, record, resimulate, undo.
#include "app/main_dialog.h"
#include "app/main_dialog_ids.h"
#include "app/tool_lists.h"
#include "core/core_implementation.h"
#include "tests/studio/studio_fixture.h"
#include "unidevice/scripted_device.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>

namespace tvw::rgs::tests {
namespace {

class WindowsTest : public StudioTest
{
protected:
    /// Presses the category's button and chooses the tool of that name from what flies out.
    void create(int category, const std::string& displayName)
    {
        bool isChosen = false;
        whenAsked([&] {
            gui::Component* const page =
                studio->windows().mainDialog()->find(category)->findById(app::id::toolPage);
            click(*entryOf(*page, displayName));
            isChosen = true;
        });
        click(ofMain(category));
        ASSERT_TRUE(waitFor([&] { return isChosen; })) << "no tools fly out";
        letRun(200);
    }

    /// The picture button of an entry; the entry's name stands under id 1.
    static QWidget* entryOf(gui::Component& page, const std::string& displayName)
    {
        for (std::size_t row = 0; row < page.childCount(); ++row) {
            for (gui::Component* const entry : page.childAt(row)->children()) {
                if (entry->findById(1)->label() == displayName)
                    return entry->findById(0)->widget();
            }
        }
        ADD_FAILURE() << displayName << " is not offered";
        return page.widget();
    }

    core::Instance* tool(const std::string& name)
    {
        core::InstanceReference* const found = studio->session().tool(name);
        return found ? &found->instance() : nullptr;
    }

    void type(const char* text) { hand({"type", "--delay", "20", text}); }

    /// In one go: a drag keeps the program to itself until it ends.
    void dragRow(const QString& from, const QString& onto)
    {
        const QPoint begin = rowOf(from);
        const QPoint end = rowOf(onto);
        QStringList drag;
        const auto moveTo = [&](const QPoint& place) {
            drag << "mousemove" << QString::number(place.x()) << QString::number(place.y())
                 << "sleep"
                 << "0.15";
        };
        moveTo(begin);
        drag << "mousedown"
             << "1"
             << "sleep"
             << "0.1";
        moveTo(begin + QPoint(4, 4)); // a drag begins with a few small steps
        moveTo(begin + (end - begin) / 2);
        moveTo(end);
        moveTo(end + QPoint(1, 0));
        drag << "mouseup"
             << "1";
        hand(drag);
        letRun(200);
    }
};

TEST_F(WindowsTest, AUserFindsHisWayFromAnEmptySceneToAResimulation)
{
    ASSERT_TRUE(waitFor([&] { return studio->windows().isMainWindowOpen(); }));

    create(app::id::vehicles, "Tarvo 4-Wheeler Extended");
    ASSERT_NE(tool("4WheelerExt_01"), nullptr);

    // A name of his own.
    clickAt(rowOf("4WheelerExt_01"));
    letRun(QApplication::doubleClickInterval() + 100); // it might have become a double click
    if (!qobject_cast<QLineEdit*>(QApplication::focusWidget()))
        press("F2"); // a click on the selected row begins it too
    press("ctrl+a");
    type("Racer");
    press("Return");
    ASSERT_NE(tool("Racer"), nullptr);

    // A group, and the car in it.
    clickAt(rowOf("root"));
    click(ofMain(app::id::group));
    letRun(200);
    dragRow("Racer", "Group");
    const core::InstanceReference* const entry = studio->session().tool("Racer");
    ASSERT_NE(entry, nullptr);
    EXPECT_NE(entry->parentItem(), &studio->session().root()) << "it is in the group";

    // The gas by a stick that is found when it moves, the brake by a key that is pressed.
    unidevice::ScriptedDevice& pad = studio->session().addDevice("Lever", {.axes = 2});
    clickAt(rowOf("Racer"));
    click(ofMain(app::id::inputs));
    ASSERT_TRUE(waitFor([&] { return button("Detect", "Gas Pedal (Forw/Backw)") != nullptr; }));
    auto* const gas = tool("Racer")->properties().findProperty("Gas Pedal (Forw/Backw)");
    auto* const brake = tool("Racer")->properties().findProperty("ABS Brake");
    press(button("Detect", "Gas Pedal (Forw/Backw)"));
    letRun(300);
    pad.set("Axis", 1, 1.0);
    ASSERT_TRUE(waitFor([] { return button("Ok") != nullptr && button("Ok")->isEnabled(); }));
    press(button("Ok"));
    EXPECT_TRUE(waitFor([&] { return gas->control() == pad.controlAt(1); }));
    press(button("Detect", "ABS Brake"));
    letRun(300);
    press("j");
    ASSERT_TRUE(waitFor([] { return button("Ok") != nullptr && button("Ok")->isEnabled(); }));
    press(button("Ok"));
    EXPECT_TRUE(waitFor([&] { return brake->control() && brake->control()->type == "J"; }));
    press(button("Close"));

    // A take, stopped by Space; the same again; and back.
    stage::StageNode& shape = *scene().find("Racer_CarBodyMesh");
    pad.set("Axis", 1, 0.0);
    click(ofMain(app::id::record));
    ASSERT_TRUE(waitFor([&] { return core().isRunning() && core().records().frameTime() > 0.2; }));
    pad.set("Axis", 1, 1.0);
    letRun(1200);
    press("space");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning(); }));
    const std::map<double, Matrix4> take = keysOf(shape);
    ASSERT_GT(take.size(), 20U);
    EXPECT_GT(length(translationOf(take.rbegin()->second) - translationOf(take.begin()->second)),
              0.2);

    click(ofMain(app::id::resimulate));
    ASSERT_TRUE(waitFor([&] { return !core().isRunning() && keysOf(shape).size() > take.size(); }));
    for (const auto& [time, pose] : take)
        EXPECT_EQ(keysOf(shape).at(time), pose);

    press("ctrl+z");
    EXPECT_TRUE(waitFor([&] { return keysOf(shape) == take; }));
    press("ctrl+z");
    EXPECT_TRUE(waitFor([&] { return keysOf(shape).empty(); }));
}

} // namespace
} // namespace tvw::rgs::tests
