#include "core/adaptor.h"

#include "core/tool_record.h"

namespace tvw::rgs::core {

namespace {

AdaptorInterface* theAdaptor = nullptr;

} // namespace

AdaptorInterface* adaptor() { return theAdaptor; }

void setAdaptor(AdaptorInterface* adaptor) { theAdaptor = adaptor; }

void releaseNodesOf(AdaptorInterface& host, CInterface* owner)
{
    std::vector<CoreNode*> nodes;
    ReturnValue<std::vector<CoreNode*>> out(nodes);
    host.getNodes(owner, out);
    for (CoreNode* const node : nodes)
        node->destroy();
}

std::vector<CoreNode*> childrenOf(AdaptorInterface&, CoreNode* node)
{
    std::vector<CoreNode*> children;
    const int count = node->childCount();
    for (int i = 0; i < count; ++i) {
        if (CNode* const child = node->getChild(i))
            children.push_back(static_cast<CoreNode*>(child));
    }
    return children;
}

namespace {

/// Calls `visit` with each child that belongs to no tool, and `visitOwned` with those that do.
template <class Visit, class VisitOwned>
void splitChildren(AdaptorInterface& host, CoreNode* node, Visit&& visit, VisitOwned&& visitOwned)
{
    const std::vector<CoreNode*> children = childrenOf(host, node);
    for (std::size_t i = children.size(); i-- > 0;) {
        if (children[i]->owner())
            visitOwned(children[i]);
        else
            visit(children[i]);
        node->release(children[i]);
    }
}

void deleteWithChildren(AdaptorInterface& host, CoreNode* node)
{
    splitChildren(
        host, node, [&](CoreNode* child) { deleteWithChildren(host, child); },
        [](CoreNode* owned) { owned->setParent(nullptr); });
    node->deleteNode(true);
}

} // namespace

void deleteUnownedChildren(AdaptorInterface& host, CoreNode* node, CInterface* owner)
{
    splitChildren(
        host, node, [&](CoreNode* child) { deleteWithChildren(host, child); },
        [owner](CoreNode* owned) {
            if (owned->owner() != owner)
                owned->setParent(nullptr);
        });
}

void showUnownedChildren(AdaptorInterface& host, CoreNode* node, bool visible)
{
    splitChildren(
        host, node,
        [&](CoreNode* child) {
            visible ? child->show() : child->hide();
            showUnownedChildren(host, child, visible);
        },
        [](CoreNode*) {});
}

bool isCamera(CoreNode* node)
{
    CSnapshot_Lens* const lens = node->getLensSnapshot(adaptor()->getTime());
    if (!lens)
        return false;
    node->releaseLensSnapshot(lens);
    return true;
}

} // namespace tvw::rgs::core
