#include "plugins/common/ground_surfaces.h"

namespace tvw::rgs {

void collectSurfaces(CNode* gravityNode, CNode* ownBody, std::vector<CNode*>& out)
{
    if (!gravityNode || gravityNode->isDeleted())
        return;
    if (CNode* const parent = gravityNode->getParent()) {
        const bool isOwn = ownBody && parent->call(code::isSameNode, ownBody) != 0;
        if (isOwn)
            gravityNode->release(parent);
        else
            out.push_back(parent);
    }
    const int children = gravityNode->childCount();
    for (int i = 0; i < children; ++i) {
        if (CNode* const child = gravityNode->getChild(i))
            out.push_back(child);
    }
}

void releaseSurfaces(CNode* gravityNode, std::vector<CNode*>& surfaces)
{
    for (CNode* const surface : surfaces)
        gravityNode->release(surface);
    surfaces.clear();
}

bool readPlace(CInterface& runtime, CNode& node, double time, Matrix4& out)
{
    CSnapshot* const pose = runtime.getSnapshot(&node, time);
    if (!pose)
        return false;
    pose->getGlobal(out);
    runtime.releaseSnapshot(pose);
    return true;
}

CMesh readMesh(CInterface& runtime, CNode& node, double time)
{
    CSnapshot_Mesh* const snapshot = runtime.getMeshSnapshot(&node, time);
    if (!snapshot)
        return {};
    CMesh mesh = snapshot->getMesh();
    runtime.releaseMeshSnapshot(snapshot);
    return mesh;
}

} // namespace tvw::rgs
