/// The one adaptor of the process, and what the core does with its nodes.
#pragma once

#include "core/adaptor_interface.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {

/// Null while the core is down.
AdaptorInterface* adaptor();
void setAdaptor(AdaptorInterface* adaptor);

/// Gives back every handle of the owner; the scene nodes stay.
void releaseNodesOf(AdaptorInterface& host, CInterface* owner);

/// Of a node's children: those that belong to no tool are deleted with theirs, those of another tool
/// are unlinked.
void deleteUnownedChildren(AdaptorInterface& host, CoreNode* node, CInterface* owner);

/// The live handles of a node's children, as the adaptor lists them.
std::vector<CoreNode*> childrenOf(AdaptorInterface& host, CoreNode* node);

/// An undo bracket for the length of a block.
class UndoScope
{
public:
    explicit UndoScope(std::string name) { adaptor()->beginUndo(std::move(name)); }
    ~UndoScope()
    {
        if (cancelled_)
            adaptor()->cancelUndo();
        else
            adaptor()->endUndo();
    }
    UndoScope(const UndoScope&) = delete;
    UndoScope& operator=(const UndoScope&) = delete;
    void cancel() { cancelled_ = true; }

private:
    bool cancelled_ = false;
};

} // namespace tvw::rgs::core
