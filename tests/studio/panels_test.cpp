// The panels beside the view: scene list, properties, time line, and what a title tells.
#include "adaptor/stage/scene_file.h"
#include "core/core_implementation.h"
#include "core/documentation.h"
#include "core/library_manager.h"
#include "core/tool.h"
#include "tests/studio/studio_fixture.h"
#include "unidevice/keyboard_device.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QTableWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

#include <filesystem>

namespace tvw::rgs::tests {
namespace {

class PanelsTest : public StudioTest
{
protected:
    template <class Widget>
    Widget& find(const char* name)
    {
        return *studio->window().findChild<Widget*>(name);
    }

    void select(stage::StageNode& node)
    {
        scene().select(node, false);
        studio->window().refresh();
    }

    /// Types into the n-th number of the properties.
    void typeNumber(int place, const char* text)
    {
        auto* const box = find<QWidget>("properties").findChildren<QDoubleSpinBox*>().at(place);
        click(*box);
        press("ctrl+a");
        hand({"type", text});
        press("Tab");
    }

    /// Types into a cell of the user properties.
    void typeCell(int row, int column, const char* text)
    {
        auto& table = *find<QWidget>("properties").findChild<QTableWidget*>();
        const QRect cell = table.visualItemRect(table.item(row, column));
        clickAt(table.viewport()->mapToGlobal(cell.center()));
        typeOver(text);
    }

