/// What a saved scene tells about its tools: the tags on their nodes.
///
/// A tag is the XML text of a node's user property "RGT_tag":
///
///     <RGT_tag>
///       <name>tool</name> <objectname>node's name inside the tool</objectname>
///       <owned>0</owned>                  only for a node that runs leave alone
///       <masternodes>                     only on one node of each tool
///         <masternode> <parent/> <childindex/> <RGT_Plugin/> </masternode>
///       </masternodes>
///       <RGT_tag/>                        of further tools that hold the same node
///     </RGT_tag>
///
/// A second and further `masternode` are the records of parent tools that have no node of their
/// own, each the parent of the one before it. Tags stand in saved files only: they are written
/// before a save and cleared after it.
#pragma once

#include "util/xml/element.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace tvw::rgs::stage {

class Stage;
class StageNode;

inline constexpr const char* kTagProperty = "RGT_tag";

struct TaggedNode
{
    StageNode* node = nullptr;
    bool owned = true;
};

struct TaggedTool
{
    std::string name;
    std::string parent; ///< empty: the root
    int childIndex = 0;
    util::xml::Element record;
};

/// All tags of a scene at one moment. A text that is no tag is passed over.
class TagIndex
{
public:
    explicit TagIndex(const Stage& stage);

    /// node is null when no tag says so.
    [[nodiscard]] TaggedNode find(const std::string& tool, const std::string& object) const;

    [[nodiscard]] const std::vector<StageNode*>& nodes() const { return nodes_; } ///< depth first

    /// Parents first, children of one parent by their saved place. A tool whose parent is not among
    /// them stands at the top.
    [[nodiscard]] std::vector<const TaggedTool*> toolsInOrder() const;

private:
    void read(StageNode& node, const util::xml::Element& tag);
    void readMasters(const std::string& tool, const util::xml::Element& list);
    void addChildrenOf(const std::string& parent, std::vector<const TaggedTool*>& order,
                       std::vector<bool>& taken) const;

    std::unordered_map<std::string, TaggedNode> byObject_;
    std::unordered_map<std::string, std::size_t> toolByName_;
    std::vector<TaggedTool> tools_;
    std::vector<StageNode*> nodes_;
};

/// The tag text of a node after one tool's tag was added to it, or put in the place of its old one.
[[nodiscard]] std::string withTag(const std::string& present, const util::xml::Element& tag);

} // namespace tvw::rgs::stage
