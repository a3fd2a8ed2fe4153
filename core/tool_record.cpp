#include "core/tool_record.h"

#include "core/adaptor.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/tool.h"
#include "util/base64.h"
#include "util/huffman.h"

#include <cstring>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tvw::rgs::core {

using util::xml::Element;
using util::xml::Tag;
using util::xml::TagWithData;

namespace {

std::string base64(const void* bytes, std::size_t size)
{
    return base64Encode(std::string_view(static_cast<const char*>(bytes), size));
}

template <class T>
std::string base64Of(const T& value)
{
    return base64(&value, sizeof(T));
}

Element transformElement(const char* reference, const Matrix4& pose)
{
    Element transform = TagWithData("transform", base64Of(pose.m));
    transform.setAttribute("reference", reference);
    return transform;
}

/// The tool's own handle on the scene node that the given one stands for; null when it has none.
CoreNode* handleOf(Instance& tool, CoreNode* node)
{
    for (CoreNode* const own : tool.nodes()) {
        if (!own->isDeleted() && own->isSameNode(node))
            return own;
    }
    return nullptr;
}

/// The parent's name, with its tool's where that is another one of the tree.
Element parentElement(Instance& instance, CoreNode* node)
{
    Element element = Tag("parent");
    auto* const parent = static_cast<CoreNode*>(node->getParent());
    if (!parent)
        return element;
    auto* const owner = static_cast<Instance*>(parent->owner());
    if (const CoreNode* const own = handleOf(instance, parent)) {
        element = TagWithData("parent", own->shortName());
    } else if (const CoreNode* const other = owner ? handleOf(*owner, parent) : nullptr) {
        element = TagWithData("parent", other->shortName());
        element.setAttribute("external", owner->name());
    }
    node->release(parent);
    return element;
}

Element nodeElement(Instance& instance, CoreNode* node)
{
    const double now = adaptor()->getTime();
    Element element = Tag("node");
    element.setAttribute("name", node->shortName());
    element.setAttribute("objectname", node->getName());
    if (CSnapshot_Lens* const lens = node->getLensSnapshot(now)) {
        element.setAttribute("type", "camera");
        element.addChild(TagWithData("fov", base64Of(lens->getFieldOfView())));
        element.addChild(TagWithData("targetdistance", base64Of(lens->getTargetDistance())));
        node->releaseLensSnapshot(lens);
    }
    if (CSnapshot* const snapshot = node->getSnapshot(now)) {
        Matrix4 pose;
        snapshot->getGlobal(pose);
        element.addChild(transformElement("global", pose));
        snapshot->getLocal(pose);
        element.addChild(transformElement("local", pose));
        node->releaseSnapshot(snapshot);
    }
    element.addChild(parentElement(instance, node));
    element.addChild(TagWithData("visible", std::string(node->isVisible() ? "true" : "false")));
    return element;
}

Element nodeInfo(Instance& instance)
{
    Element info = Tag("nodeinfo");
    for (CoreNode* const node : instance.nodes()) {
        if (!node->isDeleted())
            info.addChild(nodeElement(instance, node));
    }
    return info;
}

Element recordedInputs(Instance& instance)
{
    Element recorded = Tag("recordedinputvalues");
    const auto add = [&](const char* name, const RecordedInputs::Lines& lines) {
        for (const auto& line : lines) {
            std::string block(line.binarySize(), '\0');
            line.store(block.data(), block.size());
            recorded.addChild(TagWithData(name, base64Encode(block)));
        }
    };
    add("input", instance.recordedInputs().lines());
    add("start", instance.recordedInputs().starts());
    instance.liveSpinners().write(recorded);
    return recorded;
}

void addState(Instance& instance, bool saved, Element& record)
{
    if (saved && !instance.saveData().empty()) {
        const auto& bytes = instance.saveData();
        record.addChild(TagWithData("savedata", base64(bytes.data(), bytes.size())));
    }
    record.addChild(recordedInputs(instance));
}

void addCustomData(Instance& instance, Element& record)
{
    if (!instance.tool()->isSupported(code::writeCustomData))
        return;
    Element custom = Tag("customdata");
    instance.tool()->call(code::writeCustomData, &custom);
    if (custom.childCount() > 0)
        record.addChild(custom);
}

Element packedRecord(const Element& record)
{
    Element packed = TagWithData("RGT_Plugin", base64Encode(compress(record.toString())));
    packed.setAttribute("compressed", "1");
    return packed;
}

} // namespace

