/// A glTF file as a scene of plain values.
///
/// What our extension holds is taken where the plain part still is what it was written beside; for
/// what another program has changed, the plain part counts, and `extras`.
#pragma once

#include "adaptor/stage/scene_data.h"
#include "util/result.h"

#include <string>

namespace tvw::rgs::stage {

/// The reason when the file can't be read, is no glTF or isn't sound. It names the path.
[[nodiscard]] Result<SceneData> readScene(const std::string& path);

} // namespace tvw::rgs::stage
