/// A tool's handle on one scene node.
#pragma once

#include "core/contract/extendable.h"

namespace tvw::rgs {

/// What a node is to be in the host, passed as the user value at its creation.
namespace nodekind {
inline constexpr std::int64_t shape = 0;  ///< shows its mesh
inline constexpr std::int64_t camera = 1; ///< a camera with a lens; the mesh is what the user grabs
} // namespace nodekind

/// A tool never deletes a handle: it gives it back with `CInterface::releaseNode`, or deletes the
/// scene node with `CInterface::deleteNode`. The handle outlives its scene node when the user
/// deletes that: test `isDeleted` before a write. Codes: 10, 11, 17, 31, 32, 37. [live]
class CNode : public CExtendable
{
public:
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual bool isVisible() = 0;

    /// Selects the node in the host, inside an undo of its own.
    virtual void select() = 0;

    virtual bool isDeleted() = 0;

    /// A new handle on the parent, null for a top-level node. Give it back with `release`.
    virtual CNode* getParent() = 0;

    virtual int childCount() = 0;

    /// A new handle on child `index` (0 to `childCount` - 1), else null. Give it back with `release`.
    virtual CNode* getChild(int index) = 0;

    /// Gives back a handle from `getParent` or `getChild`; null is ignored.
    virtual void release(CNode* handle) = 0;

    virtual ~CNode() = default;
};

} // namespace tvw::rgs
