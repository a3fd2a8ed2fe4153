#include "core/tool_placement.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/template.h"
#include "util/base64.h"

#include <cmath>
#include <cstring>
#include <string>

namespace tvw::rgs::core {

using util::xml::Element;

namespace {

/// The bytes of a value as Base64; false for another number of bytes or a number that is none.
template <std::size_t N>
bool readDoubles(std::string_view text, double (&out)[N])
{
    const std::string bytes = base64Decode(text);
    double values[N];
    if (bytes.size() != sizeof(values))
        return false;
    std::memcpy(values, bytes.data(), sizeof(values));
    for (const double value : values) {
        if (!std::isfinite(value))
            return false;
    }
    std::memcpy(out, values, sizeof(values));
    return true;
}

template <class Visit>
void forEachNode(const Template& saved, Visit&& visit)
{
    const Element& info = saved.record().child("nodeinfo");
    const int count = static_cast<int>(info.childCount("node"));
    for (int i = 0; i < count; ++i)
        visit(info.child("node", i));
}

/// The tool that an element's `external` names, else the given one; null when there is none.
Instance* toolMeantBy(const Element& element, Instance& own)
{
    if (!element.hasAttribute("external"))
        return &own;
    InstanceReference* const other =
        CoreImplementation::instance().instances().findSaved(element.attributeValue("external"));
    return other ? &other->instance() : nullptr;
}

void makeMissingNodes(const Template& saved, Instance& instance)
{
    forEachNode(saved, [&](const Element& node) {
        const std::string name = node.attributeValue("name");
        if (name.empty() || instance.getNode(name))
            return;
        const CMesh empty;
        const bool isCameraNode = node.attributeValue("type") == "camera";
        instance.createMeshNode(name, nullptr, &empty, isCameraNode ? nodekind::camera : nodekind::shape);
    });
}

void linkNode(const Element& node, Instance& instance)
{
    CoreNode* const child = instance.findNode(node.attributeValue("name"));
    const Element& parent = node.child("parent");
    if (!child || parent.text().empty())
        return;
    Instance* const owner = toolMeantBy(parent, instance);
    CNode* const above = owner ? owner->getNode(std::string(parent.text())) : nullptr;
    if (above)
        child->setParent(static_cast<CoreNode*>(above));
}

void setPose(const Element& node, CoreNode* target)
{
    const Element* local = nullptr;
    const Element* global = nullptr;
    for (int i = 0; i < static_cast<int>(node.childCount("transform")); ++i) {
        const Element& transform = node.child("transform", i);
        (transform.attributeValue("reference") == "local" ? local : global) = &transform;
    }
    Matrix4 pose;
    const Element* const chosen = global ? global : local;
    if (!chosen || !readDoubles(chosen->text(), pose.m))
        return;
    if (CSnapshot* const snapshot = target->getSnapshot(adaptor()->getTime())) {
        if (global)
            snapshot->setGlobal(pose);
        else
            snapshot->setLocal(pose);
        target->releaseSnapshot(snapshot);
    }
}

void setLens(const Element& node, CoreNode* target)
{
    CSnapshot_Lens* const lens = target->getLensSnapshot(adaptor()->getTime());
    if (!lens)
        return;
    double value[1];
    if (readDoubles(node.child("fov").text(), value))
        lens->setFieldOfView(value[0]);
    if (readDoubles(node.child("targetdistance").text(), value))
        lens->setTargetDistance(value[0]);
    target->releaseLensSnapshot(lens);
}

void setMesh(const Element& node, CoreNode* target)
{
    const Element& stored = node.child("CMesh");
    if (stored.isEmpty())
        return;
    CMesh mesh;
    mesh.read(stored);
    if (CSnapshot_Mesh* const snapshot = target->getMeshSnapshot(adaptor()->getTime())) {
        snapshot->setMesh(mesh);
        target->releaseMeshSnapshot(snapshot);
    }
}

void dressNode(const Element& node, Instance& instance)
{
    CoreNode* const target = instance.findNode(node.attributeValue("name"));
    if (!target || target->isDeleted())
        return;
    setMesh(node, target);
    if (node.child("visible").text() == "false")
        target->hide();
    else
        target->show();
    setPose(node, target);
    setLens(node, target);
}

void selectNodes(const Template& saved, Instance& instance)
{
    const Element& info = saved.record().child("nodeinfo");
    std::vector<CNode*> chosen;
    for (int i = 0; i < static_cast<int>(info.childCount("select")); ++i) {
        const Element& wanted = info.child("select", i);
        Instance* const owner = toolMeantBy(wanted, instance);
        if (CNode* const node = owner ? owner->getNode(std::string(wanted.text())) : nullptr)
            chosen.push_back(node);
    }
    if (chosen.empty())
        return;
    chosen.front()->call(code::openSelection, nullptr);
    for (CNode* const node : chosen)
        node->select();
    chosen.back()->call(code::closeSelection, nullptr);
}

} // namespace

void placeTools(const std::vector<std::pair<const Template*, InstanceReference*>>& tools)
{
    for (const auto& [saved, reference] : tools)
        makeMissingNodes(*saved, reference->instance());
    for (const auto& [saved, reference] : tools) {
        Instance& instance = reference->instance();
        forEachNode(*saved, [&](const Element& node) { linkNode(node, instance); });
    }
    for (const auto& [saved, reference] : tools) {
        Instance& instance = reference->instance();
        forEachNode(*saved, [&](const Element& node) { dressNode(node, instance); });
        selectNodes(*saved, instance);
    }
}

} // namespace tvw::rgs::core
