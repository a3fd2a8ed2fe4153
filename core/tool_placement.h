/// Puts the nodes of newly made tools where their records have them.
#pragma once

#include <utility>
#include <vector>

namespace tvw::rgs::core {

class InstanceReference;
class Template;

/// All tools of one creation with the records they were made of, each in the tree already: nodes that
/// only the record has are made, then all are linked, then meshes, visibility and poses are set, and
/// last what the record selects is selected.
void placeTools(const std::vector<std::pair<const Template*, InstanceReference*>>& tools);

} // namespace tvw::rgs::core
