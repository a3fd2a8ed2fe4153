/// The scene as a file: glTF 2.0 binary (.glb).
///
/// Nodes, meshes, cameras and keys are plain glTF that any program opens. What glTF has no place
/// for (tool tags, the tools without nodes, splines, exact double-precision tracks, settings of the
/// scene) stands in `extras` and in one extension, so that save and open lose nothing. Files are
/// replaced as a whole; a file that can't be read leaves the scene as it was.
#pragma once

#include "util/result.h"

#include <string>
#include <vector>

namespace tvw::rgs::stage {

class Session;
class Stage;
class StageNode;

/// The whole scene, tools, state and takes included. The same scene gives the same bytes.
Status saveScene(Session& session, const std::string& path);

/// Takes the place of the present scene. The reason, with the path in it, when the file can't be
/// read or is no scene; the present scene then stays.
Status openScene(Session& session, const std::string& path);

struct ExportOptions
{
    /// Keys are left out as long as the curve stays within these; 0 leaves out none.
    double positionTolerance = 0.0; ///< [m]
    double angleTolerance = 0.0;    ///< [degrees]
};

/// The animation for other programs: plain glTF without our own data.
Status exportScene(Stage& stage, const std::string& path, const ExportOptions& options = {});

/// The nodes of a mesh or scene file, added to the scene in one undo step "Import". The reason,
/// with the path in it, when the file can't be read; nothing is added then.
Result<std::vector<StageNode*>> importFile(Stage& stage, const std::string& path);

} // namespace tvw::rgs::stage