    /// Into what is edited in place.
    void typeOver(const char* text)
    {
        press("F2");
        press("ctrl+a");
        if (*text)
            hand({"type", text});
        else
            press("BackSpace");
        press("Return");
        letRun(150);
    }
};

TEST_F(PanelsTest, ANumberChangesNothingBesides)
{
    Matrix4 pose; // a turn by 1 rad about y, mirrored: no box shows it exactly
    pose.setAxis(0, {-0.5403023058681398, 0.0, 0.8414709848078965});
    pose.setAxis(2, {0.8414709848078965, 0.0, 0.5403023058681398});
    setTranslation(pose, {0.12345678, 2.0, 3.0});
    select(scene().addEmpty("Thing", pose));
    stage::StageNode& thing = *scene().find("Thing");
    typeNumber(1, "7.5");
    Matrix4 expected = pose;
    setTranslation(expected, {0.12345678, 7.5, 3.0});
    EXPECT_EQ(thing.local(0.0), expected);
    EXPECT_EQ(scene().undoStack().undoNames().back(), "Transform");

    typeNumber(7, "2"); // the second axis, of length 1
    expected.setAxis(1, {0.0, 2.0, 0.0});
    EXPECT_EQ(thing.local(0.0), expected);

    // In key mode a number is a key, of a lens too.
    stage::StageNode& camera = scene().addCamera("Lens");
    select(camera);
    scene().setKeyMode(true);
    typeNumber(9, "30");
    EXPECT_EQ(camera.fovKeys().size(), 1U);
    EXPECT_EQ(camera.poseKeys().size(), 0U);
    EXPECT_NEAR(camera.fov(0.0), 30.0, 1e-9);
}

TEST_F(PanelsTest, UserPropertiesAreAddedRenamedAndTakenAway)
{
    stage::StageNode& thing = scene().addEmpty("Thing");
    select(thing);
    using Texts = std::map<std::string, std::string>;
    struct Step
    {
        int row, column;
        const char* text;
        Texts then;
    };
    const Step steps[] = {
        {0, 0, "team", {}}, // waits for its text
        {0, 1, "red", {{"team", "red"}}},
        {0, 0, "side", {{"side", "red"}}},
        {0, 1, "", {}},
    };
    for (const Step& step : steps) {
        typeCell(step.row, step.column, step.text);
        EXPECT_EQ(thing.state().properties, step.then) << step.text;
    }
}

TEST_F(PanelsTest, TheSceneListRenamesAndKeepsItsPlace)
{
    for (int i = 0; i < 300; ++i)
        scene().addEmpty("Node");
    auto& list = find<QTreeWidget>("outliner");
    ASSERT_TRUE(waitFor([&] { return list.topLevelItemCount() == 300; }));
    studio->window().activateWindow();
    ASSERT_TRUE(waitFor([&] { return studio->window().isActiveWindow(); }));
    QTreeWidgetItem* const item = list.topLevelItem(250);
    list.scrollToItem(item, QAbstractItemView::PositionAtCenter);
    letRun(100);
    const QPoint place = list.viewport()->mapToGlobal(list.visualItemRect(item).center());
    clickAt(place);
    ASSERT_TRUE(waitFor([&] { return item->isSelected() && list.hasFocus(); }));
    const std::string first = scene().topLevel().front()->name();
    for (const auto& [typed, shown] :
         {std::pair{"Wheel", "Wheel"}, {"", "Wheel"}, {"  Axle ", "Axle"}}) {
        typeOver(typed);
        ASSERT_EQ(list.topLevelItem(250), item) << "the list was made anew";
        EXPECT_EQ(item->text(0), shown);
        EXPECT_EQ(scene().topLevel()[250]->name(), shown);
    }
    // A change of the structure leaves it where it is.
    const int scrolled = list.visualItemRect(item).top();
    scene().addEmpty("Late");
    ASSERT_TRUE(waitFor([&] { return list.topLevelItemCount() == 301; }));
    EXPECT_EQ(list.visualItemRect(list.topLevelItem(250)).top(), scrolled);
}

TEST_F(PanelsTest, ARangeHasAFrameAtLeast)
{
    struct Row
    {
        const char* box;
        int typed, start, end;
    };
    for (const Row& row : {Row{"rangeStart", 400, 400, 401}, Row{"rangeEnd", -20, -21, -20},
                           Row{"rangeStart", -50, -50, -20}}) {
        auto& box = find<QSpinBox>(row.box);
        box.setValue(row.typed);
        EXPECT_EQ(std::lround(scene().range().start * 25.0), row.start) << row.typed;
        EXPECT_EQ(std::lround(scene().range().end * 25.0), row.end) << row.typed;
    }
}

TEST_F(PanelsTest, TheStarTellsWhetherTheFileIsBehind)
{
    openDemo();
    auto& window = studio->window();
    const std::string path = folder.path() + "/star.glb";
    ASSERT_TRUE(stage::saveScene(studio->session(), path));
    ASSERT_TRUE(window.openFile(QString::fromStdString(path)));
    // To look at it, to select and to scrub changes nothing that a file keeps.
    scene().setTime(1.0);
    select(body());
    EXPECT_FALSE(window.isWindowModified());
    typeNumber(1, "3");
    EXPECT_TRUE(window.isWindowModified());
    press("ctrl+z");
    EXPECT_TRUE(waitFor([&] { return !window.isWindowModified(); }));

    // What an input is bound to is no step of undo; closing asks all the same, and a new scene.
    car().properties().propertyAt(0)->bind(nullptr);
    for (const bool byClosing : {true, false}) {
        bool wasAsked = false;
        whenAsked([&] {
            wasAsked = true;
            QApplication::activeModalWidget()->close();
        });
        if (byClosing)
            window.close();
        else
            press("ctrl+n");
        EXPECT_TRUE(waitFor([&] { return wasAsked; })) << byClosing;
        EXPECT_TRUE(window.isVisible());
        EXPECT_NE(scene().find("Car_CarBodyMesh"), nullptr);
    }
}

TEST_F(PanelsTest, ATakeHasTheSceneToItselfAndWhatIsHeldDrives)
{
    openDemo();
    auto* const gas = car().properties().findProperty("Gas Pedal (Forw/Backw)");
    studio->window().setFocus();
    const auto play = [&] {
        for (auto* const each : studio->window().findChildren<QToolButton*>()) {
            if (each->text() == "Play")
                return each;
        }
        return static_cast<QToolButton*>(nullptr);
    }();
    click(*play);
    hand({"keydown", "Up"});
    startTake();
    EXPECT_FALSE(play->isChecked()) << "a take ends playing";
    EXPECT_EQ(gas->raw(), 1.0) << "the key was held when the take began";
    EXPECT_FALSE(find<QTreeWidget>("outliner").isEnabled());
    hand({"keyup", "Up"});
    EXPECT_TRUE(waitFor([&] { return gas->raw() == 0.0; }));
    press("Escape");
    ASSERT_TRUE(waitFor([&] { return !core().isRunning(); }));
    EXPECT_TRUE(find<QTreeWidget>("outliner").isEnabled());
}

TEST_F(PanelsTest, EveryToolHasItsPageOfHelp)
{
    for (core::Tool* const tool : core::LibraryManager::instance().listTools(true)) {
        const bool isOurs = tool->getKind() == core::ToolKind::Plugin && tool->isListed();
        if (!isOurs || tool->name() == "Group")
            continue;
        EXPECT_TRUE(std::filesystem::exists(tool->getHelpPath())) << tool->name();
    }
    studio->windows().openHelp("4WheelerExt");
    QTextBrowser* page = nullptr;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "help")
            page = qobject_cast<QTextBrowser*>(window);
    }
    ASSERT_NE(page, nullptr);
    EXPECT_TRUE(page->toPlainText().startsWith("4-Wheeler Extended"))
        << page->toPlainText().left(80).toStdString();
    page->close();
}

} // namespace
} // namespace tvw::rgs::tests
