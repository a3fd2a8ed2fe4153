#include "adaptor/stage/scene_reader.h"

#include "adaptor/stage/channel_reader.h"
#include "adaptor/stage/extension_reader.h"
#include "adaptor/stage/gltf_file.h"
#include "adaptor/stage/gltf_mesh.h"
#include "adaptor/stage/scene_writer.h"
#include "util/base64.h"
#include "util/file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <map>
#include <utility>

namespace tvw::rgs::stage {

namespace {

/// Texts of XML that JSON can't hold come as Base64; this is the text again.
std::string decoded(const Json& object, const char* key)
{
    return base64Decode(textIn(object, key));
}

PoseValues restOf(const Json& node)
{
    if (node.contains("matrix")) {
        Matrix4 pose;
        const auto numbers = numbersIn<16>(node, "matrix", {});
        std::copy(numbers.begin(), numbers.end(), pose.m);
        return valuesOf(pose);
    }
    const auto t = numbersIn<3>(node, "translation", {});
    const auto q = numbersIn<4>(node, "rotation", {0.0, 0.0, 0.0, 1.0});
    const auto s = numbersIn<3>(node, "scale", {1.0, 1.0, 1.0});
    return {{t[0], t[1], t[2]}, {q[0], q[1], q[2], q[3]}, {s[0], s[1], s[2]}};
}

Matrix4 poseOfNode(const Json& node)
{
    if (!node.contains("matrix"))
        return poseOf(restOf(node));
    Matrix4 pose;
    const auto numbers = numbersIn<16>(node, "matrix", {});
    std::copy(numbers.begin(), numbers.end(), pose.m);
    return pose;
}

/// As the writer would put it: then the node was not moved by another program.
bool isSame(const PoseValues& a, const PoseValues& b)
{
    return a.translation == b.translation && a.rotation == b.rotation && a.scale == b.scale;
}

bool isNear(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * std::max(1.0, std::abs(b));
}

class SceneReader
{
public:
    explicit SceneReader(const GltfFile& file) : file_(file), channels_(file), exact_(file) {}

    SceneData read()
    {
        refuseUnknownExtensions();
        readTree();
        readSettings();
        return std::move(scene_);
    }

private:
    struct Open
    {
        std::size_t node;
        std::size_t parent;
        std::size_t depth;
    };

    void refuseUnknownExtensions() const
    {
        for (const Json& name : listIn(file_.root(), "extensionsRequired")) {
            if (name != kExtension && name != "KHR_mesh_quantization")
                throw FileFault{"it needs the extension " + name.dump() + ", which can't be read"};
        }
    }

    std::vector<std::size_t> roots() const;
    void readTree();
    void readNode(const Json& json, std::size_t index, std::size_t parent);
    void readPose(const Json& json, std::size_t index, NodeData& out);
    void readMesh(const Json& json, NodeData& out);
    void readCamera(const Json& json, NodeData& out) const;
    void readExtras(const Json& json, NodeData& out) const;
    static void readFlags(const Json& ours, NodeData& out);
    void readSettings();

