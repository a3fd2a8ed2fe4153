/// Many rays that lie close together against one mesh, in one go.
///
/// A wheel asks for dozens of rays within its own radius: they go down the tree together, and where
/// few triangles lie under them each triangle is tested against all rays, four in the lanes of a
/// vector. Where more do, each four neighbours do the same on their own, and where even they meet
/// many each ray walks the tree, against four boxes or triangles at once. Answers are those of
/// `MeshTree::rayCast` to the bit, except on an edge, where either of its triangles may answer;
/// with and without AVX2 they are the same everywhere.
#pragma once

#include "adaptor/stage/mesh_tree.h"
#include "core/contract/codes.h"

namespace tvw::rgs::stage {

/// Fills `fan.distances` and `fan.normals`, whose length is that of the rays. Allocates nothing;
/// may run on several threads.
void castRayFan(const MeshTree& tree, const MeshRayFan& fan) noexcept;

/// The same by the baseline instructions alone: what a machine without AVX2 runs.
void castRayFanBaseline(const MeshTree& tree, const MeshRayFan& fan) noexcept;

} // namespace tvw::rgs::stage
