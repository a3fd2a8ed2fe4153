#include "adaptor/stage/mesh_import.h"

#include "adaptor/stage/pose_samples.h"
#include "adaptor/stage/scene_writer.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace tvw::rgs::stage {

namespace {

Matrix4 matrixOf(const aiMatrix4x4& from)
{
    Matrix4 out; // Assimp's elements stand row by row
    for (unsigned r = 0; r < 4; ++r) {
        for (unsigned c = 0; c < 4; ++c)
            out.at(static_cast<int>(r), static_cast<int>(c)) = double{from[r][c]};
    }
    return out;
}

Vector3d vectorOf(const aiVector3D& v)
{
    return {double{v.x}, double{v.y}, double{v.z}};
}

bool isFinite(const Matrix4& m)
{
    return std::all_of(std::begin(m.m), std::end(m.m), [](double x) { return std::isfinite(x); });
}

/// The value of keys at a time, linear or by `mix(a, b, f)` between them; `count` is not 0.
template <class Key, class Mix>
auto valueAt(const Key* keys, unsigned count, double time, const Mix& mix)
{
    const Key* const next =
        std::partition_point(keys, keys + count, [&](const Key& key) { return key.mTime < time; });
    if (next == keys)
        return keys[0].mValue;
    if (next == keys + count)
        return keys[count - 1].mValue;
    const double f = (time - next[-1].mTime) / (next->mTime - next[-1].mTime);
    return mix(next[-1].mValue, next->mValue, static_cast<ai_real>(f));
}

aiVector3D mixVectors(const aiVector3D& a, const aiVector3D& b, ai_real f)
{
    return a + (b - a) * f;
}

aiQuaternion mixTurns(const aiQuaternion& a, const aiQuaternion& b, ai_real f)
{
    aiQuaternion out;
    aiQuaternion::Interpolate(out, a, b, f);
    return out;
}

std::vector<double> timesOf(const aiNodeAnim& channel)
{
    std::vector<double> times;
    const auto add = [&](const auto* keys, unsigned count) {
        for (unsigned i = 0; i < count; ++i) {
            if (std::isfinite(keys[i].mTime))
                times.push_back(keys[i].mTime);
        }
    };
    add(channel.mPositionKeys, channel.mNumPositionKeys);
    add(channel.mRotationKeys, channel.mNumRotationKeys);
    add(channel.mScalingKeys, channel.mNumScalingKeys);
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

PoseValues poseAt(const aiNodeAnim& channel, double ticks, PoseValues pose)
{
    if (channel.mNumPositionKeys != 0)
        pose.translation =
            vectorOf(valueAt(channel.mPositionKeys, channel.mNumPositionKeys, ticks, mixVectors));
    if (channel.mNumScalingKeys != 0)
        pose.scale =
            vectorOf(valueAt(channel.mScalingKeys, channel.mNumScalingKeys, ticks, mixVectors));
    if (channel.mNumRotationKeys != 0) {
        const aiQuaternion q =
            valueAt(channel.mRotationKeys, channel.mNumRotationKeys, ticks, mixTurns);
        pose.rotation = {double{q.x}, double{q.y}, double{q.z}, double{q.w}};
    }
    return pose;
}

class AssimpReader
{
public:
    explicit AssimpReader(const aiScene& from) : from_(from) {}

    SceneData read()
    {
        for (unsigned i = 0; i < from_.mNumMeshes; ++i)
            addMesh(*from_.mMeshes[i]);
        const aiNode& root = *from_.mRootNode;
        // The root is the file's own frame: where it says nothing its children stand at the top.
        if (root.mNumMeshes == 0 && root.mTransformation.IsIdentity() && root.mNumChildren != 0) {
            for (unsigned i = 0; i < root.mNumChildren; ++i)
                addNode(*root.mChildren[i], kNone, 1);
        } else {
            addNode(root, kNone, 1);
        }
        addCameras();
        addKeys();
        return std::move(scene_);
    }

private:
    void addMesh(const aiMesh& from)
    {
        CMesh mesh;
        for (unsigned i = 0; i < from.mNumVertices; ++i)
            mesh.vertex.push_back(vectorOf(from.mVertices[i]));
        for (unsigned i = 0; from.HasTextureCoords(0) && i < from.mNumVertices; ++i)
            mesh.texcoord.push_back(vectorOf(from.mTextureCoords[0][i]));
        for (unsigned i = 0; i < from.mNumFaces; ++i) {
            if (from.mFaces[i].mNumIndices != 3)
                continue;
            for (unsigned k = 0; k < 3; ++k)
                mesh.face.push_back(static_cast<std::int32_t>(from.mFaces[i].mIndices[k]));
        }
        if (!mesh.texcoord.empty())
            mesh.tface = mesh.face;
        scene_.meshes.push_back(std::move(mesh));
    }

    void addNode(const aiNode& from, std::size_t parent, std::size_t depth)
    {
        if (depth > kDeepest)
            return;
        NodeData node;
        node.name = from.mName.C_Str();
        node.parent = parent;
        node.local = matrixOf(from.mTransformation);
        if (!isFinite(node.local))
            node.local = {};
        if (from.mNumMeshes != 0) {
            node.kind = NodeKind::Mesh;
            node.mesh = from.mMeshes[0];
        }
        const std::size_t index = scene_.nodes.size();
        byName_.try_emplace(node.name, index);
        scene_.nodes.push_back(std::move(node));
        for (unsigned i = 1; i < from.mNumMeshes; ++i) { // one mesh for each of its materials
            NodeData part;
            part.name = from.mName.C_Str();
            part.parent = index;
            part.kind = NodeKind::Mesh;
            part.mesh = from.mMeshes[i];
            scene_.nodes.push_back(std::move(part));
        }
        for (unsigned i = 0; i < from.mNumChildren; ++i)
            addNode(*from.mChildren[i], index, depth + 1);
    }

    void addCameras()
    {
        for (unsigned i = 0; i < from_.mNumCameras; ++i) {
            const aiCamera& camera = *from_.mCameras[i];
            const auto found = byName_.find(camera.mName.C_Str());
            const double degrees = double{camera.mHorizontalFOV} / kDegree; // the whole angle
            if (found == byName_.end() || !(degrees > 0.0) || !(degrees < 180.0))
                continue;
            NodeData& node = scene_.nodes[found->second];
            node.kind = NodeKind::Camera;
            node.fov = degrees;
        }
    }

    void addKeys()
    {
        for (unsigned i = 0; i < from_.mNumAnimations; ++i) {
            const aiAnimation& animation = *from_.mAnimations[i];
            const double perSecond =
                animation.mTicksPerSecond > 0.0 ? animation.mTicksPerSecond : 25.0;
            for (unsigned k = 0; k < animation.mNumChannels; ++k)
                addChannel(*animation.mChannels[k], perSecond);
        }
    }

    void addChannel(const aiNodeAnim& channel, double ticksPerSecond)
    {
        const auto found = byName_.find(channel.mNodeName.C_Str());
        if (found == byName_.end() || !scene_.nodes[found->second].pose.empty())
            return;
        NodeData& node = scene_.nodes[found->second];
        const PoseValues rest = valuesOf(node.local);
        for (const double ticks : timesOf(channel)) {
            const Matrix4 pose = poseOf(poseAt(channel, ticks, rest));
            if (isFinite(pose))
                node.pose.keys.push_back({toFlicks(ticks / ticksPerSecond), pose});
        }
    }

    const aiScene& from_;
    SceneData scene_;
    std::map<std::string, std::size_t> byName_;
};

} // namespace

namespace {

/// Assimp takes a .ply header's counts at their word, memory and minutes alike. An element that has
/// a property takes a byte at least.
bool holdsItsCounts(const std::string& path, double fileSize)
{
    std::ifstream file(path, std::ios::binary);
    char begin[3] = {};
    file.read(begin, sizeof begin);
    if (std::string_view(begin, sizeof begin) != "ply")
        return true;
    std::string line;
    double elements = 0.0;
    while (std::getline(file, line) && line.substr(0, 10) != "end_header") {
        if (line.substr(0, 8) == "element ")
            elements += std::abs(std::atof(line.c_str() + line.find_last_of(' ')));
    }
    return elements <= fileSize;
}

} // namespace

Result<SceneData> readWithAssimp(const std::string& path)
{
    using Answer = Result<SceneData>;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return Answer::failure("cannot open " + path + ": " +
                               (error ? error.message() : "it is no file"));
    if (!holdsItsCounts(path, static_cast<double>(std::filesystem::file_size(path, error))))
        return Answer::failure("cannot read " + path + ": its header counts more than it holds");
    Assimp::Importer importer;
    constexpr unsigned kSteps = aiProcess_Triangulate | aiProcess_JoinIdenticalVertices |
                                aiProcess_ValidateDataStructure | aiProcess_SortByPType;
    const aiScene* const scene = importer.ReadFile(path, kSteps);
    if (!scene || !scene->mRootNode)
        return Answer::failure("cannot read " + path + ": " + importer.GetErrorString());
    return AssimpReader(*scene).read();
}

} // namespace tvw::rgs::stage
