/// A mesh of a glTF file.
#pragma once

#include "adaptor/stage/gltf_file.h"
#include "util/mesh.h"

namespace tvw::rgs::stage {

/// The triangles of all its primitives, strips and fans too, in one; points and lines are left out.
/// Throws FileFault.
[[nodiscard]] CMesh readGltfMesh(const GltfFile& file, std::size_t mesh);

} // namespace tvw::rgs::stage
