/// What other programs find in our files, and what comes back from them.
#include "adaptor/stage/scene_file.h"
#include "tests/adaptor/scene/scene_samples.h"

#include <nlohmann/json.hpp>

#include <cstring>
#include <functional>
#include <tiny_gltf.h>

namespace tvw::rgs::stage {

namespace {

/// A file as tinygltf reads it.
class Peer
{
public:
    explicit Peer(const std::string& path)
    {
        tinygltf::TinyGLTF loader;
        std::string error;
        std::string warning;
        EXPECT_TRUE(loader.LoadBinaryFromFile(&model, &error, &warning, path)) << error;
        EXPECT_EQ(error + warning, "");
    }

    /// The floats of a channel's input or output; none without such a channel.
    [[nodiscard]] std::vector<float> channel(const std::string& node, const std::string& path,
                                             bool input) const
    {
        for (const tinygltf::AnimationChannel& c : model.animations.at(0).channels) {
            if (model.nodes.at(c.target_node).name != node || c.target_path != path)
                continue;
            const tinygltf::AnimationSampler& sampler = model.animations[0].samplers.at(c.sampler);
            return floats(model.accessors.at(input ? sampler.input : sampler.output));
        }
        return {};
    }

    [[nodiscard]] const tinygltf::Node* node(const std::string& name) const
    {
        for (const tinygltf::Node& candidate : model.nodes) {
            if (candidate.name == name)
                return &candidate;
        }
        return nullptr;
    }

    [[nodiscard]] std::vector<float> floats(const tinygltf::Accessor& accessor) const
    {
        const tinygltf::BufferView& view = model.bufferViews.at(accessor.bufferView);
        std::vector<float> out(accessor.count * tinygltf::GetNumComponentsInType(accessor.type));
        std::memcpy(out.data(), model.buffers.at(view.buffer).data.data() + view.byteOffset,
                    out.size() * sizeof(float));
        return out;
    }

    tinygltf::Model model;
};

/// The JSON of a .glb changed, its binary part kept.
std::string withJson(const std::string& glb, const std::function<void(nlohmann::json&)>& change)
{
    const auto wordAt = [&](std::size_t at) {
        std::uint32_t word = 0;
        std::memcpy(&word, glb.data() + at, 4);
        return word;
    };
    const auto asBytes = [](std::size_t value) {
        const auto word = static_cast<std::uint32_t>(value);
        return std::string(reinterpret_cast<const char*>(&word), 4);
    };
    nlohmann::json json = nlohmann::json::parse(glb.substr(20, wordAt(12)));
    change(json);
    std::string text = json.dump();
    text.append((4 - text.size() % 4) % 4, ' ');
    const std::string rest = glb.substr(20 + wordAt(12));
    return glb.substr(0, 8) + asBytes(20 + text.size() + rest.size()) + asBytes(text.size()) +
           glb.substr(16, 4) + text + rest;
}

void dropExtension(nlohmann::json& json)
{
    json.erase("extensions");
    json.erase("extensionsUsed");
    for (nlohmann::json& node : json["nodes"])
        node.erase("extensions");
}

class Interchange : public SceneFiles
{
protected:
    Stage& opened(const std::string& bytes)
    {
        Result<SceneData> scene = readScene(put("scene.glb", bytes));
        EXPECT_TRUE(scene) << scene.reason();
        if (scene)
            buildNodes(back_, *scene, true);
        return back_;
    }

