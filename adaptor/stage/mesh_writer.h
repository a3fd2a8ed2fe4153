/// Meshes of the stage as glTF meshes, each once however many nodes share it, and exact where
/// glTF's single precision or its way of texture coordinates loses something.
///
/// Our texture coordinates begin at the lower left, glTF's at the upper left.
#pragma once

#include "adaptor/stage/glb_writer.h"
#include "adaptor/stage/stage_mesh.h"

#include <cstddef>
#include <unordered_map>

namespace tvw::rgs::stage {

class MeshWriter
{
public:
    MeshWriter(GlbWriter& file, bool keepExact) : file_(file), keepExact_(keepExact) {}

    /// Indices into the two lists below; kNone in `plain` where glTF can't have the mesh (without
    /// triangles, or with indices to nowhere).
    struct Written
    {
        std::size_t plain;
        std::size_t exact;
    };
    Written write(const StageMesh& mesh, const std::string& name);

    Json meshes = Json::array(); ///< glTF's
    /// For each mesh {"mesh": its glTF mesh, and views "vertex", "texcoord", "face", "tface" unless
    /// the glTF mesh is exact}.
    Json exact = Json::array();

private:
    Json writePrimitive(const CMesh& mesh);
    std::size_t writeVectors(const std::vector<std::array<float, 3>>& values);
    template <class T>
    std::size_t writeView(const std::vector<T>& values);
    Json writeExact(const CMesh& mesh);

    GlbWriter& file_;
    bool keepExact_;
    std::unordered_map<const StageMesh*, Written> known_;
};

} // namespace tvw::rgs::stage
