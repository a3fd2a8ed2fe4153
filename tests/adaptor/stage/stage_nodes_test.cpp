#include "tests/adaptor/stage/fake_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace tvw::rgs::stage {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> namesOf(const std::vector<StageNode*>& nodes)
{
    std::vector<std::string> names;
    for (const StageNode* node : nodes)
        names.push_back(node->name());
    return names;
}

void expectNear(const Matrix4& got, const Matrix4& expected)
{
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(got[i], expected[i], 1e-12) << "element " << i;
}

/// One change in a bracket, then undo and redo.
template <class Change>
void inBracket(Stage& stage, Change&& change)
{
    stage.beginUndo("Step");
    change();
    stage.endUndo();
}

TEST(StageNodes, NamesAreUniqueAndFound)
{
    Stage stage;
    EXPECT_EQ(stage.addEmpty("Box").name(), "Box");
    EXPECT_EQ(stage.addEmpty("Box").name(), "Box001");
    StageNode& third = stage.addEmpty("Box");
    EXPECT_EQ(third.name(), "Box002");
    EXPECT_EQ(stage.addEmpty("").name(), "Node");
    EXPECT_EQ(stage.addEmpty(std::string(1023, 'a') + "\xC3\xA4").name(), std::string(1023, 'a'))
        << "a letter of two bytes is not cut in two";
    third.rename("Box");
    EXPECT_NE(third.name(), "Box");
    third.rename("Crate");
    EXPECT_EQ(stage.find("Crate"), &third);
    EXPECT_EQ(stage.find("Box002"), nullptr);
    stage.remove(third);
    EXPECT_EQ(stage.find("Crate"), nullptr);
}

TEST(StageNodes, WorldPosesFollowTheHierarchy)
{
    Stage stage;
    StageNode& top = stage.addEmpty("top", at(1, 0, 0));
    StageNode& middle = stage.addEmpty("middle", rotationMatrix(90, 0, 1, 0), &top);
    StageNode& low = stage.addEmpty("low", at(0, 0, 2), &middle);
    // A quarter turn about Y takes +Z to +X.
    expectNear(low.world(0), at(1, 0, 0) * rotationMatrix(90, 0, 1, 0) * at(0, 0, 2));
    EXPECT_NEAR(translationOf(low.world(0)).x, 3.0, 1e-12);

    top.setLocal(at(5, 0, 0), 0, false);
    EXPECT_NEAR(translationOf(low.world(0)).x, 7.0, 1e-12) << "a change above is seen below";
    EXPECT_NEAR(translationOf(low.world(1)).x, 7.0, 1e-12) << "at any time";
    low.setWorld(at(0, 4, 0), 0, false);
    expectNear(low.world(0), at(0, 4, 0));
    expectNear(low.local(0), inverse(middle.world(0)) * at(0, 4, 0));
}

TEST(StageNodes, WorldPosesOfTwoTimesDoNotMix)
{
    Stage stage;
    StageNode& top = stage.addEmpty("top");
    StageNode& low = stage.addEmpty("low", at(0, 1, 0), &top);
    for (int frame = 0; frame < 5; ++frame)
        top.setLocal(at(frame, 0, 0), frame * 0.04, true);
    for (int round = 0; round < 3; ++round) {
        for (int frame = 4; frame >= 0; --frame) {
            EXPECT_EQ(low.world(frame * 0.04), at(frame, 1, 0));
            EXPECT_NEAR(translationOf(low.world(frame * 0.04 + 0.02)).x,
                        frame < 4 ? frame + 0.5 : 4.0, 1e-7);
        }
        top.setLocal(at(2, 0, 0), 0.08, true);
    }
}

