/// A tool as an XML record: what a scene keeps of it, a saved tool holds, and a clone goes through.
#pragma once

#include "core/contract/codes.h"
#include "util/xml/element.h"

#include <cstdint>

namespace tvw::rgs::core {

class AdaptorInterface;
class CoreNode;
class Instance;
class InstanceReference;

namespace recordflag {
inline constexpr std::uint32_t plain = 0;
inline constexpr std::uint32_t state = 1;            ///< with state and recorded input
inline constexpr std::uint32_t noChildren = 0x10000; ///< without the tools below
inline constexpr std::uint32_t packed = 0x20000;     ///< the record as packed text
} // namespace recordflag

/// The record of an entry; of the root an `RGT` with all tools.
void writeRecord(InstanceReference& reference, std::uint32_t flags, util::xml::Element& out);

/// Hands a `masternode` with the parent's name, the place among its children and the packed record of
/// this one tool to the sink; then that of a parent that has no nodes and so no other place.
void writeMasterNode(Instance& instance, XmlSink& sink);

/// Adds the records of the top-level tools without nodes, which no node's tag can hold.
void writeUnboundTools(InstanceReference& root, util::xml::Element& out);

/// Copies what the user linked to a tool's nodes over to its clone: `copy` was made from `source`.
void cloneLinkedNodes(InstanceReference& source, InstanceReference& copy);

/// Whether the node has a lens.
bool isCamera(CoreNode* node);

/// Shows or hides what hangs on a node and belongs to no tool, with all below it.
void showUnownedChildren(AdaptorInterface& host, CoreNode* node, bool visible);

} // namespace tvw::rgs::core
