#include "core/low_poly_view.h"

#include "core/adaptor.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/tool_record.h"

#include <algorithm>

namespace tvw::rgs::core {

namespace {

void setVisible(CNode* node, bool visible) { visible ? node->show() : node->hide(); }

/// Calls `visit` with each child's handle for the time of the call.
template <class Visit>
void forEachChild(CNode* node, Visit&& visit)
{
    const int count = node->childCount();
    for (int i = 0; i < count; ++i) {
        if (CNode* const child = node->getChild(i)) {
            visit(i, child);
            node->release(child);
        }
    }
}

} // namespace

void LowPolyView::note()
{
    noted_.clear();
    std::vector<CoreNode*> all;
    ReturnValue<std::vector<CoreNode*>> out(all);
    adaptor()->getAllNodes(out);
    for (CoreNode* const node : all) {
        Noted entry{node, node->isVisible(), {}};
        forEachChild(node, [&](int, CNode* child) { entry.children.push_back(child->isVisible()); });
        noted_.push_back(std::move(entry));
    }
}

void LowPolyView::setUp(InstanceReference& root)
{
    root.forEach([](InstanceReference& entry) {
        for (CoreNode* const node : entry.instance().nodes()) {
            if (node->isDeleted())
                continue;
            if (!isCamera(node))
                node->show();
            showUnownedChildren(*adaptor(), node, false);
        }
    });
    adaptor()->redrawViews();
}

void LowPolyView::putBack()
{
    for (const Noted& entry : noted_) {
        if (entry.node->isDeleted())
            continue;
        setVisible(entry.node, entry.visible);
        forEachChild(entry.node, [&](int i, CNode* child) {
            if (static_cast<std::size_t>(i) < entry.children.size())
                setVisible(child, entry.children[static_cast<std::size_t>(i)]);
        });
    }
    noted_.clear();
    adaptor()->redrawViews();
}

} // namespace tvw::rgs::core
