// What the entry of a tool shows and does: columns, menu, the low-poly view.
#include "core/low_poly_view.h"
#include "core/tool.h"
#include "tests/support/session_test.h"

namespace tvw::rgs::core {

namespace {

using testing::ElementsAre;

/// Windows that note what they are asked for.
class NotingWindows final : public Windows
{
public:
    void openConfiguration(Instance* tool) override
    {
        calls.push_back("configure " + tool->name());
    }
    void openInputs(Instance* tool) override { calls.push_back("inputs " + tool->name()); }
    void openHelp(const std::string& type) override { calls.push_back("help " + type); }
    void beginRename(InstanceReference* entry) override
    {
        calls.push_back("rename " + entry->getText());
    }
    std::string chooseFile(const std::string&, const std::string& filter) override
    {
        calls.push_back(filter);
        return file;
    }
    std::uint32_t messageBox(void*, const std::string& text, const std::string& title,
                             std::uint32_t flags, bool) override
    {
        calls.push_back(title + ": " + text);
        return box::silentAnswer(flags);
    }

    std::string file;
    std::vector<std::string> calls;
};

class ToolEntry : public tests::SessionTest
{
protected:
    ToolEntry() { open(&windows); }
    ~ToolEntry() override { session.reset(); }

    bool isVisible(const char* name) { return scene().find(name)->state().visible; }

