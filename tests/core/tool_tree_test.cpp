// Making, naming, deleting and cloning of tools, and the way back of each.
#include "core/tool.h"
#include "core/unique_name.h"
#include "tests/support/session_test.h"
#include "unidevice/device_hub.h"

#include <set>

namespace tvw::rgs::core {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::drive;
using tests::TinyTool;

class ToolTree : public tests::SessionTest
{
protected:
    stage::UndoStack& undo() { return scene().undoStack(); }

    std::vector<std::string> nodesOf(InstanceReference& entry)
    {
        std::vector<std::string> names;
        for (CoreNode* const node : entry.instance().nodes()) {
            if (!node->isDeleted())
                names.push_back(node->getName());
        }
        return names;
    }
};

} // namespace

TEST(UniqueName, CountsOnFromTheNumberBehindIt)
{
    struct Case
    {
        const char* wanted;
        std::set<std::string> taken;
        const char* expected;
    };
    const Case cases[] = {
        {"Car", {}, "Car"},
        {"Car", {"Car"}, "Car_01"},
        {"Car", {"Car", "Car_01"}, "Car_02"},
        {"Car_", {"Car_"}, "Car_01"},
        {"Car_01", {"Car_01"}, "Car_02"},
        {"Car_09", {"Car_09"}, "Car_10"},
        {"Car_99", {"Car_99"}, "Car_100"},
        {"Car7", {"Car7", "Car8"}, "Car9"},
        {"007", {"007"}, "008"},
        {"9", {"9"}, "10"},
        {"a1b", {"a1b"}, "a1b_01"},
        {"Car_99999999999999999999", {"Car_99999999999999999999"}, "Car_991000000000000000000"},
    };
    for (const Case& row : cases) {
        const auto taken = [&](const std::string& name) { return row.taken.contains(name); };
        EXPECT_EQ(uniqueName(row.wanted, taken), row.expected) << row.wanted;
    }
}

TEST_F(ToolTree, ANewToolHasItsTypesNameAndItsNodes)
{
    InstanceReference& first = make("");
    InstanceReference& second = make("");
    EXPECT_THAT(tree(), ElementsAre("Tiny_01", "Tiny_02"));
    EXPECT_THAT(nodesOf(first), ElementsAre("Tiny_01_Base", "Tiny_01_Arm", "Tiny_01_Eye"));
    EXPECT_THAT(TinyTool::completed, ElementsAre("Tiny_01", "Tiny_02"));
    EXPECT_THAT(undo().undoNames(), ElementsAre("Creating instance", "Creating instance"));
    EXPECT_EQ(first.instance().iconPath(), "/core/images/treeicons/tarvo_camera_tools.png");
    EXPECT_EQ(first.getToolTip(), "") << "the name says the type";
    second.rename("Car");
    EXPECT_EQ(second.getToolTip(), "Tiny");
}

TEST_F(ToolTree, AFailedMakingLeavesNothing)
{
    struct Case
    {
        const char *name, *type;
        tests::TinyFaults faults;
    };
    const Case cases[] = {
        {"unknown type", "Pear", {}},
        {"empty type", "", {}},
        {"no object", "Tiny", {.nodes = false, .object = true}},
        {"its nodes fail", "Tiny", {.nodes = true, .object = false}},
    };
    for (const Case& row : cases) {
        TinyTool::faults = row.faults;
        EXPECT_EQ(tools().create(row.type, "Car", nullptr), nullptr) << row.name;
        EXPECT_THAT(tree(), IsEmpty()) << row.name;
        EXPECT_THAT(sceneNames(), IsEmpty()) << row.name;
        EXPECT_THAT(undo().undoNames(), IsEmpty()) << row.name;
        EXPECT_EQ(TinyTool::alive, 0) << row.name;
    }
    TinyTool::faults = {};
    EXPECT_EQ(make("Car").getText(), "Car");
}

TEST_F(ToolTree, RenamesTheToolAndItsNodes)
{
    InstanceReference& car = make("Car");
    make("Bus");
    constexpr std::pair<const char*, const char*> kCases[] = {
        {"Car", "Car"}, {"Bus", "Bus_01"}, {"Van", "Van"}, {"", "Tiny"}, {"12", "12"}};
    for (const auto& [wanted, name] : kCases) {
        car.rename(wanted);
        EXPECT_EQ(car.getText(), name) << wanted;
        EXPECT_EQ(car.instance().Device::name(), name) << "the device too";
        EXPECT_EQ(nodesOf(car).front(), std::string(name) + "_Base");
    }
    for (int i = 0; i < 5; ++i)
        scene().hostUndo();
    EXPECT_EQ(car.getText(), "Car");
    EXPECT_EQ(nodesOf(car).front(), "Car_Base");
    scene().hostRedo();
    scene().hostRedo();
    EXPECT_EQ(car.getText(), "Bus_01");
    EXPECT_EQ(nodesOf(car).front(), "Bus_01_Base");
}

