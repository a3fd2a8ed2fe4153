#include "adaptor/stage/scene_build.h"

#include "adaptor/stage/stage_tags.h"

#include <cstring>
#include <utility>

namespace tvw::rgs::stage {

namespace {

using Meshes = std::vector<std::shared_ptr<const StageMesh>>;

/// Calls f(seconds, value) for each key.
template <class F>
void forEachKey(const KeyData<double>& data, F&& f)
{
    for (const TrackKey<double>& key : data.keys)
        f(toSeconds(key.time), key.value);
    for (std::size_t i = 0; i < data.times.size() / sizeof(Flicks); ++i) {
        Flicks time = 0;
        double value = 0.0;
        std::memcpy(&time, data.times.data() + i * sizeof time, sizeof time);
        std::memcpy(&value, data.values.data() + i * sizeof value, sizeof value);
        f(toSeconds(time), value);
    }
}

void addPoseKeys(const KeyData<Matrix4>& data, StageNode& node)
{
    for (const TrackKey<Matrix4>& key : data.keys)
        node.setLocal(key.value, toSeconds(key.time), true);
    const std::size_t rows = data.doubles / 4;
    const char* from = data.values.data();
    Matrix4 pose;
    for (std::size_t i = 0; i < data.times.size() / sizeof(Flicks); ++i) {
        Flicks time = 0;
        std::memcpy(&time, data.times.data() + i * sizeof time, sizeof time);
        for (std::size_t c = 0; c < 4; ++c, from += rows * sizeof(double))
            std::memcpy(&pose.m[4 * c], from, rows * sizeof(double));
        node.setLocal(pose, toSeconds(time), true);
    }
}

StageNode& addNode(Stage& stage, NodeData& from, StageNode* parent, const Meshes& meshes)
{
    const std::shared_ptr<const StageMesh> mesh = from.mesh == kNone ? nullptr : meshes[from.mesh];
    if (from.kind == NodeKind::Mesh)
        return stage.addMesh(from.name, mesh, from.local, parent);
    StageNode& node =
        from.kind == NodeKind::Camera ? stage.addCamera(from.name, from.fov, from.local, parent)
        : from.kind == NodeKind::Spline
            ? stage.addSpline(from.name, std::move(from.points), from.closed, from.local, parent)
            : stage.addEmpty(from.name, from.local, parent);
    if (mesh)
        node.setMesh(mesh);
    return node;
}

void applyState(const NodeData& from, bool withTags, StageNode& node)
{
    const double now = node.stage().getTime();
    for (const auto& [key, text] : from.properties) {
        if (withTags || key != kTagProperty)
            node.setProperty(key, text);
    }
    node.setVisible(from.visible);
    node.setSelected(from.selected && withTags);
    node.setColor(from.color[0], from.color[1], from.color[2]);
    node.setWireframe(from.wireframe);
    node.setAlwaysOnTop(from.alwaysOnTop);
    node.setViewAngle(from.viewAngle);
    node.setTargetDistance(from.targetDistance, now, false);
    addPoseKeys(from.pose, node);
    forEachKey(from.fovKeys, [&](double time, double value) { node.setFov(value, time, true); });
    forEachKey(from.targetDistanceKeys,
               [&](double time, double value) { node.setTargetDistance(value, time, true); });
}

} // namespace

std::vector<StageNode*> buildNodes(Stage& stage, SceneData& scene, bool withTags)
{
    Meshes meshes;
    for (CMesh& mesh : scene.meshes)
        meshes.push_back(std::make_shared<const StageMesh>(std::move(mesh)));
    std::vector<StageNode*> made;
    made.reserve(scene.nodes.size());
    for (NodeData& from : scene.nodes) {
        StageNode* const parent = from.parent == kNone ? nullptr : made[from.parent];
        StageNode& node = addNode(stage, from, parent, meshes);
        applyState(from, withTags, node);
        made.push_back(&node);
    }
    return made;
}

void applySettings(Stage& stage, const SceneSettings& settings)
{
    if (!settings.known)
        return;
    stage.setFramesPerSecond(settings.framesPerSecond);
    stage.setRange(settings.range);
    stage.setKeyMode(settings.keyMode);
    stage.setTime(settings.time);
}

} // namespace tvw::rgs::stage