TEST(StageNodes, AWriteWithNoKeyShowsUntilTheTimeMoves)
{
    Stage stage;
    StageNode& node = stage.addEmpty("node");
    node.setLocal(at(1, 0, 0), 7.0, false);
    EXPECT_EQ(node.world(0.0), at(1, 0, 0)) << "without keys the pose is for all times";
    node.setLocal(at(2, 0, 0), 1.0, true);
    EXPECT_EQ(node.world(0.0), at(2, 0, 0)) << "one key holds everywhere";
    StageNode& child = stage.addEmpty("child", at(0, 1, 0), &node);
    EXPECT_EQ(child.world(1.0), at(2, 1, 0));
    node.setLocal(at(9, 0, 0), 1.0, false);
    EXPECT_EQ(child.world(1.0), at(9, 1, 0));
    EXPECT_EQ(child.world(0.5), at(2, 1, 0)) << "elsewhere the key holds";
    stage.setTime(3.0);
    EXPECT_EQ(child.world(1.0), at(2, 1, 0));
    EXPECT_THAT(node.poseKeyTimes(), ElementsAre(1.0));
}

TEST(StageNodes, BadPosesAreRefused)
{
    Stage stage;
    StageNode& node = stage.addCamera("camera", 60.0, at(1, 2, 3));
    Matrix4 bad;
    bad[5] = std::nan("");
    EXPECT_FALSE(node.setLocal(bad, 0, true));
    EXPECT_FALSE(node.setWorld(bad, 0, false));
    EXPECT_FALSE(node.setFov(std::nan(""), 0, false));
    EXPECT_EQ(node.local(0), at(1, 2, 3));
    EXPECT_EQ(node.fov(0), 60.0);
    EXPECT_THAT(node.poseKeyTimes(), IsEmpty());
    EXPECT_FALSE(stage.addEmpty("helper").setFov(30, 0, false)) << "no lens";
}

TEST(StageNodes, ANewParentKeepsTheWorldPoseAndCarriesTheKeys)
{
    Stage stage;
    StageNode& parent = stage.addEmpty("parent", at(0, 0, 10) * rotationMatrix(30, 0, 1, 0));
    StageNode& node = stage.addEmpty("node");
    for (int i = 0; i < 4; ++i)
        node.setLocal(at(i, 0, 0), i, true);
    stage.setTime(2.0);
    inBracket(stage, [&] { EXPECT_TRUE(node.setParent(&parent)); });
    for (int i = 0; i < 4; ++i)
        expectNear(node.world(i), at(i, 0, 0));
    EXPECT_FALSE(parent.setParent(&node)) << "a ring";
    EXPECT_FALSE(parent.setParent(&parent));
    EXPECT_TRUE(stage.hostUndo());
    EXPECT_EQ(node.parent(), nullptr);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(node.local(i), at(i, 0, 0)) << "bit for bit";
    EXPECT_TRUE(stage.hostRedo());
    EXPECT_EQ(node.parent(), &parent);
    expectNear(node.world(3), at(3, 0, 0));
}