TEST_F(ToolTree, UndoOfARenameGoesRoundANameTakenMeanwhile)
{
    InstanceReference& car = make("Car");
    InstanceReference& bus = make("Bus");
    car.rename("Van");
    bus.instance().setName("Car"); // by a script: no undo
    scene().hostUndo();
    EXPECT_EQ(car.getText(), "Car_01");
    EXPECT_EQ(bus.getText(), "Car");
}

TEST_F(ToolTree, DeletingAndItsUndoPutAllBackInPlace)
{
    make("A");
    InstanceReference& car = make("Car");
    make("B");
    InstanceReference& wheel = make("Wheel", &car);
    drive(*session, 0.2);
    auto& hub = unidevice::DeviceHub::instance();
    const int place = hub.deviceIndex(&car.instance());
    const std::vector<double> keys = scene().find("Car_Base")->poseKeyTimes();
    ASSERT_GT(keys.size(), 3U);
    ASSERT_GE(place, 0);

    remove(car);
    EXPECT_FALSE(car.isAlive());
    EXPECT_FALSE(wheel.isAlive());
    EXPECT_THAT(tree(), ElementsAre("A", "B"));
    EXPECT_EQ(hub.deviceIndex(&car.instance()), -1);
    EXPECT_EQ(scene().find("Car_Base"), nullptr);
    EXPECT_EQ(undo().undoNames().back(), "Delete Tarvo Tool");

    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(scene().hostUndo());
        EXPECT_THAT(tree(), ElementsAre("A", "Car", "Car/Wheel", "B"));
        EXPECT_EQ(hub.deviceIndex(&car.instance()), place);
        ASSERT_NE(scene().find("Car_Base"), nullptr);
        EXPECT_EQ(scene().find("Car_Base")->poseKeyTimes(), keys);
        EXPECT_THAT(nodesOf(car), ElementsAre("Car_Base", "Car_Arm", "Car_Eye"));
        EXPECT_EQ(scene().find("Car_Arm")->parent(), scene().find("Car_Base"));
        ASSERT_TRUE(scene().hostRedo());
        EXPECT_THAT(tree(), ElementsAre("A", "B"));
        EXPECT_EQ(hub.deviceIndex(&car.instance()), -1);
        EXPECT_EQ(scene().find("Car_Base"), nullptr);
    }
}

TEST_F(ToolTree, UndoOfTheMakingTakesTheToolOutAndRedoBringsItBack)
{
    InstanceReference& group = make("Set", nullptr, "Group");
    make("Car", &group);
    ASSERT_TRUE(scene().hostUndo());
    EXPECT_THAT(tree(), ElementsAre("Set"));
    EXPECT_THAT(sceneNames(), IsEmpty());
    ASSERT_TRUE(scene().hostUndo());
    EXPECT_THAT(tree(), IsEmpty());
    ASSERT_TRUE(scene().hostRedo());
    ASSERT_TRUE(scene().hostRedo());
    EXPECT_THAT(tree(), ElementsAre("Set", "Set/Car"));
    EXPECT_THAT(sceneNames(), ElementsAre("Car_Base", "Car_Arm", "Car_Eye"));
}

TEST_F(ToolTree, AToolInLimboEndsOnceWithItsLastRecord)
{
    make("A");
    make("Car");
    scene().hostUndo();
    EXPECT_EQ(TinyTool::alive, 2);
    make("B"); // the redo of Car goes, and Car with it
    EXPECT_EQ(TinyTool::alive, 2);

    remove(*session->tool("A"));
    EXPECT_EQ(TinyTool::alive, 2);
    undo().setLimit(1);
    make("C");
    EXPECT_EQ(TinyTool::alive, 2) << "A went with the record of its deletion";
    EXPECT_THAT(tree(), ElementsAre("B", "C"));
    undo().setLimit(200);
}

TEST_F(ToolTree, ARenamedToolThatEndedLeavesItsRecordHarmless)
{
    make("Car").rename("Bus");
    InstanceReference& group = make("Set", nullptr, "Group");
    remove(make("Wheel", &group));
    session->core().deleteAllInstances();
    EXPECT_EQ(TinyTool::alive, 1) << "the wheel waits in the undo list";
    while (scene().hostUndo())
        ;
    while (scene().hostRedo())
        ;
    undo().clear();
    EXPECT_EQ(TinyTool::alive, 0);
}