    Stage stage_;
    Stage back_;
};

TEST_F(Interchange, other_programs_find_nodes_and_keys)
{
    StageNode& parent = stage_.addMesh("Body", CMesh_Box(2, 4, 6));
    StageNode& camera = stage_.addCamera("Eye", 90.0, {}, &parent);
    for (int i = 0; i < 5; ++i) {
        Matrix4 pose = rotationMatrix(90.0 * i, 0.0, 1.0, 0.0);
        setTranslation(pose, {1.0 * i, 0.5, -2.0});
        parent.setLocal(pose, i * 0.5, true);
    }
    const Peer peer(put("body.glb", bytesOf(stage_)));
    EXPECT_EQ(peer.channel("Body", "translation", true),
              (std::vector<float>{0.0F, 0.5F, 1.0F, 1.5F, 2.0F}));
    EXPECT_EQ(
        peer.channel("Body", "translation", false),
        (std::vector<float>{0, 0.5F, -2, 1, 0.5F, -2, 2, 0.5F, -2, 3, 0.5F, -2, 4, 0.5F, -2}));
    const std::vector<float> turns = peer.channel("Body", "rotation", false);
    ASSERT_EQ(turns.size(), 20U); // half angles of 0, 90 .. 360 degrees, never jumping to -q
    const float half = std::sqrt(0.5F);
    const float expected[] = {0, 0, 0, 1,    0, half,  0, half, 0, 1,
                              0, 0, 0, half, 0, -half, 0, 0,    0, -1};
    for (std::size_t i = 0; i < 20; ++i)
        EXPECT_NEAR(turns[i], expected[i], 1e-6F) << i;
    EXPECT_TRUE(peer.channel("Body", "scale", true).empty()); // it never changes
    ASSERT_EQ(peer.model.cameras.size(), 1U);
    // tan(45 deg) = 1 at the picture's side, so 9 / 16 at its top.
    EXPECT_NEAR(peer.model.cameras[0].perspective.yfov, 2 * std::atan(9.0 / 16.0), 1e-12);
    EXPECT_EQ(peer.node("Body")->children.size(), 1U);
    EXPECT_EQ(peer.model.accessors.at(0).count, 8U); // the corners of the box
    EXPECT_EQ(camera.parent(), &parent);
}

TEST_F(Interchange, times_that_gltf_has_not_are_left_out)
{
    StageNode& node = stage_.addEmpty("Early");
    for (const double time : {-1.0, 1.0, 1.0 + 2e-9, 2.0}) { // a float can't tell two of them apart
        Matrix4 pose;
        setTranslation(pose, {time, 0, 0});
        node.setLocal(pose, time, true);
    }
    const Peer peer(put("early.glb", bytesOf(stage_)));
    EXPECT_EQ(peer.channel("Early", "translation", true), (std::vector<float>{0, 1, 2}));
    EXPECT_EQ(peer.channel("Early", "translation", false),
              (std::vector<float>{0, 0, 0, 1, 0, 0, 2, 0, 0}));
}

TEST_F(Interchange, without_the_extension_only_precision_is_lost)
{
    fillScene(stage_);
    Stage& back = opened(withJson(bytesOf(stage_), dropExtension));
    const std::vector<StageNode*> before = stage_.nodes();
    ASSERT_EQ(back.nodes().size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        const StageNode& a = *before[i];
        const StageNode& b = *back.nodes()[i];
        SCOPED_TRACE(a.name());
        EXPECT_EQ(a.name(), b.name());
        EXPECT_EQ(a.kind(), b.kind());
        EXPECT_EQ(a.state().properties, b.state().properties);
        EXPECT_EQ(a.state().visible, b.state().visible);
        EXPECT_EQ(a.mesh() != nullptr, b.mesh() != nullptr);
        for (const double time : {0.0, 0.5, 0.51, 1.3}) {
            const Matrix4 x = a.world(time);
            const Matrix4 y = b.world(time);
            for (int k = 0; k < 16; ++k)
                EXPECT_NEAR(x[k], y[k], 2e-5) << "time " << time << " element " << k;
        }
    }
    EXPECT_EQ(back.find("Path")->spline()->points(), stage_.find("Path")->spline()->points());
    const CMesh& textured = back.find("Textured")->mesh()->mesh();
    EXPECT_EQ(textured.numFaces(), 2U);
    EXPECT_NEAR(textured.texcoord[2].y, 1.0, 1e-6); // our lower left is glTF's upper left and back
    EXPECT_EQ(back.find("Chassis")->poseKeys().key(1).time, toFlicks(1 / 30.0)); // a whole frame
}

TEST_F(Interchange, what_another_program_has_changed_counts)
{
    fillScene(stage_);
    Stage& back = opened(withJson(bytesOf(stage_), [](nlohmann::json& json) {
        for (nlohmann::json& node : json["nodes"]) {
            if (node["name"] == "Path")
                node["translation"] = {7.0, 8.0, 9.0};
            if (node["name"] == "Wheel")
                node["name"] = "Rad";
        }
        json["cameras"][0]["perspective"]["yfov"] = 0.5;
    }));
    EXPECT_EQ(translationOf(back.find("Path")->local(0.0)), (Vector3d{7, 8, 9}));
    ASSERT_TRUE(back.find("Rad"));
    EXPECT_TRUE(back.find("Chassis")->local(0.4) == stage_.find("Chassis")->local(0.4));
    const double diagonal = 2 * std::atan(std::tan(0.25) * std::hypot(16.0, 9.0) / 9.0);
    EXPECT_NEAR(back.find("Camera")->state().fov, diagonal * 180.0 / 3.141592653589793, 1e-9);
}

TEST_F(Interchange, steps_and_cubics_of_others_are_read)
{
    // Two keys, at 0 s and 1 s, x from 0 to 2; the cubic leaves with 6 per second, arrives with 0.
    const auto file = [](const char* mode, const std::vector<float>& values) {
        std::vector<float> all{0.0F, 1.0F};
        all.insert(all.end(), values.begin(), values.end());
        const std::string bytes(reinterpret_cast<const char*>(all.data()), all.size() * 4);
        nlohmann::json json = nlohmann::json::parse(R"({"asset":{"version":"2.0"},
            "nodes":[{"name":"Mover"}],"animations":[{"channels":[{"sampler":0,
            "target":{"node":0,"path":"translation"}}],"samplers":[{"input":0,"output":1}]}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":2,"type":"SCALAR"},
                         {"bufferView":0,"byteOffset":8,"componentType":5126,"type":"VEC3"}],
            "bufferViews":[{"buffer":0}],"buffers":[{"uri":"b.bin"}]})");
        json["animations"][0]["samplers"][0]["interpolation"] = mode;
        json["accessors"][1]["count"] = values.size() / 3;
        json["bufferViews"][0]["byteLength"] = bytes.size();
        json["buffers"][0]["byteLength"] = bytes.size();
        return std::pair(json.dump(), bytes);
    };
    const auto xAt = [&](const char* mode, const std::vector<float>& values, double time) {
        const auto [json, bytes] = file(mode, values);
        put("b.bin", bytes);
        Stage target;
        const auto made = importFile(target, put("mover.gltf", json));
        EXPECT_TRUE(made) << made.reason();
        return made ? translationOf((*made)[0]->local(time)).x : -1.0;
    };
    const std::vector<float> plain{0, 0, 0, 2, 0, 0};
    EXPECT_NEAR(xAt("LINEAR", plain, 0.25), 0.5, 1e-12);
    EXPECT_NEAR(xAt("STEP", plain, 0.99), 0.0, 1e-12);
    EXPECT_NEAR(xAt("STEP", plain, 1.0), 2.0, 1e-12);
    // Hermite at 1/2: 2 / 2 + 6 / 8.
    const std::vector<float> cubic{0, 0, 0, 0, 0, 0, 6, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0};
    EXPECT_NEAR(xAt("CUBICSPLINE", cubic, 0.5), 1.75, 1e-12);
}

TEST_F(Interchange, an_export_holds_nothing_of_ours)
{
    fillScene(stage_);
    const std::string path = pathOf("export.glb");
    const Status done = exportScene(stage_, path);
    ASSERT_TRUE(done) << done.reason();
    const Peer peer(path);
    EXPECT_TRUE(peer.model.extensionsUsed.empty());
    EXPECT_FALSE(peer.node("Chassis")->extras.IsObject());
    EXPECT_EQ(peer.node("Wheel")->extras.Keys(), std::vector<std::string>{"visible"});
    EXPECT_EQ(peer.channel("Chassis", "translation", true).size(), 40U);
}

/// A second of rest, a second of even motion, a quarter of a circle in 90 keys.
TEST_F(Interchange, thinned_curves_stay_within_the_tolerance)
{
    StageNode& node = stage_.addEmpty("Runner");
    for (int i = 0; i < 300; ++i) {
        const double t = i / 100.0;
        Matrix4 pose = rotationMatrix(t < 2.0 ? 0.0 : 90.0 * (t - 2.0) * (t - 2.0), 0.0, 1.0, 0.0);
        setTranslation(pose, t < 1.0   ? Vector3d{0, 0, 0}
                             : t < 2.0 ? Vector3d{t - 1.0, 0, 0}
                                       : Vector3d{1.0, std::sin(t - 2.0), 0});
        node.setLocal(pose, t, true);
    }
    const ExportOptions options{0.01, 0.5};
    ASSERT_TRUE(exportScene(stage_, pathOf("thin.glb"), options));
    const Peer peer(pathOf("thin.glb"));
    EXPECT_LT(peer.channel("Runner", "translation", true).size(), 15U);
    EXPECT_LT(peer.channel("Runner", "rotation", true).size(), 15U);
    Stage target;
    const auto made = importFile(target, pathOf("thin.glb"));
    ASSERT_TRUE(made) << made.reason();
    for (int i = 0; i < 300; ++i) {
        const Matrix4 a = node.local(i / 100.0);
        const Matrix4 b = (*made)[0]->local(i / 100.0);
        EXPECT_LE(length(translationOf(a) - translationOf(b)), 0.01 + 1e-6) << i;
        const Vector3d off = toRotationVector(multiply(conjugate(toQuat(a)), toQuat(b)));
        EXPECT_LE(length(off) * 180.0 / 3.141592653589793, 0.5 + 1e-4) << i;
    }
}

TEST_F(Interchange, meshes_of_other_formats_come_in_as_one_step)
{
    const char* const kObj = "o Roof\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n";
    const char* const kStl = "solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                             "vertex 0 1 0\nendloop\nendfacet\nendsolid s\n";
    const char* const kPly = "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\n"
                             "property float y\nproperty float z\nelement face 1\n"
                             "property list uchar int vertex_indices\nend_header\n"
                             "0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n";
    struct Case
    {
        const char *file, *text;
        std::size_t triangles, points;
    };
    for (const Case& c : {Case{"roof.obj", kObj, 2, 4}, Case{"part.STL", kStl, 1, 3},
                          Case{"scan.ply", kPly, 1, 3}}) {
        SCOPED_TRACE(c.file);
        Stage target;
        const auto made = importFile(target, put(c.file, c.text));
        ASSERT_TRUE(made) << made.reason();
        std::size_t triangles = 0;
        std::size_t points = 0;
        for (const StageNode* node : *made) {
            triangles += node->mesh() ? node->mesh()->mesh().numFaces() : 0;
            points += node->mesh() ? node->mesh()->mesh().numVertexes() : 0;
        }
        EXPECT_EQ(triangles, c.triangles);
        EXPECT_EQ(points, c.points);
        EXPECT_EQ(target.undoStack().undoNames(), std::vector<std::string>{"Import"});
        EXPECT_TRUE(target.hostUndo());
        EXPECT_TRUE(target.nodes().empty());
    }
    Stage target;
    const std::string counts = put("big.ply", "ply\nformat ascii 1.0\nelement vertex 4000000000\n"
                                              "property float x\nend_header\n1\n");
    EXPECT_FALSE(importFile(target, counts)) << "or the memory is gone";
}

TEST_F(Interchange, a_scene_imported_twice_keeps_its_keys_and_gets_names_of_its_own)
{
    fillScene(stage_);
    const std::string path = put("again.glb", bytesOf(stage_));
    const auto made = importFile(stage_, path);
    ASSERT_TRUE(made) << made.reason();
    EXPECT_EQ((*made)[0]->name(), "Chassis001");
    EXPECT_TRUE((*made)[0]->local(0.61) == stage_.find("Chassis")->local(0.61));
    EXPECT_EQ((*made)[1]->parent(), (*made)[0]);
}

} // namespace

} // namespace tvw::rgs::stage
