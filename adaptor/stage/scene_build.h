/// Plain values become nodes of the stage.
#pragma once

#include "adaptor/stage/scene_data.h"
#include "adaptor/stage/stage.h"

namespace tvw::rgs::stage {

/// The scene's nodes, in its order, which is depth first. withTags: the tags of tools come along,
/// for a scene whose tools will be gathered.
std::vector<StageNode*> buildNodes(Stage& stage, SceneData& scene, bool withTags);

/// Time, range, frame rate and key mode, where the scene tells them.
void applySettings(Stage& stage, const SceneSettings& settings);

} // namespace tvw::rgs::stage