TEST_F(ToolTree, DeletingTheRootDeletesWhatIsBelow)
{
    make("Car", &make("Set", nullptr, "Group"));
    remove(session->root());
    EXPECT_THAT(tree(), IsEmpty());
    EXPECT_TRUE(session->root().isAlive());
    make("Bus");
    session->clear();
    EXPECT_THAT(tree(), IsEmpty());
    EXPECT_EQ(TinyTool::alive, 0) << "nor in the undo list";
    EXPECT_EQ(session->root().clone(), nullptr);
}

TEST_F(ToolTree, DeletingTakesWhatHangsOnTheNodesUnlessAToolOwnsIt)
{
    InstanceReference& car = make("Car");
    make("Bus");
    stage::StageNode* const base = scene().find("Car_Base");
    stage::StageNode& body = scene().addEmpty("Body", {}, base);
    scene().addEmpty("Mirror", {}, &body);
    scene().find("Bus_Base")->setParent(base);
    remove(car);
    EXPECT_THAT(sceneNames(), testing::UnorderedElementsAre("Bus_Base", "Bus_Arm", "Bus_Eye"));
    EXPECT_EQ(scene().find("Bus_Base")->parent(), nullptr);
    scene().hostUndo();
    EXPECT_EQ(scene().find("Mirror")->parent(), &body);
    EXPECT_EQ(scene().find("Bus_Base")->parent(), base);
}

TEST_F(ToolTree, DeletingWithoutNodesLeavesThemToTheScene)
{
    InstanceReference& car = make("Car");
    InstanceManager::deleteReference(&car, false);
    EXPECT_THAT(sceneNames(), ElementsAre("Car_Base", "Car_Arm", "Car_Eye"));
    EXPECT_EQ(scene().ownerOf(*scene().find("Car_Base")), nullptr);
    scene().hostUndo();
    EXPECT_EQ(scene().ownerOf(*scene().find("Car_Base")), &car.instance());
}

TEST_F(ToolTree, ARunHoldsItsTools)
{
    InstanceReference& set = make("Set", nullptr, "Group");
    InstanceReference& car = make("Car", &set);
    std::set<std::intptr_t> answers;
    const Status done =
        session->record({.seconds = 0.2, .beforeFrame = [&](double) {
                             answers.insert(InstanceManager::deleteReference(&set, true));
                             answers.insert(car.instance().call(code::deleteTool, nullptr));
                         }});
    ASSERT_TRUE(done) << done.reason();
    EXPECT_THAT(answers, ElementsAre(kAlreadyRunning));
    EXPECT_THAT(tree(), ElementsAre("Set", "Set/Car"));
    EXPECT_EQ(undo().undoNames().back(), "Record");
    EXPECT_EQ(InstanceManager::deleteReference(&set, true), 0);
}

TEST_F(ToolTree, AToolMayAskForItsOwnEnd)
{
    InstanceReference& car = make("Car");
    make("Wheel", &car);
    car.instance().call(code::deleteTool, nullptr);
    EXPECT_THAT(tree(), IsEmpty());
    EXPECT_THAT(sceneNames(), IsEmpty());
    scene().hostUndo();
    EXPECT_THAT(tree(), ElementsAre("Car", "Car/Wheel"));
    std::string above;
    session->tool("Wheel")->instance().call(code::parentName, &above);
    EXPECT_EQ(above, "Car");
    car.instance().call(code::parentName, &above);
    EXPECT_EQ(above, "");
}

TEST_F(ToolTree, AttachCountsThePlaceBeforeTheMove)
{
    InstanceReference& root = session->root();
    for (const char* const name : {"A", "B", "C", "D"})
        make(name);
    struct Case
    {
        const char* tool;
        int index;
        std::vector<std::string> after;
    };
    const Case cases[] = {
        {"A", 2, {"B", "A", "C", "D"}},  {"A", 0, {"A", "B", "C", "D"}},
        {"D", 1, {"A", "D", "B", "C"}},  {"D", 1, {"A", "D", "B", "C"}},
        {"A", -1, {"D", "B", "C", "A"}}, {"D", 99, {"B", "C", "A", "D"}},
    };
    for (const Case& row : cases) {
        root.attach(session->tool(row.tool), row.index);
        EXPECT_EQ(tree(), row.after) << row.tool << " to " << row.index;
    }
    InstanceReference* const b = session->tool("B");
    b->attach(session->tool("C"));
    session->tool("C")->attach(b);
    b->attach(b);
    EXPECT_THAT(tree(), ElementsAre("B", "B/C", "A", "D")) << "no entry goes below itself";
}

