/// The surfaces that make the ground of a tool, as the scene links them to its gravity node.
#pragma once

#include "core/contract/interface.h"

#include <vector>

namespace tvw::rgs {

/// Handles on the surfaces: the node's parent, unless that is the tool's own body, then its
/// children in their order. Give them back with `releaseSurfaces`. gravityNode may be null or
/// deleted: none.
void collectSurfaces(CNode* gravityNode, CNode* ownBody, std::vector<CNode*>& out);

/// Empties the list.
void releaseSurfaces(CNode* gravityNode, std::vector<CNode*>& surfaces);

/// The node's world matrix; false when it has no pose at that time [s].
bool readPlace(CInterface& runtime, CNode& node, double time, Matrix4& out);

/// The node's mesh, empty when it has none.
CMesh readMesh(CInterface& runtime, CNode& node, double time);

} // namespace tvw::rgs
