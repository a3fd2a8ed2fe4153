#include "tests/adaptor/scene/scene_samples.h"

#include <cstring>
#include <tuple>

namespace tvw::rgs::stage {

namespace {

bool sameBits(const Matrix4& a, const Matrix4& b)
{
    return std::memcmp(a.m, b.m, sizeof a.m) == 0;
}
bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

template <class T>
void expectSameKeys(const KeyTrack<T>& a, const KeyTrack<T>& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a.key(i).time, b.key(i).time) << "key " << i;
        EXPECT_TRUE(sameBits(a.key(i).value, b.key(i).value)) << "key " << i;
    }
}

void expectSameNode(const StageNode& a, const StageNode& b)
{
    SCOPED_TRACE(a.name());
    const NodeState& x = a.state();
    const NodeState& y = b.state();
    EXPECT_EQ(x.name, y.name);
    EXPECT_EQ(a.kind(), b.kind());
    EXPECT_EQ(a.parent() ? a.parent()->name() : "", b.parent() ? b.parent()->name() : "");
    EXPECT_TRUE(sameBits(x.local, y.local));
    EXPECT_EQ(x.properties, y.properties);
    EXPECT_EQ(x.color, y.color);
    EXPECT_EQ(x.viewAngle, y.viewAngle);
    EXPECT_TRUE(sameBits(x.fov, y.fov));
    EXPECT_TRUE(sameBits(x.targetDistance, y.targetDistance));
    EXPECT_EQ(std::tie(x.visible, x.selected, x.wireframe, x.alwaysOnTop),
              std::tie(y.visible, y.selected, y.wireframe, y.alwaysOnTop));
    ASSERT_EQ(x.mesh != nullptr, y.mesh != nullptr);
    if (x.mesh) {
        EXPECT_TRUE(x.mesh->mesh() == y.mesh->mesh());
    }
    ASSERT_EQ(x.spline != nullptr, y.spline != nullptr);
    if (x.spline) {
        EXPECT_EQ(x.spline->points(), y.spline->points());
        EXPECT_EQ(x.spline->closed(), y.spline->closed());
    }
    expectSameKeys(a.poseKeys(), b.poseKeys());
    expectSameKeys(a.fovKeys(), b.fovKeys());
    expectSameKeys(a.targetDistanceKeys(), b.targetDistanceKeys());
}

class RoundTrip : public SceneFiles
{
protected:
    /// What the file of `bytes` holds, in `back_`.
    void open(const std::string& bytes)
    {
        Result<SceneData> scene = readScene(put("scene.glb", bytes));
        ASSERT_TRUE(scene) << scene.reason();
        applySettings(back_, scene->settings);
        buildNodes(back_, *scene, true);
    }

    Stage stage_;
    Stage back_;
};

TEST_F(RoundTrip, nothing_of_a_scene_is_lost)
{
    fillScene(stage_);
    open(bytesOf(stage_));
    const std::vector<StageNode*> before = stage_.nodes();
    const std::vector<StageNode*> after = back_.nodes();
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        expectSameNode(*before[i], *after[i]);
    EXPECT_EQ(back_.getTime(), 0.7);
    EXPECT_EQ(back_.range().start, -1.5);
    EXPECT_EQ(back_.range().end, 12.25);
    EXPECT_EQ(back_.getFramesPerSecond(), 30.0);
    EXPECT_TRUE(back_.keyMode());
    EXPECT_EQ(back_.find("Chassis")->mesh(), back_.find("Wheel")->mesh()) << "they share it";
    EXPECT_NE(back_.find("Chassis")->mesh(), back_.find("Textured")->mesh());
    EXPECT_TRUE(bytesOf(back_) == bytesOf(stage_));
}

TEST_F(RoundTrip, odd_content_comes_back)
{
    CMesh unsound;
    unsound.vertex = {{0, 0, 0}};
    unsound.face = {0, 7, 0};
    stage_.addMesh("Unsound", unsound);
    stage_.addMesh("Empty", CMesh());
    stage_.addMesh("None", std::shared_ptr<const StageMesh>());
    Matrix4 projective;
    projective.m[3] = 0.5;
    StageNode& odd = stage_.addEmpty("Projective", projective);
    odd.setLocal(projective, -2.0, true);
    Matrix4 flat;
    flat.m[0] = flat.m[5] = flat.m[10] = 0.0;
    stage_.addEmpty("Flat", flat);
    Matrix4 huge;
    setTranslation(huge, {1e300, -1e300, 5e-324});
    stage_.addEmpty("Huge", huge).setLocal(huge, 1e6, true);
    Matrix4 mirrored;
    mirrored.m[0] = -1.0;
    mirrored.m[12] = -0.0;
    stage_.addEmpty("Mirrored", mirrored);
    open(bytesOf(stage_));
    const std::vector<StageNode*> before = stage_.nodes();
    ASSERT_EQ(before.size(), back_.nodes().size());
    for (std::size_t i = 0; i < before.size(); ++i)
        expectSameNode(*before[i], *back_.nodes()[i]);
}

TEST_F(RoundTrip, an_empty_scene_is_one)
{
    open(bytesOf(stage_));
    EXPECT_TRUE(back_.nodes().empty());
}

TEST_F(RoundTrip, the_record_of_tools_comes_back)
{
    const UnboundTools tools{"<RGT><RGT_Plugin name=\"a \xff\"/></RGT>", {3, -1}};
    const Result<SceneData> scene = readScene(put("scene.glb", bytesOf(stage_, tools)));
    ASSERT_TRUE(scene) << scene.reason();
    EXPECT_EQ(scene->tools, tools.record);
    EXPECT_EQ(scene->toolPlaces, tools.places);
}

} // namespace

} // namespace tvw::rgs::stage
