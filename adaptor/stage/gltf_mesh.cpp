#include "adaptor/stage/gltf_mesh.h"

#include "adaptor/stage/scene_data.h"

#include <limits>
#include <numeric>
#include <unordered_map>

namespace tvw::rgs::stage {

namespace {

enum Mode : std::size_t { kTriangles = 4, kStrip = 5, kFan = 6 };

/// Corners of triangles out of a strip or fan (glTF 2.0, section 3.7.2.1).
std::vector<std::uint32_t> asTriangles(std::vector<std::uint32_t> corners, std::size_t mode)
{
    if (mode == kTriangles)
        return corners;
    std::vector<std::uint32_t> out;
    for (std::size_t i = 0; i + 2 < corners.size(); ++i) {
        if (mode == kFan)
            out.insert(out.end(), {corners[i + 1], corners[i + 2], corners[0]});
        else
            out.insert(out.end(), {corners[i], corners[i + 1 + i % 2], corners[i + 2 - i % 2]});
    }
    return out;
}

class MeshReader
{
public:
    explicit MeshReader(const GltfFile& file) : file_(file) {}

    CMesh read(const Json& mesh)
    {
        const std::size_t accessors = listIn(file_.root(), "accessors").size();
        for (const Json& primitive : listIn(mesh, "primitives")) {
            const std::size_t mode = indexIn(primitive, "mode", 7);
            const Json& attributes = objectIn(primitive, "attributes");
            const std::size_t points = indexIn(attributes, "POSITION", accessors);
            if (points == kNone || (mode != kNone && mode < kTriangles))
                continue;
            const Vertices from = verticesOf(points);
            std::vector<std::uint32_t> corners =
                asTriangles(cornersOf(indexIn(primitive, "indices", accessors), from),
                            mode == kNone ? std::size_t{kTriangles} : mode);
            corners.resize(corners.size() / 3 * 3);
            for (const std::uint32_t corner : corners)
                out_.face.push_back(static_cast<std::int32_t>(from.first + corner));
            addTexture(indexIn(attributes, "TEXCOORD_0", accessors), corners, from.count);
        }
        if (out_.tface.size() != out_.face.size()) { // some primitives have none
            out_.tface.clear();
            out_.texcoord.clear();
        }
        return std::move(out_);
    }

private:
    struct Vertices
    {
        std::size_t first, count;
    };

    /// Primitives often share their points, each taking some.
    Vertices verticesOf(std::size_t accessor)
    {
        const auto [known, isNew] = vertices_.try_emplace(accessor, Vertices{});
        if (isNew) {
            const std::vector<double> numbers = file_.numbers(accessor, 3);
            known->second = {out_.vertex.size(), numbers.size() / 3};
            if (out_.vertex.size() + numbers.size() / 3 > std::numeric_limits<std::int32_t>::max())
                throw FileFault{"a mesh has too many points"};
            for (std::size_t i = 0; i < numbers.size(); i += 3)
                out_.vertex.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
        }
        return known->second;
    }

    std::vector<std::uint32_t> cornersOf(std::size_t accessor, const Vertices& from) const
    {
        std::vector<std::uint32_t> corners;
        if (accessor == kNone) {
            file_.spend(from.count, sizeof(std::uint32_t));
            corners.resize(from.count);
            std::iota(corners.begin(), corners.end(), 0U);
        } else {
            corners = file_.indices(accessor);
        }
        for (const std::uint32_t corner : corners) {
            if (corner >= from.count)
                throw FileFault{"a mesh's triangle has a corner that is none of its points"};
        }
        return corners;
    }

    void addTexture(std::size_t accessor, const std::vector<std::uint32_t>& corners,
                    std::size_t points)
    {
        if (accessor == kNone)
            return;
        const std::vector<double> numbers = file_.numbers(accessor, 2);
        if (numbers.size() != 2 * points)
            throw FileFault{"a mesh has another number of texture coordinates than of points"};
        const auto first = static_cast<std::int32_t>(out_.texcoord.size());
        for (std::size_t i = 0; i < numbers.size(); i += 2)
            out_.texcoord.push_back({numbers[i], 1.0 - numbers[i + 1], 0.0});
        for (const std::uint32_t corner : corners)
            out_.tface.push_back(first + static_cast<std::int32_t>(corner));
    }

    const GltfFile& file_;
    CMesh out_;
    std::unordered_map<std::size_t, Vertices> vertices_;
};

} // namespace

CMesh readGltfMesh(const GltfFile& file, std::size_t mesh)
{
    const Json& list = listIn(file.root(), "meshes");
    if (mesh >= list.size())
        throw FileFault{"there is no mesh " + std::to_string(mesh)};
    return MeshReader(file).read(list[mesh]);
}

} // namespace tvw::rgs::stage
