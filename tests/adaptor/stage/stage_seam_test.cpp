#include "tests/adaptor/stage/counting_new.h"
#include "tests/adaptor/stage/fake_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace tvw::rgs::stage {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StageSeam : public testing::Test, protected ToolStage
{
protected:
    Matrix4 global(core::CoreNode& node, double time)
    {
        CSnapshot* const snapshot = node.getSnapshot(time);
        Matrix4 out;
        snapshot->getGlobal(out);
        node.releaseSnapshot(snapshot);
        return out;
    }
    void setGlobal(core::CoreNode& node, const Matrix4& pose, double time)
    {
        CSnapshot* const snapshot = node.getSnapshot(time);
        snapshot->setGlobal(pose);
        node.releaseSnapshot(snapshot);
    }
    void take(FakeTool& owner, double from, int frames, double x);

    FakeTool tool{"Car"};
    FakeTool other{"Trailer"};
};

TEST_F(StageSeam, NodesAreNamedAfterTheirTool)
{
    NodeHandle& body = helper(tool, "Body");
    EXPECT_EQ(body.getName(), "Car_Body");
    EXPECT_EQ(helper(tool, "Body").getName(), "Car_Body001");
    EXPECT_EQ(stage.findNode(&tool, "Body"), &body) << "the first of that name";
    EXPECT_EQ(stage.findNode(&other, "Body"), nullptr);
    EXPECT_EQ(stage.ownerOf(body.node()), &tool);
}

TEST_F(StageSeam, KindsOfNodesAnswerTheirOwnSnapshots)
{
    const CMesh mesh = tests::square(1.0);
    NodeHandle& plain = helper(tool, "helper");
    auto& ground = *stage.createMeshNode(&tool, "mesh", nullptr, &mesh, nodekind::shape);
    auto& camera = *stage.createMeshNode(&tool, "camera", nullptr, &mesh, nodekind::camera);
    EXPECT_EQ(plain.getMeshSnapshot(0), nullptr);
    EXPECT_EQ(plain.getLensSnapshot(0), nullptr);
    EXPECT_EQ(ground.getLensSnapshot(0), nullptr);
    EXPECT_EQ(ground.getShapeSnapshot(0), nullptr);

    CSnapshot_Mesh* const shape = ground.getMeshSnapshot(0);
    ASSERT_NE(shape, nullptr);
    double distance = 0;
    Vector3d normal;
    EXPECT_TRUE(shape->rayCast({0.2, 3, 0.1}, {0, -1, 0}, &distance, &normal));
    EXPECT_DOUBLE_EQ(distance, 3.0);
    EXPECT_EQ(normal, (Vector3d{0, 1, 0}));
    EXPECT_TRUE(shape->rayCast({0.2, 3, 0.1}, {0, -1, 0}, nullptr, nullptr));
    shape->setMesh(CMesh{});
    EXPECT_FALSE(shape->rayCast({0.2, 3, 0.1}, {0, -1, 0}, nullptr, nullptr));
    ground.releaseMeshSnapshot(shape);

    CSnapshot_Lens* const lens = camera.getLensSnapshot(2.5);
    ASSERT_NE(lens, nullptr);
    EXPECT_EQ(lens->getFieldOfView(), 45.0);
    EXPECT_EQ(lens->getFieldOfViewType(), 0);
    EXPECT_EQ(lens->getTime(), 2.5);
    stage.setKeyMode(true);
    lens->setFieldOfView(30);
    camera.releaseLensSnapshot(lens);
    EXPECT_EQ(static_cast<NodeHandle&>(camera).node().fovKeys().size(), 1U);

    CSnapshot_Helper* const look = plain.getHelperSnapshot();
    look->setMesh(mesh);
    look->setColor(0.25F, 2.0F, -1.0F);
    look->setAlwaysOnTop(true);
    plain.releaseHelperSnapshot(look);
    EXPECT_THAT(plain.node().state().color, ElementsAre(0.25F, 1.0F, 0.0F));
    EXPECT_EQ(plain.node().mesh()->mesh().vertex.size(), 4U);
    EXPECT_EQ(plain.getMeshSnapshot(0), nullptr) << "a helper's shape is no ground";
}

TEST_F(StageSeam, ASplineIsAskedInItsOwnSpace)
{
    StageNode& node = stage.addSpline("path", {{0, 0, 0}, {4, 0, 0}}, false, at(0, 9, 0));
    NodeHandle& helperOnIt = helper(tool, "child");
    helperOnIt.node().setParent(&node);
    CNode* const handle = helperOnIt.getParent();
    auto* const path = dynamic_cast<NodeHandle*>(handle);
    ASSERT_NE(path, nullptr);
    CSnapshot_Shape* const shape = path->getShapeSnapshot(1.0);
    ASSERT_NE(shape, nullptr);
    Vector3d out;
    EXPECT_EQ(shape->curveCount(), 1);
    EXPECT_EQ(shape->selectCurve(7), 0);
    EXPECT_NEAR(shape->curveLength(), 4.0, 1e-12);
    shape->pointAt(out, 0.25);
    EXPECT_NEAR(length(out - Vector3d{1, 0, 0}), 0.0, 1e-9);
    shape->tangentAt(out, 1.0);
    EXPECT_NEAR(length(out - Vector3d{1, 0, 0}), 0.0, 1e-6);
    path->releaseShapeSnapshot(shape);
    helperOnIt.release(handle);
}