    NotingWindows windows;
};

constexpr ColumnState kOff = ColumnState::Off, kOn = ColumnState::On, kMixed = ColumnState::Mixed;

} // namespace

TEST_F(ToolEntry, AClosedEntryShowsMixedWhenAnyBelowDiffers)
{
    InstanceReference& set = make("Set", nullptr, "Group");
    InstanceReference& car = make("Car", &set);
    InstanceReference& wheel = make("Wheel", &car);
    for (const Column column : {Column::Run, Column::LowPoly, Column::HiPoly}) {
        set.showMixed(column);
        EXPECT_EQ(set.getState(column), kOn) << "all are on";
        wheel.setState(column, kOff, false);
        set.showMixed(column);
        EXPECT_EQ(set.getState(column), kMixed);
        EXPECT_EQ(car.getState(column), kOn);
        set.saveState(column); // mixed is nobody's own state
        set.restoreState(column);
        EXPECT_EQ(set.getState(column), kOn);

        set.setState(column, kOff, true);
        EXPECT_EQ(car.getState(column), kOff);
        EXPECT_EQ(wheel.getState(column), kOff);
        set.showMixed(column);
        EXPECT_EQ(set.getState(column), kOff);
        set.setState(column, kOn, true);
    }
}

TEST_F(ToolEntry, AMixedEntryTakesPartInARunAsItsOwnStateSays)
{
    InstanceReference& car = make("Car");
    InstanceReference& wheel = make("Wheel", &car);
    struct Case
    {
        ColumnState car, wheel;
        std::vector<std::string> running;
    };
    const Case cases[] = {{kOn, kOn, {"Car", "Wheel"}},
                          {kOff, kOn, {"Wheel"}},
                          {kOn, kOff, {"Car"}},
                          {kOff, kOff, {}}};
    for (const Case& row : cases) {
        for (const bool closed : {false, true}) {
            car.setState(Column::Run, row.car, false);
            wheel.setState(Column::Run, row.wheel, false);
            if (closed)
                car.showMixed(Column::Run);
            std::vector<std::string> running;
            for (const Instance* const tool : tools().collect(true))
                running.push_back(tool->name());
            EXPECT_EQ(running, row.running) << closed;
        }
    }
    EXPECT_EQ(tools().collect(false).size(), 2U);
}

TEST_F(ToolEntry, ColumnsShowAndHideNodesAndWhatHangsOnThem)
{
    InstanceReference& car = make("Car");
    InstanceReference& bus = make("Bus");
    stage::StageNode& body = scene().addEmpty("Body", {}, scene().find("Car_Arm"));
    scene().addEmpty("Mirror", {}, &body);
    scene().find("Bus_Base")->setParent(scene().find("Car_Base"));

    car.setState(Column::LowPoly, kOff, false);
    EXPECT_FALSE(isVisible("Car_Base"));
    EXPECT_FALSE(isVisible("Car_Arm"));
    EXPECT_TRUE(isVisible("Car_Eye")) << "the view through it stays";
    EXPECT_TRUE(isVisible("Body"));

    car.setState(Column::HiPoly, kOff, false);
    EXPECT_FALSE(isVisible("Body"));
    EXPECT_FALSE(isVisible("Mirror"));
    EXPECT_TRUE(isVisible("Bus_Base")) << "another tool's";
    car.setState(Column::LowPoly, kMixed, false);
    EXPECT_FALSE(isVisible("Car_Base")) << "mixed acts on nothing";
    car.setState(Column::LowPoly, kOn, false);
    car.setState(Column::HiPoly, kOn, false);
    for (const std::string& name : sceneNames())
        EXPECT_TRUE(isVisible(name.c_str())) << name;
    bus.setState(Column::Run, kOff, false);
    EXPECT_TRUE(isVisible("Bus_Base"));
}

TEST_F(ToolEntry, TheLowPolyViewPutsBackWhatItFound)
{
    InstanceReference& car = make("Car");
    stage::StageNode& body = scene().addEmpty("Body", {}, scene().find("Car_Arm"));
    stage::StageNode& hidden = scene().addEmpty("Hidden", {}, scene().find("Car_Arm"));
    hidden.setVisible(false);
    scene().find("Car_Base")->setVisible(false);

    LowPolyView view;
    view.note();
    view.setUp(session->root());
    EXPECT_TRUE(isVisible("Car_Base"));
    EXPECT_FALSE(body.state().visible);
    view.putBack();
    EXPECT_FALSE(isVisible("Car_Base"));
    EXPECT_TRUE(isVisible("Car_Arm"));
    EXPECT_TRUE(body.state().visible);
    EXPECT_FALSE(hidden.state().visible);

    view.note();
    remove(car);
    view.putBack(); // of nodes that went meanwhile nothing
}

TEST_F(ToolEntry, TheMenuListsItsCommandsAndTheTools)
{
    const util::xml::Element menu = make("Car").buildMenu();
    ASSERT_EQ(menu.name(), "popup");
    std::vector<std::string> shown;
    for (const util::xml::Element& item : menu.children())
        shown.push_back(item.attributeValue("id") + " " + std::string(item.name()) + " " +
                        item.attributeValue("label"));
    EXPECT_THAT(shown,
                ElementsAre("1 item Configure", "2 item Input Settings",
                            "3 item Help documentation", "7 item Rename", "4 item Clone",
                            "5 item Delete", " separator ", "6 item Browse...", " popup New tool"));
    const util::xml::Element& newTool = menu.child("popup");
    const std::vector<Tool*> all = LibraryManager::instance().listTools(true);
    for (const util::xml::Element& item : newTool.children()) {
        const int place = std::stoi(item.attributeValue("id")) - 1000;
        ASSERT_GE(place, 0);
        EXPECT_EQ(all.at(static_cast<std::size_t>(place))->name(), item.attributeValue("label"));
        EXPECT_NE(item.attributeValue("label"), "template") << "is not listed";
    }
}

TEST_F(ToolEntry, EachCommandDoesWhatItSays)
{
    InstanceReference& car = make("Car");
    for (const int id : {1, 2, 3, 7, 6, 0, 8, 999, 5000})
        car.onMenuCommand(id);
    EXPECT_THAT(windows.calls, ElementsAre("configure Car", "inputs Car", "help Tiny", "rename Car",
                                           "Tarvo Pre-Rigged Models (*.prm);;All files (*.*)"));
    EXPECT_THAT(tree(), ElementsAre("Car"));

    car.onMenuCommand(4);
    EXPECT_THAT(tree(), ElementsAre("Car", "Car_01"));
    EXPECT_EQ(scene().undoStack().undoNames().back(), "Clone tool");

    const std::vector<Tool*> all = LibraryManager::instance().listTools(true);
    const auto tiny =
        std::find_if(all.begin(), all.end(), [](Tool* tool) { return tool->name() == "Tiny"; });
    car.onMenuCommand(1000 + static_cast<int>(tiny - all.begin()));
    EXPECT_THAT(tree(), ElementsAre("Car", "Car/Tiny_01", "Car_01"));
    EXPECT_EQ(scene().undoStack().undoNames().back(), "Create Tool");

    car.onMenuCommand(5);
    EXPECT_THAT(tree(), ElementsAre("Car_01"));
    EXPECT_EQ(scene().undoStack().undoNames().back(), "Delete tool");
    session->root().onMenuCommand(5);
    EXPECT_THAT(tree(), ElementsAre("Car_01")) << "the root can't be deleted";
}

TEST_F(ToolEntry, BrowsingReadsTheToolsOfAFileOrSaysWhyNot)
{
    InstanceReference& car = make("Car");
    windows.file =
        user.write("model.prm", "<RGT><RGT_Plugin><type>Tiny</type><name>Model</name></RGT_Plugin>"
                                "<RGT_Plugin><type>Group</type></RGT_Plugin></RGT>");
    car.onMenuCommand(6);
    EXPECT_THAT(tree(), ElementsAre("Car", "Car/Model", "Car/Group_01"));
    for (const char* const bad : {"<RGT><RGT_Plugin>", "<pear/>", "", "no XML"}) {
        windows.file = user.write("bad.prm", bad);
        windows.calls.clear();
        car.onMenuCommand(6);
        ASSERT_EQ(windows.calls.size(), 2U) << bad;
        EXPECT_THAT(windows.calls.back(), testing::HasSubstr("bad.prm")) << bad;
        EXPECT_EQ(tree().size(), 3U) << bad;
    }
}

} // namespace tvw::rgs::core