void writeRecord(InstanceReference& reference, std::uint32_t flags, Element& out)
{
    const bool isRoot = reference.parentReference() == nullptr && reference.isAlive();
    out = Tag(isRoot ? "RGT" : "RGT_Plugin");
    if (!isRoot) {
        Instance& instance = reference.instance();
        // First, since a save also settles what the items show.
        const bool saved = flags & recordflag::state && instance.tool()->save() == 0;
        out.setAttribute("version", "2.5");
        out.addChild(TagWithData("type", instance.type()->name()));
        out.addChild(TagWithData("name", instance.name()));
        if (!reference.takesPart())
            out.addChild(TagWithData("checked", std::string("false")));
        addCustomData(instance, out);
        Element part;
        instance.writeConfigProfile(part);
        out.addChild(part);
        instance.writeInputProfile(part);
        part.setName("inputprofile");
        out.addChild(part);
        out.addChild(nodeInfo(instance));
        if (flags & recordflag::state)
            addState(instance, saved, out);
    }
    if (!(flags & recordflag::noChildren)) {
        for (InstanceReference* const child : reference.childReferences()) {
            Element record;
            writeRecord(*child, flags & ~recordflag::packed, record);
            out.addChild(record);
        }
    }
    if (flags & recordflag::packed && !isRoot)
        out = packedRecord(out);
}

void writeMasterNode(Instance& instance, XmlSink& sink)
{
    InstanceReference* const reference = instance.reference();
    if (!reference || !reference->parentReference())
        return;
    Element master = Tag("masternode");
    const std::string parentName = parentToolName(reference);
    if (!parentName.empty())
        master.addChild(TagWithData("parent", parentName));
    master.addChild(TagWithData("childindex", reference->indexInParent()));
    Element record;
    writeRecord(*reference, recordflag::packed | recordflag::noChildren | recordflag::state,
                record);
    master.addChild(record);
    sink.take(master);

    Instance& parent = reference->parentReference()->instance();
    if (!parentName.empty() && parent.nodes().empty())
        writeMasterNode(parent, sink);
}

namespace {

/// A tool without nodes and those below it that have none either: what hangs below it with nodes is
/// found by its own tags, and brings its parents along.
void writeUnboundTool(InstanceReference& reference, Element& out)
{
    writeRecord(reference, recordflag::state | recordflag::noChildren, out);
    for (InstanceReference* const child : reference.childReferences()) {
        if (!child->instance().nodes().empty())
            continue;
        Element record;
        writeUnboundTool(*child, record);
        out.addChild(record);
    }
}

} // namespace

void writeUnboundTools(InstanceReference& root, Element& out)
{
    Element tools = Tag("RGT");
    for (InstanceReference* const child : root.childReferences()) {
        if (!child->instance().nodes().empty())
            continue;
        Element record;
        writeUnboundTool(*child, record);
        tools.addChild(record);
    }
    if (tools.childCount() > 0)
        out.addChild(tools);
}

// Clones.

namespace {

std::vector<Instance*> instancesOf(InstanceReference& reference)
{
    std::vector<Instance*> all;
    reference.forEach([&](InstanceReference& entry) { all.push_back(&entry.instance()); });
    return all;
}

using Owners = std::unordered_set<const CInterface*>;

/// The copy hangs on its parent as the original does on its own.
void copyLocalPose(CoreNode* from, CoreNode* to)
{
    const double now = adaptor()->getTime();
    CSnapshot* const read = from->getSnapshot(now);
    CSnapshot* const written = to->getSnapshot(now);
    if (read && written) {
        Matrix4 pose;
        read->getLocal(pose);
        written->setLocal(pose);
    }
    if (read)
        from->releaseSnapshot(read);
    if (written)
        to->releaseSnapshot(written);
}

/// Copies the children of `from` that no source tool owns below `to`, with all below them.
void copyChildren(CoreNode* from, CoreNode* to, const Owners& sources)
{
    for (CoreNode* const child : childrenOf(*adaptor(), from)) {
        if (!sources.contains(child->owner())) {
            if (CoreNode* const copy = child->cloneNode(false)) {
                copy->setParent(to);
                copyLocalPose(child, copy);
                copyChildren(child, copy, sources);
            }
        }
        from->release(child);
    }
}

void cloneLinks(CoreNode* source, CoreNode* copy, const Owners& sources)
{
    if (auto* const parent = static_cast<CoreNode*>(source->getParent())) {
        if (!sources.contains(parent->owner()))
            copy->setParent(parent);
        source->release(parent);
    }
    copyChildren(source, copy, sources);
}

} // namespace

void cloneLinkedNodes(InstanceReference& source, InstanceReference& copy)
{
    const std::vector<Instance*> sources = instancesOf(source);
    const std::vector<Instance*> copies = instancesOf(copy);
    const Owners owners(sources.begin(), sources.end());
    for (std::size_t i = 0; i < sources.size() && i < copies.size(); ++i) {
        for (CoreNode* const node : copies[i]->nodes()) {
            CoreNode* const original = sources[i]->findNode(node->shortName());
            if (!original || original->isDeleted())
                return;
            cloneLinks(original, node, owners);
        }
    }
}

} // namespace tvw::rgs::core