TEST(StageNodes, EveryChangeInABracketIsUndone)
{
    Stage stage;
    StageNode& parent = stage.addEmpty("parent");
    StageNode& camera = stage.addCamera("camera", 45.0, at(1, 0, 0));
    StageNode& spline = stage.addSpline("spline", {{0, 0, 0}, {1, 0, 0}});
    struct Case
    {
        const char* name;
        std::function<void()> change;
        std::function<bool()> changed;
    };
    const Case kCases[] = {
        {"pose", [&] { camera.setLocal(at(2, 0, 0), 0, false); },
         [&] { return camera.local(0) == at(2, 0, 0); }},
        {"key", [&] { camera.setLocal(at(3, 0, 0), 1, true); },
         [&] { return camera.poseKeys().size() == 1; }},
        {"name", [&] { camera.rename("renamed"); },
         [&] { return stage.find("renamed") == &camera && !stage.find("camera"); }},
        {"parent", [&] { camera.setParent(&parent); },
         [&] { return camera.parent() == &parent && parent.children().size() == 1; }},
        {"visibility", [&] { camera.setVisible(false); }, [&] { return !camera.state().visible; }},
        {"selection", [&] { stage.select(camera, false); },
         [&] { return stage.selection() == std::vector{&camera}; }},
        {"colour", [&] { camera.setColor(1, 0, 0); },
         [&] {
             return camera.state().color == std::array{1.0F, 0.0F, 0.0F};
         }},
        {"wireframe", [&] { camera.setWireframe(true); }, [&] { return camera.state().wireframe; }},
        {"on top", [&] { camera.setAlwaysOnTop(true); },
         [&] { return camera.state().alwaysOnTop; }},
        {"property", [&] { camera.setProperty("note", "text"); },
         [&] { return camera.property("note") == "text"; }},
        {"lens", [&] { camera.setFov(70, 0, false); }, [&] { return camera.fov(0) == 70.0; }},
        {"lens key", [&] { camera.setTargetDistance(3, 2, true); },
         [&] { return camera.targetDistanceKeys().size() == 1; }},
        {"kind of angle", [&] { camera.setViewAngle(ViewAngle::Vertical); },
         [&] { return camera.state().viewAngle == ViewAngle::Vertical; }},
        {"mesh", [&] { camera.setMesh(tests::square(1.0)); },
         [&] { return camera.mesh() != nullptr; }},
        {"curve",
         [&] {
             spline.setSpline({{0, 0, 0}, {5, 0, 0}}, false);
         },
         [&] { return std::abs(spline.spline()->length() - 5.0) < 1e-9; }},
        {"creation", [&] { stage.addEmpty("made"); },
         [&] { return stage.find("made") != nullptr; }},
        {"removal", [&] { stage.remove(spline); }, [&] { return stage.find("spline") == nullptr; }},
        {"range",
         [&] {
             stage.setRange({1, 99});
         },
         [&] { return stage.range().end == 99; }},
        {"frame rate", [&] { stage.setFramesPerSecond(50); },
         [&] { return stage.getFramesPerSecond() == 50; }},
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        ASSERT_FALSE(c.changed());
        inBracket(stage, c.change);
        EXPECT_TRUE(c.changed());
        EXPECT_TRUE(stage.hostUndo());
        EXPECT_FALSE(c.changed());
        EXPECT_TRUE(stage.hostRedo());
        EXPECT_TRUE(c.changed());
        EXPECT_TRUE(stage.hostUndo());
        stage.beginUndo("Cancelled");
        c.change();
        stage.cancelUndo();
        EXPECT_FALSE(c.changed());
        EXPECT_THAT(stage.undoStack().undoNames(), IsEmpty());
    }
    camera.setVisible(false);
    EXPECT_FALSE(stage.hostUndo()) << "with no bracket a change is simply done";
}

TEST(StageNodes, SeveralChangesOfOneNodeAreOneStep)
{
    Stage stage;
    StageNode& a = stage.addEmpty("a");
    StageNode& b = stage.addEmpty("b");
    inBracket(stage, [&] {
        a.rename("c");
        b.rename("a");
        a.rename("b");
        for (int i = 0; i < 100; ++i)
            a.setLocal(at(i, 0, 0), i, true);
        a.deleteKeysBehind(50);
        a.setVisible(false);
        a.setVisible(true);
        a.setLocal(at(7, 7, 7), 0, false);
    });
    EXPECT_EQ(stage.find("a"), &b);
    EXPECT_EQ(a.poseKeys().size(), 51U) << "the key at the time itself stands";
    stage.hostUndo();
    EXPECT_EQ(stage.find("a"), &a);
    EXPECT_EQ(stage.find("b"), &b);
    EXPECT_EQ(stage.find("c"), nullptr);
    EXPECT_TRUE(a.poseKeys().empty());
    stage.hostRedo();
    EXPECT_EQ(stage.find("b"), &a);
    EXPECT_EQ(stage.find("a"), &b);
    EXPECT_EQ(a.poseKeys().size(), 51U);
}

TEST(StageNodes, AfterTheListWasDroppedAnOpenBracketRecordsAnew)
{
    Stage stage;
    StageNode& node = stage.addEmpty("node");
    inBracket(stage, [&] {
        node.setLocal(at(1, 0, 0), 1, true);
        node.setVisible(false);
        stage.undoStack().clear();
        node.setLocal(at(2, 0, 0), 2, true);
        node.setVisible(true);
    });
    EXPECT_TRUE(stage.hostUndo());
    EXPECT_THAT(node.poseKeyTimes(), ElementsAre(1.0));
    EXPECT_FALSE(node.state().visible);
}