TEST_F(StageSeam, TwoOpenSnapshotsAreTwoObjects)
{
    NodeHandle& node = helper(tool, "node");
    CSnapshot* const a = node.getSnapshot(0);
    CSnapshot* const b = node.getSnapshot(1);
    EXPECT_NE(a, b);
    EXPECT_EQ(a->getTime(), 0.0);
    EXPECT_EQ(b->getTime(), 1.0);
    node.releaseSnapshot(a);
    EXPECT_EQ(node.getSnapshot(2), a) << "what was given back is handed out again";
    node.releaseSnapshot(nullptr);
}

TEST_F(StageSeam, CodesOfNodes)
{
    NodeHandle& a = helper(tool, "a");
    NodeHandle& b = helper(tool, "b");
    core::CoreNode* const clone = a.clone(&other, "theirs");
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(a.clone(&other, "again"), nullptr) << "that tool has one";
    for (std::int32_t code : {10, 11, 17, 31, 32, 37})
        EXPECT_TRUE(a.isSupported(code)) << code;
    EXPECT_FALSE(a.isSupported(38));

    EXPECT_EQ(a.call(code::isSameNode, static_cast<CNode*>(clone)), 1);
    EXPECT_EQ(a.call(code::isSameNode, static_cast<CNode*>(&b)), 0);
    EXPECT_EQ(a.call(code::isSameNode, nullptr), 0);

    const std::string name = "Renamed";
    EXPECT_EQ(a.call(code::renameNode, const_cast<std::string*>(&name)), 1);
    EXPECT_EQ(clone->getName(), "Renamed");
    EXPECT_THAT(stage.undoStack().undoNames(), ElementsAre("NODE_SETLABEL"));
    stage.hostUndo();
    EXPECT_EQ(clone->getName(), "Car_a");

    CNode* copy = nullptr;
    EXPECT_EQ(a.call(code::copyNode, &copy), 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(a.call(code::isSameNode, copy), 0);
    EXPECT_EQ(static_cast<NodeHandle*>(copy)->owner(), nullptr);

    EXPECT_TRUE(a.isOwned());
    a.call(code::disown, nullptr);
    EXPECT_FALSE(a.isOwned());
    EXPECT_THAT(nodesOf(&tool), ElementsAre(&a, &b));
}

TEST_F(StageSeam, ASelectionBracketGathers)
{
    NodeHandle& a = helper(tool, "a");
    NodeHandle& b = helper(tool, "b");
    NodeHandle& c = helper(tool, "c");
    c.select();
    EXPECT_EQ(a.call(code::openSelection, nullptr), 1);
    EXPECT_EQ(b.call(code::openSelection, nullptr), 0) << "one at a time";
    a.select();
    b.select();
    EXPECT_EQ(b.call(code::closeSelection, nullptr), 1);
    EXPECT_THAT(stage.selection(), ElementsAre(&a.node(), &b.node()));
    c.select();
    EXPECT_THAT(stage.selection(), ElementsAre(&c.node()));
    EXPECT_TRUE(stage.hostUndo());
    EXPECT_THAT(stage.selection(), ElementsAre(&a.node(), &b.node()));
}

TEST_F(StageSeam, ANodeThatTheUserRemovesStaysTheTools)
{
    NodeHandle& body = helper(tool, "Body");
    stage.remove(body.node());
    EXPECT_TRUE(body.isDeleted());
    EXPECT_THAT(nodesOf(&tool), ElementsAre(&body)) << "listed with its flag set";
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_EQ(stage.findNode(&tool, "Body"), &body);
    body.hide();
    body.select();
    EXPECT_EQ(body.getParent(), nullptr);
}

TEST_F(StageSeam, UndoneCreationAndEndedHandles)
{
    stage.beginUndo("Creating instance");
    NodeHandle& body = helper(tool, "Body");
    stage.endUndo();
    stage.hostUndo();
    EXPECT_TRUE(body.isDeleted());
    EXPECT_THAT(nodesOf(&tool), IsEmpty());
    stage.hostRedo();
    EXPECT_THAT(nodesOf(&tool), ElementsAre(&body));
    body.destroy(); // an undo record still points at it
    EXPECT_THAT(nodesOf(&tool), IsEmpty());
    EXPECT_NE(stage.find("Car_Body"), nullptr) << "the scene node is not the handle's";
    stage.hostUndo();
    stage.hostRedo();
    stage.undoStack().clear();
}

TEST_F(StageSeam, ChildrenAreGivenOutAndTakenBack)
{
    NodeHandle& body = helper(tool, "Body");
    helper(tool, "Wheel", &body);
    stage.addEmpty("dice", {}, &body.node());
    ASSERT_EQ(body.childCount(), 2);
    auto* const wheel = static_cast<core::CoreNode*>(body.getChild(0));
    auto* const dice = static_cast<core::CoreNode*>(body.getChild(1));
    EXPECT_EQ(wheel->owner(), &tool);
    EXPECT_EQ(dice->owner(), nullptr);
    EXPECT_EQ(dice->getName(), "dice");
    EXPECT_EQ(body.getChild(2), nullptr);
    EXPECT_EQ(body.getChild(-1), nullptr);
    EXPECT_EQ(all().size(), 2U) << "such handles are in no list";
    body.release(wheel);
    body.release(dice);
    const std::size_t before = test::allocationCount();
    for (int i = 0; i < 100; ++i)
        body.release(body.getChild(i % 2));
    EXPECT_EQ(test::allocationCount(), before);
    body.release(nullptr);
}

/// A take as the core makes it: each node of the tool moves along x from the frame behind `from`
/// on.
void StageSeam::take(FakeTool& owner, double from, int frames, double x)
{
    stage.beginUndo("Record");
    stage.setTime(from);
    std::vector<CInterface*> running{&owner};
    stage.beginRun(running);
    for (core::CoreNode* node : nodesOf(&owner))
        node->deleteKeysFrom(from);
    for (int frame = 1; frame <= frames; ++frame) {
        const double time = from + frame * 0.04;
        stage.setTime(time);
        for (core::CoreNode* node : nodesOf(&owner))
            setGlobal(*node, at(x + frame, 0, 0), time);
    }
    stage.endRun();
    stage.endUndo();
}

TEST_F(StageSeam, ATakeKeysItsStartAndIsOneStep)
{
    NodeHandle& body = helper(tool, "Body");
    NodeHandle& still = helper(tool, "Frame");
    NodeHandle& foreign = helper(other, "Body");
    still.call(code::disown, nullptr);
    setGlobal(body, at(5, 1, 0), 0);
    stage.setTime(1.0);
    take(tool, 2.0, 50, 100);
    EXPECT_FALSE(stage.keyMode()) << "as before the run";
    EXPECT_EQ(body.node().poseKeys().size(), 51U);
    EXPECT_EQ(global(body, 2.0), at(5, 1, 0)) << "the start pose stands as a key";
    EXPECT_EQ(global(body, 4.0), at(150, 0, 0));
    EXPECT_EQ(still.node().poseKeys().size(), 50U) << "no start key for a node not owned";
    EXPECT_TRUE(foreign.node().poseKeys().empty());

    take(tool, 3.0, 10, 1000); // punch-in over the middle
    EXPECT_EQ(body.node().poseKeys().size(), 1U + 25U + 10U);
    EXPECT_EQ(global(body, 3.0), at(125, 0, 0));
    EXPECT_EQ(global(body, 3.4), at(1010, 0, 0));
    EXPECT_THAT(stage.undoStack().undoNames(), ElementsAre("Record", "Record"));

    stage.hostUndo();
    EXPECT_EQ(stage.getTime(), 3.0) << "the time goes back to the start of the take";
    EXPECT_EQ(body.node().poseKeys().size(), 51U);
    EXPECT_EQ(global(body, 4.0), at(150, 0, 0));
    stage.hostUndo();
    EXPECT_TRUE(body.node().poseKeys().empty());
    EXPECT_EQ(global(body, 4.0), at(5, 1, 0));
    stage.hostRedo();
    stage.hostRedo();
    EXPECT_EQ(global(body, 3.4), at(1010, 0, 0));
}

TEST_F(StageSeam, ALongTakeIsUndoneAtOnce)
{
    NodeHandle& body = helper(tool, "Body");
    take(tool, 0.0, 20'000, 0);
    const auto begin = std::chrono::steady_clock::now();
    stage.hostUndo();
    stage.hostRedo();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(body.node().poseKeys().size(), 20'001U);
    EXPECT_LT(taken.count(), 0.02) << "seconds; a copy of the keys takes as long";
}

TEST_F(StageSeam, TimeScaleRunsOverTheBaseRate)
{
    stage.setFramesPerSecond(30);
    for (std::int32_t n : {2, 4, 1}) {
        stage.setTimeScale(n);
        EXPECT_EQ(stage.hostFramesPerSecond(), 30.0 * n) << "not multiplied up";
        EXPECT_EQ(stage.getFramesPerSecond(), 30.0);
        EXPECT_EQ(stage.getFrameDuration(), 1.0 / 30.0);
    }
}

TEST_F(StageSeam, ClearingAndShutdownLeaveNothingOfTheTools)
{
    NodeHandle& body = helper(tool, "Body");
    take(tool, 0, 5, 0);
    stage.shutdown();
    EXPECT_EQ(stage.ownerOf(body.node()), nullptr);
    EXPECT_FALSE(stage.hostUndo()) << "records may point into tools that are gone";
    EXPECT_NE(stage.find("Car_Body"), nullptr);
    stage.clear();
    EXPECT_EQ(stage.find("Car_Body"), nullptr);
    EXPECT_EQ(helper(tool, "Body").getName(), "Car_Body") << "and can be used again";
}

} // namespace
} // namespace tvw::rgs::stage
