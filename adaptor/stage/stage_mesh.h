/// A triangle mesh that nodes share, with the tree that answers its rays.
#pragma once

#include "adaptor/stage/mesh_tree.h"
#include "util/mesh.h"

#include <mutex>

namespace tvw::rgs::stage {

/// Never changes once made: a node gets another one instead. Any thread.
class StageMesh
{
public:
    explicit StageMesh(CMesh mesh) : mesh_(std::move(mesh)) {}

    [[nodiscard]] const CMesh& mesh() const noexcept { return mesh_; }

    /// Built at the first call, which costs about a second for a million triangles.
    [[nodiscard]] const MeshTree& tree() const
    {
        std::call_once(built_, [this] { tree_ = MeshTree(mesh_.vertex, mesh_.face); });
        return tree_;
    }

private:
    CMesh mesh_;
    mutable std::once_flag built_;
    mutable MeshTree tree_;
};

} // namespace tvw::rgs::stage