TEST(StageNodes, RemovalMovesChildrenUpAndComesBackWhole)
{
    Stage stage;
    stage.addEmpty("first");
    StageNode& node = stage.addEmpty("node", at(0, 5, 0));
    StageNode& child = stage.addEmpty("child", at(1, 0, 0), &node);
    stage.addEmpty("last");
    for (int i = 0; i < 3; ++i)
        node.setLocal(at(0, 5 + i, 0), i, true);
    node.setSelected(true);
    inBracket(stage, [&] { stage.remove({&node}); });
    EXPECT_THAT(namesOf(stage.nodes()), ElementsAre("first", "last", "child"));
    EXPECT_EQ(child.world(0), at(1, 5, 0));
    EXPECT_THAT(stage.selection(), IsEmpty());
    EXPECT_FALSE(node.setLocal(at(0, 0, 0), 0, true)) << "a removed node takes no writes";
    stage.hostUndo();
    EXPECT_THAT(namesOf(stage.nodes()), ElementsAre("first", "node", "child", "last"));
    EXPECT_EQ(child.local(0), at(1, 0, 0));
    EXPECT_EQ(node.poseKeys().size(), 3U);
    EXPECT_THAT(namesOf(stage.selection()), ElementsAre("node"));
    stage.hostRedo();
    EXPECT_THAT(namesOf(stage.nodes()), ElementsAre("first", "last", "child"));
    stage.undoStack().clear();
    EXPECT_TRUE(node.poseKeys().empty()) << "what can't come back keeps no takes";
}

TEST(StageNodes, ANameThatWasTakenMeanwhileIsMadeUniqueAgain)
{
    Stage stage;
    StageNode& node = stage.addEmpty("node");
    inBracket(stage, [&] { stage.remove(node); });
    StageNode& other = stage.addEmpty("node");
    stage.hostUndo();
    EXPECT_EQ(stage.find("node"), &other);
    EXPECT_EQ(node.name(), "node001");
    EXPECT_EQ(stage.find("node001"), &node);
}

TEST(StageNodes, ACopyHasItsOwnKeys)
{
    Stage stage;
    StageNode& node = stage.addMesh("node", tests::square(1.0));
    StageNode& child = stage.addEmpty("child", at(1, 0, 0), &node);
    node.setLocal(at(3, 0, 0), 1, true);
    StageNode& copy = stage.duplicate(node, true);
    EXPECT_EQ(copy.name(), "node001");
    ASSERT_EQ(copy.children().size(), 1U);
    EXPECT_EQ(copy.children()[0]->world(1), child.world(1));
    EXPECT_EQ(copy.mesh(), node.mesh()) << "the mesh is shared";
    copy.setLocal(at(9, 0, 0), 1, true);
    copy.setLocal(at(9, 0, 0), 2, true);
    EXPECT_EQ(node.world(2), at(3, 0, 0));
    EXPECT_EQ(node.poseKeys().size(), 1U);
}

class Told final : public StageListener
{
public:
    void timeChanged(double time) override
    {
        events.push_back("time " + std::to_string(int(time)));
    }
    void sceneClosing() override { events.push_back("closing"); }
    void sceneOpened() override { events.push_back("opened"); }
    void beforeSave() override { events.push_back("before save"); }
    void afterSave() override { events.push_back("after save"); }
    void nodesAboutToBeDeleted(const std::vector<StageNode*>& nodes) override
    {
        for (const StageNode* node : nodes)
            events.push_back("delete " + node->name() + (node->isPresent() ? "" : " too late"));
    }
    std::vector<std::string> events;
};

TEST(StageNodes, ListenersHearWhatHappens)
{
    Stage stage;
    Told told;
    stage.addListener(told);
    StageNode& node = stage.addEmpty("node");
    stage.setTime(3);
    stage.remove(node);
    stage.remove(node);
    stage.tellBeforeSave();
    stage.tellAfterSave();
    stage.clear();
    stage.tellSceneOpened();
    stage.removeListener(told);
    stage.setTime(4);
    EXPECT_THAT(told.events, ElementsAre("time 3", "delete node", "before save", "after save",
                                         "closing", "opened"));
}

} // namespace
} // namespace tvw::rgs::stage