    const GltfFile& file_;
    ChannelReader channels_;
    ExtensionReader exact_;
    SceneData scene_;
    std::map<std::pair<bool, std::size_t>, std::size_t> meshes_; ///< by (exact, index in its list)
};

/// Where a scene names nodes these, else the nodes that are nobody's children.
std::vector<std::size_t> SceneReader::roots() const
{
    const Json& root = file_.root();
    const std::size_t count = listIn(root, "nodes").size();
    const Json& scenes = listIn(root, "scenes");
    std::vector<std::size_t> out;
    if (!scenes.empty()) {
        const std::size_t scene = indexIn(root, "scene", scenes.size());
        const Json& list = listIn(scenes[scene == kNone ? 0 : scene], "nodes");
        for (const Json& node : list)
            out.push_back(indexOf(node, "a node", count));
        return out;
    }
    std::vector<char> isChild(count, 0);
    for (const Json& node : listIn(root, "nodes")) {
        for (const Json& child : listIn(node, "children"))
            isChild[indexOf(child, "a node", count)] = 1;
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (isChild[i] == 0)
            out.push_back(i);
    }
    return out;
}

void SceneReader::readTree()
{
    const Json& list = listIn(file_.root(), "nodes");
    std::vector<char> seen(list.size(), 0);
    std::vector<Open> open;
    const std::vector<std::size_t> top = roots();
    for (auto root = top.rbegin(); root != top.rend(); ++root)
        open.push_back({*root, kNone, 1});
    while (!open.empty()) {
        const Open next = open.back();
        open.pop_back();
        if (seen[next.node]++ != 0)
            throw FileFault{"a node stands below two others, or below itself"};
        if (next.depth > kDeepest)
            throw FileFault{"its nodes are nested deeper than " + std::to_string(kDeepest) +
                            " levels"};
        const Json& json = list[next.node];
        const std::size_t place = scene_.nodes.size();
        readNode(json, next.node, next.parent);
        const Json& children = listIn(json, "children");
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            open.push_back(
                {indexOf(*child, "a node", list.size()), place, next.depth + 1});
    }
}

void SceneReader::readNode(const Json& json, std::size_t index, std::size_t parent)
{
    if (!json.is_object())
        throw FileFault{"node " + std::to_string(index) + " is no object"};
    NodeData node;
    node.parent = parent;
    node.name = textIn(json, "name");
    readMesh(json, node);
    if (node.mesh != kNone)
        node.kind = NodeKind::Mesh;
    readExtras(json, node);
    if (json.contains("camera"))
        readCamera(json, node);
    readPose(json, index, node);
    scene_.nodes.push_back(std::move(node));
}

void SceneReader::readPose(const Json& json, std::size_t index, NodeData& out)
{
    const PoseValues rest = restOf(json);
    const std::vector<std::size_t> channels = channels_.accessorsOf(index);
    Matrix4 exact;
    const bool hasExact = exact_.isUsable() && exact_.readMatrix(json, exact);
    out.local = poseOfNode(json);
    if (hasExact && (!channels.empty() || isSame(valuesOf(exact), rest)))
        out.local = exact;
    if (channels.empty() || (exact_.isUsable() && exact_.readPose(json, channels, out.pose)))
        return;
    out.pose.keys = channels_.keysOf(index, rest);
}

void SceneReader::readMesh(const Json& json, NodeData& out)
{
    const std::size_t plain = indexIn(json, "mesh", listIn(file_.root(), "meshes").size());
    const std::size_t exact = exact_.isUsable() ? exact_.meshOf(json) : kNone;
    if (plain == kNone && exact == kNone)
        return;
    const auto key = exact != kNone ? std::pair(true, exact) : std::pair(false, plain);
    const auto [known, isNew] = meshes_.try_emplace(key, scene_.meshes.size());
    out.mesh = known->second;
    if (!isNew)
        return;
    scene_.meshes.emplace_back();
    if (exact == kNone || !exact_.readMesh(exact, scene_.meshes.back()))
        scene_.meshes.back() = readGltfMesh(file_, plain);
}

void SceneReader::readCamera(const Json& json, NodeData& out) const
{
    const Json& cameras = listIn(file_.root(), "cameras");
    const Json& lens = objectIn(cameras[indexIn(json, "camera", cameras.size())], "perspective");
    out.kind = NodeKind::Camera;
    if (exact_.isUsable())
        exact_.readLens(json, out.fovKeys, out.targetDistanceKeys);
    if (lens.empty())
        return;
    const double vertical =
        numberIn(lens, "yfov", verticalAngle(45.0, ViewAngle::Horizontal, kAspectRatio));
    const double aspectRatio = numberIn(lens, "aspectRatio", kAspectRatio);
    if (!(vertical > 0.0) || !(vertical < 180.0 * kDegree) || !(aspectRatio > 0.0))
        throw FileFault{"a camera has an impossible angle of view"};
    // An angle of our own that another program has left as it was is exact.
    if (!isNear(verticalAngle(out.fov, out.viewAngle, kAspectRatio), vertical))
        out.fov = angleOfView(vertical, out.viewAngle, aspectRatio);
}

void SceneReader::readExtras(const Json& json, NodeData& out) const
{
    if (!json.contains("extras") || !json["extras"].is_object())
        return;
    const Json& extras = json["extras"];
    for (const auto& [key, value] : extras.items()) {
        if (value.is_string() && key != kExtras)
            out.properties[key] = value.get<std::string>();
    }
    const Json& ours = objectIn(extras, kExtras);
    constexpr NodeKind kKinds[] = {NodeKind::Helper, NodeKind::Mesh, NodeKind::Camera,
                                   NodeKind::Spline};
    const std::string kind = textIn(ours, "kind");
    for (const NodeKind known : kKinds) {
        if (kind == nameOf(known))
            out.kind = known;
    }
    // A name that was changed elsewhere stays so.
    if (const std::string name = decoded(ours, "name"); !name.empty() && asUtf8(name) == out.name)
        out.name = name;
    readFlags(ours, out);
    for (const Json& pair : listIn(ours, "properties")) {
        if (!pair.is_array() || pair.size() != 2 || !pair[0].is_string() || !pair[1].is_string())
            throw FileFault{"a user property is no pair of texts"};
        out.properties[base64Decode(pair[0].get<std::string>())] =
            base64Decode(pair[1].get<std::string>());
    }
}

void SceneReader::readFlags(const Json& ours, NodeData& out)
{
    out.visible = flagIn(ours, "visible", true);
    out.selected = flagIn(ours, "selected", false);
    out.wireframe = flagIn(ours, "wireframe", false);
    out.alwaysOnTop = flagIn(ours, "alwaysOnTop", false);
    const auto color = numbersIn<3>(ours, "color", {out.color[0], out.color[1], out.color[2]});
    for (std::size_t i = 0; i < 3; ++i)
        out.color[i] = toFloat(color[i]);
    if (const std::size_t measured = indexIn(ours, "viewAngle", 3); measured != kNone)
        out.viewAngle = static_cast<ViewAngle>(measured);
    out.fov = numberIn(ours, "fov", out.fov);
    out.targetDistance = numberIn(ours, "targetDistance", out.targetDistance);
    out.closed = flagIn(ours, "closed", false);
    const Json& points = listIn(ours, "points");
    if (points.size() % 3 != 0)
        throw FileFault{"a spline's points are no triples"};
    for (std::size_t i = 0; i < points.size(); i += 3)
        out.points.push_back({finiteNumber(points[i], "points"),
                              finiteNumber(points[i + 1], "points"),
                              finiteNumber(points[i + 2], "points")});
}

void SceneReader::readSettings()
{
    const Json& scenes = listIn(file_.root(), "scenes");
    if (scenes.empty())
        return;
    const std::size_t index = indexIn(file_.root(), "scene", scenes.size());
    const Json& scene = scenes[index == kNone ? 0 : index];
    if (!scene.is_object() || !scene.contains("extras") || !scene["extras"].is_object())
        return;
    const Json& ours = objectIn(scene["extras"], kExtras);
    SceneSettings& out = scene_.settings;
    if (ours.empty())
        return;
    out.known = true;
    out.time = numberIn(ours, "time", out.time);
    out.range = {numberIn(ours, "start", out.range.start), numberIn(ours, "end", out.range.end)};
    out.framesPerSecond = numberIn(ours, "framesPerSecond", out.framesPerSecond);
    out.keyMode = flagIn(ours, "keyMode", false);
    if (out.range.end < out.range.start || !(out.framesPerSecond > 0.0))
        throw FileFault{"its time range or frame rate is impossible"};
    scene_.tools =
        flagIn(ours, "toolsInBase64", false) ? decoded(ours, "tools") : textIn(ours, "tools");
    for (const Json& place : listIn(ours, "toolPlaces")) {
        if (!place.is_number_integer())
            throw FileFault{"a tool's place is no number"};
        scene_.toolPlaces.push_back(place.get<int>());
    }
}

} // namespace

Result<SceneData> readScene(const std::string& path)
{
    using Answer = Result<SceneData>;
    std::error_code error;
    if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error))
        return Answer::failure("cannot open " + path + ": it is no file");
    Result<std::string> bytes = readFile(path);
    if (!bytes)
        return Answer::failure(bytes.reason());
    const std::size_t slash = path.rfind('/');
    try {
        GltfFile file(*std::move(bytes),
                      slash == std::string::npos ? "" : path.substr(0, slash + 1));
        SceneData scene = SceneReader(file).read();
        scene.bytes = file.takeBytes();
        return scene;
    } catch (const FileFault& fault) {
        return Answer::failure("cannot read " + path + ": " + fault.reason);
    } catch (const Json::exception&) {
        return Answer::failure("cannot read " + path + ": its JSON is not as glTF has it");
    }
}

} // namespace tvw::rgs::stage
