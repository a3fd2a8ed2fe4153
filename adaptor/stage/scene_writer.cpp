#include "adaptor/stage/scene_writer.h"

#include "adaptor/stage/scene_data.h"
#include "util/base64.h"

#include <cmath>

namespace tvw::rgs::stage {

namespace {

/// The part of the picture, in units of half its height, along which an angle is measured.
double reachOf(ViewAngle measured, double aspectRatio)
{
    switch (measured) {
    case ViewAngle::Horizontal:
        return aspectRatio;
    case ViewAngle::Diagonal:
        return std::sqrt(1.0 + aspectRatio * aspectRatio);
    case ViewAngle::Vertical:
        break;
    }
    return 1.0;
}

std::size_t expectedBytes(const Stage& stage)
{
    constexpr std::size_t kPerKey = 160;
    std::size_t keys = 0;
    std::size_t meshes = 0;
    stage.forEachNode([&](const StageNode& node) {
        keys += node.poseKeys().size() + node.fovKeys().size();
        if (node.mesh())
            meshes += 40 * node.mesh()->mesh().vertex.size() + 8 * node.mesh()->mesh().face.size();
    });
    return keys * kPerKey + meshes;
}

Json vectorOf(const Vector3d& v)
{
    return {v.x, v.y, v.z};
}

/// Members that say nothing but the default are left out.
void writeTransform(const PoseValues& pose, Json& out)
{
    if (!(pose.translation == Vector3d{}))
        out["translation"] = vectorOf(pose.translation);
    if (!(pose.rotation == Quatd{}))
        out["rotation"] = {pose.rotation.x, pose.rotation.y, pose.rotation.z, pose.rotation.w};
    if (!(pose.scale == Vector3d{1.0, 1.0, 1.0}))
        out["scale"] = vectorOf(pose.scale);
}

Json pointsOf(const SplineCurve& spline)
{
    Json points = Json::array();
    for (const Vector3d& point : spline.points()) {
        for (const double x : {point.x, point.y, point.z})
            points.push_back(x);
    }
    return points;
}

/// A property that JSON can't hold under its own key stands among ours, in Base64.
bool isPlainProperty(const std::string& key, const std::string& text)
{
    return key != kExtras && isUtf8(key) && isUtf8(text);
}

} // namespace

double verticalAngle(double degrees, ViewAngle measured, double aspectRatio)
{
    const double half = std::tan(degrees * kDegree / 2) / reachOf(measured, aspectRatio);
    return 2 * std::atan(half);
}

double angleOfView(double vertical, ViewAngle measured, double aspectRatio)
{
    return 2 * std::atan(std::tan(vertical / 2) * reachOf(measured, aspectRatio)) / kDegree;
}

SceneWriter::SceneWriter(Stage& stage, const UnboundTools& tools)
    : stage_(stage), tools_(&tools), file_(expectedBytes(stage)), animation_(file_),
      meshes_(file_, true)
{
}

SceneWriter::SceneWriter(Stage& stage, const ExportOptions& options)
    : stage_(stage), tools_(nullptr), options_(options), file_(expectedBytes(stage)),
      animation_(file_), meshes_(file_, false)
{
}

Result<std::string_view> SceneWriter::write()
{
    using Answer = Result<std::string_view>;
    Json scene = Json::object();
    for (const StageNode* node : stage_.topLevel())
        scene["nodes"].push_back(writeNode(*node, 1));
    if (tooDeep_)
        return Answer::failure("nodes are nested deeper than " + std::to_string(kDeepest) +
                               " levels");
    if (tools_)
        scene["extras"][kExtras] = sceneExtras();

    Json& root = file_.root;
    root["asset"] = {{"version", "2.0"}, {"generator", "Rigstage"}};
    root["scene"] = 0;
    root["scenes"] = Json::array({std::move(scene)});
    const auto setList = [&root](const char* name, Json& list) {
        if (!list.empty())
            root[name] = std::move(list);
    };
    setList("nodes", nodes_);
    setList("cameras", cameras_);
    setList("meshes", meshes_.meshes);
    if (Json animation = animation_.take(); !animation.is_null())
        root["animations"] = Json::array({std::move(animation)});
    if (tools_)
        writeExtension();
    std::string_view file;
    if (!file_.finish(file))
        return Answer::failure("the scene is larger than the 4 GiB that a .glb can hold");
    return file;
}

std::size_t SceneWriter::writeNode(const StageNode& node, std::size_t depth)
{
    const std::size_t index = nodes_.size();
    nodes_.push_back(nullptr); // the place is taken before the children's
    matrices_.push_back(node.state().local);
    Json out = {{"name", asUtf8(node.name())}};
    Json exact = {{"matrix", index}};
    writeShape(node, out, exact);
    writePose(node, index, out, exact);
    if (node.hasLens())
        writeLens(node, out, exact);
    if (Json extras = extrasOf(node); !extras.empty())
        out["extras"] = std::move(extras);
    if (tools_)
        out["extensions"][kExtension] = std::move(exact);
    tooDeep_ = tooDeep_ || depth > kDeepest;
    if (!tooDeep_) {
        for (const StageNode* child : node.children())
            out["children"].push_back(writeNode(*child, depth + 1));
    }
    nodes_[index] = std::move(out);
    return index;
}

void SceneWriter::writeShape(const StageNode& node, Json& out, Json& exact)
{
    const bool isToolShape = node.kind() == NodeKind::Helper && stage_.ownerOf(node);
    if (!node.mesh() || (!tools_ && isToolShape))
        return;
    const MeshWriter::Written mesh = meshes_.write(*node.mesh(), node.name());
    if (mesh.plain != kNone)
        out["mesh"] = mesh.plain;
    exact["mesh"] = mesh.exact;
}

void SceneWriter::writePose(const StageNode& node, std::size_t index, Json& out, Json& exact)
{
    if (node.poseKeys().empty()) {
        writeTransform(valuesOf(node.state().local), out);
        return;
    }
    Json accessors = animation_.writeChannels(index, node, options_);
    writeTransform(animation_.firstPose(), out);
    if (tools_) {
        exact["pose"] = animation_.writeExact(node.poseKeys());
        exact["pose"]["accessors"] = std::move(accessors);
    }
}

void SceneWriter::writeLens(const StageNode& node, Json& out, Json& exact)
{
    const KeyTrack<double>& keys = node.fovKeys();
    const double vertical = verticalAngle(node.state().fov, node.state().viewAngle, kAspectRatio);
    out["camera"] = cameras_.size();
    cameras_.push_back(
        {{"type", "perspective"},
         {"name", asUtf8(node.name())},
         {"perspective", {{"aspectRatio", kAspectRatio}, {"yfov", vertical}, {"znear", 0.1}}}});
    if (!tools_)
        return;
    if (!keys.empty())
        exact["fovKeys"] = animation_.writeExact(keys);
    if (!node.targetDistanceKeys().empty())
        exact["targetDistanceKeys"] = animation_.writeExact(node.targetDistanceKeys());
}

Json SceneWriter::extrasOf(const StageNode& node) const
{
    const NodeState& state = node.state();
    Json extras = Json::object();
    if (!tools_) {
        if (!state.visible)
            extras["visible"] = false;
        return extras;
    }
    Json ours = {{"kind", nameOf(node.kind())}};
    const NodeState usual;
    if (!state.visible)
        ours["visible"] = false;
    if (state.selected)
        ours["selected"] = true;
    if (state.wireframe)
        ours["wireframe"] = true;
    if (state.alwaysOnTop)
        ours["alwaysOnTop"] = true;
    if (state.color != usual.color)
        ours["color"] = state.color;
    if (!isUtf8(state.name))
        ours["name"] = base64Encode(state.name);
    if (node.kind() == NodeKind::Spline && state.spline) {
        ours["closed"] = state.spline->closed();
        ours["points"] = pointsOf(*state.spline);
    }
    if (node.hasLens()) {
        ours["viewAngle"] = static_cast<int>(state.viewAngle);
        ours["fov"] = state.fov;
        ours["targetDistance"] = state.targetDistance;
    }
    for (const auto& [key, text] : state.properties) {
        if (isPlainProperty(key, text))
            extras[key] = text;
        else
            ours["properties"].push_back({base64Encode(key), base64Encode(text)});
    }
    extras[kExtras] = std::move(ours);
    return extras;
}

Json SceneWriter::sceneExtras() const
{
    const core::TimeRange range = stage_.range();
    Json ours = {{"time", stage_.getTime()},
                 {"start", range.start},
                 {"end", range.end},
                 {"framesPerSecond", stage_.getFramesPerSecond()},
                 {"keyMode", stage_.keyMode()}};
    if (!tools_->record.empty()) {
        const bool isText = isUtf8(tools_->record);
        ours["tools"] = isText ? tools_->record : base64Encode(tools_->record);
        ours["toolsInBase64"] = !isText;
        ours["toolPlaces"] = tools_->places;
    }
    return ours;
}

/// Last: it knows what the buffer holds.
void SceneWriter::writeExtension()
{
    Json extension = {{"version", kExtensionVersion}};
    if (!matrices_.empty()) {
        file_.beginView();
        file_.append(matrices_);
        extension["matrices"] = file_.endView();
    }
    if (!meshes_.exact.empty())
        extension["meshes"] = std::move(meshes_.exact);
    extension["bytes"] = file_.buffer().size();
    extension["fingerprint"] = hexOf(fingerprintOf(file_.buffer()));
    file_.root["extensions"][kExtension] = std::move(extension);
    file_.root["extensionsUsed"] = Json::array({kExtension});
}

} // namespace tvw::rgs::stage
