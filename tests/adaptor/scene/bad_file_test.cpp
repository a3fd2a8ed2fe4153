#include "adaptor/stage/scene_file.h"
#include "tests/adaptor/scene/scene_samples.h"

#include <fstream>

namespace tvw::rgs::stage {

namespace {

class BadFiles : public SceneFiles
{
protected:
    void expectRefused(const std::string& path, const std::string& reason)
    {
        const Result<std::vector<StageNode*>> made = importFile(stage_, path);
        ASSERT_FALSE(made);
        EXPECT_NE(made.reason().find(path), std::string::npos) << made.reason();
        EXPECT_NE(made.reason().find(reason), std::string::npos) << made.reason();
        EXPECT_TRUE(stage_.nodes().empty());
        EXPECT_TRUE(stage_.undoStack().undoNames().empty());
    }

    Stage stage_;
};

TEST_F(BadFiles, what_is_no_readable_file_is_refused)
{
    expectRefused(pathOf("missing.glb"), "No such file");
    expectRefused(pathOf("missing.obj"), "No such file");
    std::filesystem::create_directory(pathOf("folder.glb"));
    expectRefused(pathOf("folder.glb"), "no file");
    std::filesystem::create_directory(pathOf("folder.obj"));
    expectRefused(pathOf("folder.obj"), "no file");
    expectRefused(put("empty.glb", ""), "empty");
    expectRefused(put("text.glb", "solid cube"), "JSON");
    expectRefused(put("text.obj", ""), "text.obj");
}

/// A mesh of what the accessors say, and all that a file has ahead of it.
const std::string kAsset = R"({"asset":{"version":"2.0"},)";
const std::string kNodes = kAsset + R"("scenes":[{"nodes":[0]}],"nodes":)";
const std::string kBuffer = kAsset + R"("buffers":[{"byteLength":)";
const std::string kMesh = kAsset + R"("nodes":[{"mesh":0}],"meshes":[{"primitives":
    [{"attributes":{"POSITION":0})";

const struct
{
    const char* name;
    std::string json;
    const char* reason;
} kCases[] = {
    {"another version", R"({"asset":{"version":"1.0"}})", "version 1.0"},
    {"no asset", R"({"nodes":[]})", "no glTF"},
    {"a node below itself", kNodes + R"([{"children":[1]},{"children":[0]}]})", "below itself"},
    {"a node below two", kAsset + R"("scenes":[{"nodes":[0,1]}],
        "nodes":[{"children":[2]},{"children":[2]},{}]})",
     "below two"},
    {"a child that is none", kNodes + R"([{"children":[7]}]})", "out of range"},
    {"a negative index", kAsset + R"("scenes":[{"nodes":[-1]}],"nodes":[{}]})", "out of range"},
    {"a list that is a text", kAsset + R"("nodes":"all"})", "no list"},
    {"a name that is a number", kAsset + R"("nodes":[{"name":7}]})", "no text"},
    {"a number too large", kAsset + R"("nodes":[{"translation":[1e999,0,0]}]})", "JSON"},
    {"two numbers of three", kAsset + R"("nodes":[{"translation":[1,0]}]})", "2 numbers"},
    {"an extension that we lack",
     kAsset + R"("extensionsRequired":["KHR_draco_mesh_compression"]})",
     "KHR_draco_mesh_compression"},
    {"a buffer that is too short", kBuffer + R"(9,"uri":"data:;base64,AAAA"}]})", "shorter"},
    {"a buffer elsewhere", kBuffer + R"(9,"uri":"/dev/zero"}]})", "elsewhere"},
    {"a buffer that is a folder", kBuffer + R"(9,"uri":".."}]})", "no file"},
    {"a view that leaves its buffer", kMesh + R"(}]}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":1,"type":"VEC3"}],
        "bufferViews":[{"buffer":0,"byteOffset":4294967290,"byteLength":12}],
        "buffers":[{"byteLength":3,"uri":"data:;base64,AAAA"}]})",
     "leaves its buffer"},
    {"a count beyond its view", kMesh + R"(}]}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":4294967290,"type":"VEC3"}],
        "bufferViews":[{"buffer":0,"byteLength":12}],
        "buffers":[{"byteLength":12,"uri":"data:;base64,AAAAAAAAAAAAAAAA"}]})",
     "leaves its buffer view"},
    {"a corner that is no point", kMesh + R"(,"indices":1}]}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":1,"type":"VEC3"},
                     {"bufferView":0,"componentType":5121,"count":3,"type":"SCALAR"}],
        "bufferViews":[{"buffer":0,"byteLength":12}],
        "buffers":[{"byteLength":12,"uri":"data:;base64,AQAAAAAAAAAAAAAA"}]})",
     "corner"},
    {"what is no number", kMesh + R"(}]}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":1,"type":"VEC3"}],
        "bufferViews":[{"buffer":0,"byteLength":12}],
        "buffers":[{"byteLength":12,"uri":"data:;base64,//////////////8A"}]})",
     "no number"},
    {"a camera that sees nothing", kAsset + R"("nodes":[{"camera":0}],
        "cameras":[{"type":"perspective","perspective":{"yfov":-1,"znear":1}}]})",
     "angle of view"},
};

