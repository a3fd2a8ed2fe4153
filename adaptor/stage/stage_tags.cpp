#include "adaptor/stage/stage_tags.h"

#include "adaptor/stage/stage.h"

#include <algorithm>
#include <charconv>

namespace tvw::rgs::stage {

namespace xml = util::xml;

namespace {

std::string textOf(const xml::Element& element, const char* child)
{
    return std::string(element.child(child).text());
}

int numberOf(const xml::Element& element, const char* child)
{
    const std::string text = textOf(element, child);
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// No name holds a zero byte: names come through texts of XML.
std::string keyOf(const std::string& tool, const std::string& object)
{
    return tool + '\0' + object;
}

bool parseTag(const std::string& text, xml::Element& out)
{
    return !text.empty() && out.parse(text) == xml::code::ok && out.name() == kTagProperty;
}

/// What a tool answers when it is asked for its record.
class MasterNodes final : public XmlSink
{
public:
    void take(const xml::Element& element) override { list_.addChild(element); }
    [[nodiscard]] const xml::Element& list() const { return list_; }
    void clear() { list_ = xml::Tag("masternodes"); }

private:
    xml::Element list_ = xml::Tag("masternodes");
};

} // namespace

TagIndex::TagIndex(const Stage& stage)
{
    stage.forEachNode([this](StageNode& node) {
        xml::Element tag;
        if (!parseTag(node.property(kTagProperty), tag))
            return;
        nodes_.push_back(&node);
        read(node, tag);
        for (const xml::Element& further : tag.children()) {
            if (further.name() == kTagProperty)
                read(node, further);
        }
    });
}

void TagIndex::read(StageNode& node, const xml::Element& tag)
{
    const std::string tool = textOf(tag, "name");
    const bool owned = textOf(tag, "owned") != "0";
    byObject_.try_emplace(keyOf(tool, textOf(tag, "objectname")), TaggedNode{&node, owned});
    readMasters(tool, tag.child("masternodes"));
}

void TagIndex::readMasters(const std::string& tool, const xml::Element& list)
{
    std::string name = tool;
    for (const xml::Element& master : list.children()) {
        TaggedTool found{name, textOf(master, "parent"), numberOf(master, "childindex"),
                         master.child("RGT_Plugin")};
        name = found.parent;
        if (!found.record.isEmpty() && toolByName_.try_emplace(found.name, tools_.size()).second)
            tools_.push_back(std::move(found));
    }
}

TaggedNode TagIndex::find(const std::string& tool, const std::string& object) const
{
    const auto found = byObject_.find(keyOf(tool, object));
    return found == byObject_.end() ? TaggedNode{} : found->second;
}

std::vector<const TaggedTool*> TagIndex::toolsInOrder() const
{
    std::vector<const TaggedTool*> order;
    std::vector<bool> taken(tools_.size());
    addChildrenOf("", order, taken);
    for (std::size_t i = 0; i < tools_.size(); ++i) {
        if (taken[i] || toolByName_.count(tools_[i].parent) != 0)
            continue;
        taken[i] = true;
        order.push_back(&tools_[i]);
        addChildrenOf(tools_[i].name, order, taken);
    }
    for (std::size_t i = 0; i < tools_.size(); ++i) { // parents in a ring: no file of ours has any
        if (!taken[i])
            order.push_back(&tools_[i]);
    }
    return order;
}

void TagIndex::addChildrenOf(const std::string& parent, std::vector<const TaggedTool*>& order,
                             std::vector<bool>& taken) const
{
    std::vector<std::size_t> children;
    for (std::size_t i = 0; i < tools_.size(); ++i) {
        if (!taken[i] && tools_[i].parent == parent && !tools_[i].name.empty())
            children.push_back(i);
    }
    std::stable_sort(children.begin(), children.end(), [this](std::size_t a, std::size_t b) {
        return tools_[a].childIndex < tools_[b].childIndex;
    });
    for (const std::size_t i : children) {
        taken[i] = true;
        order.push_back(&tools_[i]);
        addChildrenOf(tools_[i].name, order, taken);
    }
}

std::string withTag(const std::string& present, const xml::Element& tag)
{
    xml::Element old;
    xml::Element out = tag;
    if (!parseTag(present, old))
        return out.fragment();
    const std::string tool = textOf(tag, "name");
    std::vector<xml::Element> others;
    for (const xml::Element& further : old.children()) {
        if (further.name() == kTagProperty && textOf(further, "name") != tool)
            others.push_back(further);
    }
    while (const xml::Element* const nested = old.findChild(kTagProperty))
        old.removeChild(*nested);
    if (textOf(old, "name") != tool)
        out.addChild(old);
    for (const xml::Element& other : others)
        out.addChild(other);
    return out.fragment();
}

void Stage::saveNodeTags(CInterface* owner)
{
    if (!owner)
        return;
    const std::string tool = hooks.ownerName ? hooks.ownerName(owner) : std::string();
    MasterNodes masters;
    owner->call(code::masterNode, static_cast<XmlSink*>(&masters));
    for (NodeHandle* const handle : handlesOf(owner)) {
        if (handle->owner_ != owner || handle->isDeleted())
            continue;
        xml::Element tag = xml::Tag(kTagProperty);
        tag.addChild(xml::TagWithData("name", tool));
        tag.addChild(xml::TagWithData("objectname", handle->shortName()));
        if (!handle->owned_)
            tag.addChild(xml::TagWithData("owned", false));
        if (masters.list().childCount() != 0)
            tag.addChild(masters.list());
        masters.clear();
        std::string& text = handle->node_->state_.properties[kTagProperty];
        text = withTag(text, tag);
    }
}

void Stage::clearNodeTags()
{
    for (const auto& node : nodes_)
        node->state_.properties.erase(kTagProperty);
}

void Stage::gatherTools()
{
    const TagIndex tags(*this);
    tags_ = &tags;
    if (hooks.createTool) {
        for (const TaggedTool* tool : tags.toolsInOrder())
            hooks.createTool(tool->record, tool->parent, tool->childIndex);
    }
    tags_ = nullptr;
    std::string unclaimed;
    for (StageNode* node : tags.nodes()) {
        if (ownerOf(*node))
            node->state_.properties.erase(kTagProperty); // its tool writes it anew
        else
            unclaimed += (unclaimed.empty() ? "" : ", ") + node->name();
    }
    if (!unclaimed.empty())
        showError("Some nodes were found belonging to Rigstage, but they were never claimed. \n"
                  " The following nodes were left out:\n\n" +
                      unclaimed,
                  "Gather error");
}

void Stage::bindNodes(std::string name, const xml::Element& nodeInfo,
                      ReturnValue<std::vector<core::CoreNode*>>& out)
{
    std::optional<TagIndex> own;
    const TagIndex& tags = tags_ ? *tags_ : own.emplace(*this);
    std::vector<core::CoreNode*> found;
    for (const xml::Element& entry : nodeInfo.children()) {
        if (entry.name() != "node")
            continue;
        const TaggedNode tagged = tags.find(name, entry.attributeValue("name"));
        NodeHandle* handle = nullptr;
        if (tagged.node && tagged.node->isPresent()) {
            handle = &looseHandle(*tagged.node);
            handle->owned_ = tagged.owned;
        }
        found.push_back(handle);
    }
    out.assign(found);
}

} // namespace tvw::rgs::stage
