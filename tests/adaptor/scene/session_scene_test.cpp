/// Scenes with tools: what a take leaves is there again after save and open.
#include "adaptor/stage/scene_file.h"
#include "tests/runs/run_fixture.h"
#include "tests/support/temporary_folder.h"
#include "util/file.h"

namespace tvw::rgs::tests {

namespace {

class SessionScene : public RunTest
{
protected:
    void SetUp() override
    {
        open(30.0);
        core::Instance& tool = create("Sinusoid");
        set(tool, "Amplitude", 2.0);
        set(tool, "Angular Frequency", 3.0);
        bindAxis(tool, "Spinner: Amplitude", 0);
        record(2.0, [this](double t) { pad->set("Axis", 0, wobble(t)); });
        name_ = tool.name();
    }

    void save()
    {
        const Status done = stage::saveScene(*session, path_);
        ASSERT_TRUE(done) << done.reason();
    }
    void reopen()
    {
        session->clear();
        ASSERT_FALSE(session->tool(name_));
        const Status done = stage::openScene(*session, path_);
        ASSERT_TRUE(done) << done.reason();
        ASSERT_TRUE(session->tool(name_));
    }
    core::Instance& tool() { return session->tool(name_)->instance(); }

    TemporaryFolder folder_;
    const std::string path_ = folder_.path() + "/scene.glb";
    std::string name_;
};

TEST_F(SessionScene, saving_leaves_no_tags_and_the_same_bytes_each_time)
{
    const auto expectNoTags = [&] {
        for (const stage::StageNode* const each : session->stage().nodes())
            EXPECT_EQ(each->property("RGT_tag"), "");
    };
    EXPECT_FALSE(stage::saveScene(*session, "/no/such/folder/scene.glb"));
    expectNoTags();
    save();
    const std::string first = *readFile(path_);
    expectNoTags();
    save();
    EXPECT_TRUE(*readFile(path_) == first);
    reopen();
    EXPECT_TRUE(session->messages().empty());
    EXPECT_TRUE(session->stage().undoStack().undoNames().empty());
    EXPECT_GT(node(tool(), "SinusNode").poseKeys().size(), 50U) << "its own node, no new one";
    save();
    EXPECT_TRUE(*readFile(path_) == first);
}

TEST_F(SessionScene, a_bad_file_leaves_scene_tools_and_undo_as_they_are)
{
    const auto take = allKeys();
    const auto undo = session->stage().undoStack().undoNames();
    ASSERT_TRUE(writeFileAtomically(path_, "glTF"));
    const Status done = stage::openScene(*session, path_);
    ASSERT_FALSE(done);
    EXPECT_NE(done.reason().find(path_), std::string::npos);
    EXPECT_EQ(allKeys(), take);
    EXPECT_TRUE(session->tool(name_));
    EXPECT_EQ(session->stage().undoStack().undoNames(), undo);
}

TEST_F(SessionScene, tools_keep_their_places_with_and_without_nodes)
{
    auto* const before = *session->create("Group", "Lights");
    session->root().attach(before, 0);
    (void)*session->create("Group", "Props");
    (void)*session->create("Sinusoid", "Inside", before);
    const auto names = [&] {
        std::vector<std::string> all;
        session->root().forEach([&](core::InstanceReference& each) {
            all.push_back(core::parentToolName(&each) + "/" + each.getText());
        });
        return all;
    };
    const auto tree = names();
    save();
    reopen();
    EXPECT_EQ(names(), tree);
}

TEST_F(SessionScene, an_export_keeps_the_motion_and_leaves_out_helper_shapes)
{
    const stage::StageNode& mover = node(tool(), "SinusNode");
    const auto take = keysOf(mover);
    ASSERT_TRUE(stage::exportScene(session->stage(), path_));
    stage::Stage other;
    const auto made = stage::importFile(other, path_);
    ASSERT_TRUE(made) << made.reason();
    const stage::StageNode* const moved = other.find(mover.name());
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->poseKeys().size(), take.times.size());
    EXPECT_TRUE(mover.mesh());
    EXPECT_FALSE(moved->mesh());
}

} // namespace

} // namespace tvw::rgs::tests