TEST_F(BadFiles, unsound_content_is_refused_with_its_reason)
{
    for (const auto& bad : kCases) {
        SCOPED_TRACE(bad.name);
        expectRefused(put("bad.gltf", bad.json), bad.reason);
    }
}

TEST_F(BadFiles, nesting_is_bounded)
{
    std::string json = R"({"asset":{"version":"2.0"},"scenes":[{"nodes":[0]}],"nodes":[)";
    for (int i = 1; i < 100000; ++i)
        json += "{\"children\":[" + std::to_string(i) + "]},";
    expectRefused(put("deep.gltf", json + "{}]}"), "nested deeper");
    expectRefused(put("brackets.gltf", std::string(1000000, '[')), "JSON");
    expectRefused(put("closed.gltf", std::string(500000, '[') + std::string(500000, ']')),
                  "no glTF");
}

/// Many meshes that refer to one large list would fill the memory with copies of it.
TEST_F(BadFiles, the_same_bytes_are_not_decoded_without_end)
{
    constexpr std::size_t kPoints = 20000;
    std::string json =
        R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":240000,"uri":"b.bin"}],
        "bufferViews":[{"buffer":0,"byteLength":240000}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":20000,"type":"VEC3"}],"meshes":[)";
    std::string nodes;
    for (int i = 0; i < 10000; ++i) {
        json += std::string(i ? "," : "") + R"({"primitives":[{"attributes":{"POSITION":0}}]})";
        nodes += (i ? ",{\"mesh\":" : "{\"mesh\":") + std::to_string(i) + "}";
    }
    put("b.bin", std::string(kPoints * 12, '\0'));
    expectRefused(put("many.gltf", json + "],\"nodes\":[" + nodes + "]}"), "too many times");
}

TEST_F(BadFiles, a_file_cut_off_anywhere_is_refused)
{
    Stage scene;
    fillScene(scene);
    const std::string bytes = bytesOf(scene);
    for (std::size_t length = 0; length < bytes.size(); length += length < 64 ? 1 : 997) {
        SCOPED_TRACE(length);
        expectRefused(put("cut.glb", bytes.substr(0, length)), "");
    }
}

/// Whatever the bit does, the reader ends with a scene or a reason.
TEST_F(BadFiles, any_flipped_bit_is_survived)
{
    Stage scene;
    fillScene(scene);
    const std::string bytes = bytesOf(scene);
    const std::size_t step = bytes.size() / 1500 + 1;
    std::size_t refused = 0;
    for (std::size_t at = 0; at < bytes.size(); at += step) {
        std::string flipped = bytes;
        flipped[at] = static_cast<char>(flipped[at] ^ (1 << at % 8));
        Stage target;
        std::ofstream(pathOf("flip.glb"), std::ios::binary) << flipped; // no need to reach the disk
        const Result<std::vector<StageNode*>> made = importFile(target, pathOf("flip.glb"));
        refused += made ? 0 : 1;
        if (!made) {
            EXPECT_TRUE(target.nodes().empty()) << at;
        }
    }
    EXPECT_GT(refused, 0U);
}

TEST_F(BadFiles, changed_keys_are_damage_and_not_another_take)
{
    Stage scene;
    fillScene(scene);
    std::string bytes = bytesOf(scene);
    bytes[bytes.size() - 1000] = static_cast<char>(bytes[bytes.size() - 1000] ^ 1);
    expectRefused(put("damaged.glb", bytes), "damaged");
}

} // namespace

} // namespace tvw::rgs::stage
