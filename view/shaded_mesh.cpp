#include "view/shaded_mesh.h"

#include <cmath>

namespace tvw::rgs::view {

namespace {

std::array<float, 3> toFloats(const Vector3d& v)
{
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

/// The corners that have been made of one point of the mesh, as a chain.
struct Split
{
    Vector3d first; ///< unit normal of the face that began it
    Vector3d sum;   ///< of its faces' normals, by area
    std::int32_t next = -1;
};

class Shader
{
public:
    explicit Shader(const CMesh& mesh) : mesh_(mesh), head_(mesh.vertex.size(), -1)
    {
        splits_.reserve(mesh.vertex.size());
        out_.corners.reserve(mesh.vertex.size());
        out_.triangles.reserve(mesh.face.size());
    }

    ShadedMesh run()
    {
        for (std::size_t i = 0; i + 2 < mesh_.face.size(); i += 3)
            addFace(&mesh_.face[i]);
        for (std::size_t i = 0; i < splits_.size(); ++i) {
            const double size = length(splits_[i].sum);
            out_.corners[i].normal = toFloats(size > 0.0 ? splits_[i].sum / size : Vector3d{});
        }
        return std::move(out_);
    }

private:
    [[nodiscard]] bool isKnown(std::int32_t i) const
    {
        return i >= 0 && static_cast<std::size_t>(i) < mesh_.vertex.size();
    }

    void addFace(const std::int32_t* face)
    {
        if (!isKnown(face[0]) || !isKnown(face[1]) || !isKnown(face[2]))
            return;
        const Vector3d a = mesh_.vertex[face[0]];
        const Vector3d normal = cross(mesh_.vertex[face[1]] - a, mesh_.vertex[face[2]] - a);
        const double size = length(normal);
        const Vector3d unit = size > 0.0 ? normal / size : Vector3d{};
        for (int k = 0; k < 3; ++k)
            out_.triangles.push_back(cornerOf(face[k], normal, unit));
    }

    std::uint32_t cornerOf(std::int32_t point, const Vector3d& normal, const Vector3d& unit)
    {
        static const double kSmooth = std::cos(kCreaseDegrees * 0.017453292519943295);
        for (std::int32_t i = head_[point]; i >= 0; i = splits_[i].next) {
            if (dot(splits_[i].first, unit) >= kSmooth) {
                splits_[i].sum += normal;
                return static_cast<std::uint32_t>(i);
            }
        }
        const auto made = static_cast<std::int32_t>(splits_.size());
        splits_.push_back({unit, normal, head_[point]});
        head_[point] = made;
        out_.corners.push_back({toFloats(mesh_.vertex[point]), {}});
        return static_cast<std::uint32_t>(made);
    }

    const CMesh& mesh_;
    std::vector<std::int32_t> head_; ///< of each point's chain
    std::vector<Split> splits_;
    ShadedMesh out_;
};

} // namespace

ShadedMesh shade(const CMesh& mesh)
{
    return Shader(mesh).run();
}

} // namespace tvw::rgs::view
