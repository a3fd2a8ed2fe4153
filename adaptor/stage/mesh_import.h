/// Scenes and meshes of other formats, through Assimp: .obj, .fbx, .stl, .ply, .dae and its others.
#pragma once

#include "adaptor/stage/scene_data.h"
#include "util/result.h"

#include <string>

namespace tvw::rgs::stage {

/// Nodes with their meshes, cameras and pose keys. Lengths and axes are the file's own. The reason,
/// with the path in it, when the file can't be read.
[[nodiscard]] Result<SceneData> readWithAssimp(const std::string& path);

} // namespace tvw::rgs::stage