TEST_F(ToolTree, AMoveCountsTheOthersAndIsOneStep)
{
    InstanceReference& root = session->root();
    InstanceReference& a = make("A");
    InstanceReference& b = make("B");
    make("C");
    const std::size_t steps = undo().undoNames().size();
    InstanceManager::move(a, root, 1);
    EXPECT_THAT(tree(), ElementsAre("B", "A", "C"));
    InstanceManager::move(b, a, 0);
    EXPECT_THAT(tree(), ElementsAre("A", "A/B", "C"));
    InstanceManager::move(a, b, 0);    // below itself
    InstanceManager::move(a, root, 0); // where it stands
    ASSERT_EQ(undo().undoNames().size(), steps + 2);
    EXPECT_EQ(undo().undoNames().back(), "Move tool");
    scene().hostUndo();
    EXPECT_THAT(tree(), ElementsAre("B", "A", "C"));
    scene().hostUndo();
    EXPECT_THAT(tree(), ElementsAre("A", "B", "C"));
    scene().hostRedo();
    scene().hostRedo();
    EXPECT_THAT(tree(), ElementsAre("A", "A/B", "C"));
}

TEST_F(ToolTree, CloneTakesTheSubtreeAndWhatTheUserLinkedToIt)
{
    InstanceReference& set = make("Set", nullptr, "Group");
    InstanceReference& car = make("Car", &set);
    make("Wheel", &car);
    stage::StageNode& road = scene().addEmpty("Road");
    scene().find("Car_Base")->setParent(&road);
    scene().find("Wheel_Base")->setParent(scene().find("Car_Arm"));
    Matrix4 aside;
    setTranslation(aside, {0, 0, 3});
    stage::StageNode& body = scene().addEmpty("Body", aside, scene().find("Wheel_Base"));
    scene().addEmpty("Mirror", aside, &body);

    InstanceReference* const copy = car.clone();
    ASSERT_NE(copy, nullptr);
    EXPECT_THAT(tree(), ElementsAre("Set", "Set/Car", "Set/Car/Wheel", "Set/Car_01",
                                    "Set/Car_01/Wheel_01"));
    EXPECT_EQ(scene().find("Car_01_Base")->parent(), &road);
    EXPECT_EQ(scene().find("Car_01_Arm")->parent(), scene().find("Car_01_Base"));
    EXPECT_EQ(scene().find("Wheel_01_Base")->parent(), scene().find("Car_01_Arm"))
        << "a link within the copied tree stays within the copy";
    const stage::StageNode* const wheel = scene().find("Wheel_01_Base");
    ASSERT_EQ(wheel->children().size(), 2U);
    const stage::StageNode* const linked = wheel->children().back();
    EXPECT_TRUE(linked->name().starts_with("Body")) << linked->name();
    EXPECT_EQ(linked->local(0.0).m[14], 3.0);
    EXPECT_EQ(linked->children().size(), 1U);

    scene().hostUndo();
    EXPECT_THAT(tree(), ElementsAre("Set", "Set/Car", "Set/Car/Wheel"));
    EXPECT_EQ(sceneNames().size(), 9U);
    EXPECT_EQ(session->core().cloneInstance("Pear"), "");
    EXPECT_EQ(session->core().cloneInstance("Wheel"), "Wheel_01");
}

TEST_F(ToolTree, AnOutputDrivesAnotherToolAndIsFoundAgainAfterUndo)
{
    InstanceReference& car = make("Car");
    InstanceReference& bus = make("Bus");
    unidevice::Property* const push = bus.instance().properties().findProperty("Push");
    ASSERT_EQ(car.instance().controlCount(), 1);
    EXPECT_EQ(car.instance().controlAt(1), nullptr);
    EXPECT_EQ(car.instance().controlAt(-1), nullptr);
    unidevice::Control* const travel = car.instance().controlAt(0);
    push->deadzone = 0.0;
    push->bind(travel);
    util::xml::Element profile;
    bus.instance().writeInputProfile(profile);
    drive(*session, 0.4);
    EXPECT_GT(push->value(), 0.0);

    const unidevice::Driver& driver = *car.instance().driver();
    const int place = driver.deviceIndex(&car.instance());
    const int count = driver.deviceCount();
    remove(car);
    EXPECT_EQ(push->control(), nullptr);
    EXPECT_EQ(push->value(), 0.0);
    EXPECT_EQ(driver.deviceCount(), count - 1) << "nobody polls or detects what is deleted";
    EXPECT_EQ(driver.deviceIndex(&car.instance()), -1);
    scene().hostUndo();
    EXPECT_EQ(driver.deviceIndex(&car.instance()), place);
    EXPECT_EQ(driver.deviceCount(), count);
    EXPECT_EQ(push->control(), travel);

    push->bind(nullptr);
    EXPECT_EQ(bus.instance().loadInputProfile(profile), 0);
    EXPECT_EQ(push->control(), travel);
}

} // namespace tvw::rgs::core
