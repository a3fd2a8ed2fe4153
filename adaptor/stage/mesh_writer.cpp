#include "adaptor/stage/mesh_writer.h"

#include "adaptor/stage/pose_samples.h"
#include "adaptor/stage/scene_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tvw::rgs::stage {

namespace {

bool fitsFloat(const Vector3d& v)
{
    const auto fits = [](double x) { return double{toFloat(x)} == x; };
    return fits(v.x) && fits(v.y) && fits(v.z);
}

bool isFinite(const Vector3d& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// Whether glTF can hold the mesh at all.
bool isPlain(const CMesh& mesh)
{
    return mesh.numFaces() != 0 && mesh.isSound() &&
           std::all_of(mesh.vertex.begin(), mesh.vertex.end(), isFinite);
}

/// Whether what a reader makes of the glTF mesh is this mesh.
bool isExact(const CMesh& mesh)
{
    return mesh.texcoord.empty() && mesh.tface.empty() &&
           std::all_of(mesh.vertex.begin(), mesh.vertex.end(), fitsFloat);
}

bool hasTexture(const CMesh& mesh)
{
    const auto inside = [&](std::int32_t i) {
        return i >= 0 && static_cast<std::size_t>(i) < mesh.texcoord.size();
    };
    return mesh.tface.size() == mesh.face.size() &&
           std::all_of(mesh.tface.begin(), mesh.tface.end(), inside) &&
           std::all_of(mesh.texcoord.begin(), mesh.texcoord.end(), isFinite);
}

/// glTF's vertices: each a point with one texture coordinate.
struct Corners
{
    std::vector<std::uint32_t> index;
    std::vector<std::array<float, 3>> point;
    std::vector<std::array<float, 2>> texture; ///< empty: none
};

std::array<float, 3> pointOf(const Vector3d& v)
{
    return {toFloat(v.x), toFloat(v.y), toFloat(v.z)};
}

Corners wholePoints(const CMesh& mesh)
{
    Corners out;
    out.index.assign(mesh.face.begin(), mesh.face.end());
    out.point.reserve(mesh.vertex.size());
    for (const Vector3d& v : mesh.vertex)
        out.point.push_back(pointOf(v));
    return out;
}

Corners splitPoints(const CMesh& mesh)
{
    Corners out;
    std::unordered_map<std::uint64_t, std::uint32_t> known;
    for (std::size_t i = 0; i < mesh.face.size(); ++i) {
        const auto point = static_cast<std::uint32_t>(mesh.face[i]);
        const auto texture = static_cast<std::uint32_t>(mesh.tface[i]);
        const auto [found, isNew] = known.try_emplace(std::uint64_t{point} << 32 | texture,
                                                      static_cast<std::uint32_t>(known.size()));
        if (isNew) {
            const Vector3d& t = mesh.texcoord[texture];
            out.point.push_back(pointOf(mesh.vertex[point]));
            out.texture.push_back({toFloat(t.x), toFloat(1.0 - t.y)});
        }
        out.index.push_back(found->second);
    }
    return out;
}

} // namespace

template <class T>
std::size_t MeshWriter::writeView(const std::vector<T>& values)
{
    file_.beginView();
    file_.append(values);
    return file_.endView();
}

/// With the bounds that glTF asks for.
std::size_t MeshWriter::writeVectors(const std::vector<std::array<float, 3>>& values)
{
    std::array<float, 3> low = values.front();
    std::array<float, 3> high = low;
    for (const std::array<float, 3>& v : values) {
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], v[i]);
            high[i] = std::max(high[i], v[i]);
        }
    }
    file_.beginView();
    file_.append(values);
    return file_.addAccessor(file_.endView(ViewTarget::Vertices), values.size(),
                             ComponentType::Float, "VEC3", low, high);
}

Json MeshWriter::writePrimitive(const CMesh& mesh)
{
    const Corners corners = hasTexture(mesh) ? splitPoints(mesh) : wholePoints(mesh);
    Json attributes = {{"POSITION", writeVectors(corners.point)}};
    if (!corners.texture.empty()) {
        file_.beginView();
        file_.append(corners.texture);
        attributes["TEXCOORD_0"] =
            file_.addAccessor(file_.endView(ViewTarget::Vertices), corners.texture.size(),
                              ComponentType::Float, "VEC2");
    }
    file_.beginView();
    file_.append(corners.index);
    const std::size_t indices =
        file_.addAccessor(file_.endView(ViewTarget::Indices), corners.index.size(),
                          ComponentType::UnsignedInt, "SCALAR");
    return {{"attributes", std::move(attributes)}, {"indices", indices}};
}

Json MeshWriter::writeExact(const CMesh& mesh)
{
    Json views = Json::object();
    if (!mesh.vertex.empty())
        views["vertex"] = writeView(mesh.vertex);
    if (!mesh.texcoord.empty())
        views["texcoord"] = writeView(mesh.texcoord);
    if (!mesh.face.empty())
        views["face"] = writeView(mesh.face);
    if (!mesh.tface.empty())
        views["tface"] = writeView(mesh.tface);
    return views;
}

MeshWriter::Written MeshWriter::write(const StageMesh& mesh, const std::string& name)
{
    const auto known = known_.find(&mesh);
    if (known != known_.end())
        return known->second;
    Written written{kNone, kNone};
    const bool plain = isPlain(mesh.mesh());
    if (plain) {
        written.plain = meshes.size();
        meshes.push_back(
            {{"name", asUtf8(name)}, {"primitives", Json::array({writePrimitive(mesh.mesh())})}});
    }
    if (keepExact_) {
        const bool isKept = plain && isExact(mesh.mesh());
        Json entry = isKept ? Json::object() : writeExact(mesh.mesh());
        entry["plain"] = isKept;
        if (plain)
            entry["mesh"] = written.plain;
        written.exact = exact.size();
        exact.push_back(std::move(entry));
    }
    known_[&mesh] = written;
    return written;
}

} // namespace tvw::rgs::stage
