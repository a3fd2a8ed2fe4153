/// The core's view of a scene node: what a tool sees (`CNode`) and what only the core may do.
#pragma once

#include "core/contract/node.h"
#include "core/contract/snapshot.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tvw::rgs {
class CInterface;
}

namespace tvw::rgs::core {

/// A host's snapshot: what the core needs beside the contract, to give it back without its node.
template <class Contract>
class HostSnapshot : public Contract
{
public:
    /// Back to its pool. Costs next to nothing.
    virtual void giveBack() noexcept = 0;
};

/// Takes the tags of a node.
class TagSink
{
public:
    virtual void take(const std::vector<std::string>& tags) = 0;

protected:
    ~TagSink() = default;
};

/// THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN. Snapshots come from pools of the node; each is a
/// `HostSnapshot` of its kind.
class CoreNode : public CNode
{
public:
    CoreNode(CInterface* owner, std::string shortName, CoreNode* parent, std::int64_t userValue)
        : userValue_(userValue), owner_(owner), parent_(parent),
          texts_(std::make_unique<Texts>(std::move(shortName)))
    {
    }

    virtual void addTag(std::string tag) { texts_->tags.push_back(std::move(tag)); }
    virtual void getTags(TagSink& sink) { sink.take(texts_->tags); }
    virtual void destroy() = 0; ///< this handle, not the scene node

    /// A new handle of `owner` on the same scene node; null when that owner has one already or the
    /// node is deleted.
    virtual CoreNode* clone(CInterface* owner, std::string shortName) = 0;

    /// The scene node is gone: owner and parent are cleared.
    virtual void markDeleted() = 0;

    virtual CSnapshot* getSnapshot(double time) = 0;
    virtual CSnapshot_Helper* getHelperSnapshot() = 0;
    virtual CSnapshot_Mesh* getMeshSnapshot(double time) = 0;   ///< null when the node has no mesh
    virtual CSnapshot_Lens* getLensSnapshot(double time) = 0;   ///< null when it is no camera
    virtual CSnapshot_Shape* getShapeSnapshot(double time) = 0; ///< null when it is no spline
    virtual void releaseShapeSnapshot(CSnapshot_Shape* snapshot) = 0;
    virtual void releaseHelperSnapshot(CSnapshot_Helper* snapshot) = 0;
    virtual void releaseMeshSnapshot(CSnapshot_Mesh* snapshot) = 0;
    virtual void releaseLensSnapshot(CSnapshot_Lens* snapshot) = 0;
    virtual void releaseSnapshot(CSnapshot* snapshot) = 0;

    virtual bool isSameNode(CoreNode* other) = 0; ///< the same scene node
    virtual void setParent(CoreNode* parent) = 0; ///< null: top level; the world position is kept

    /// Drops the keys later than `time` of an owned node, its lens and what else of it is animated;
    /// the key at exactly `time` stands.
    virtual void deleteKeysFrom(double time) = 0;

    virtual void setName(std::string name) = 0; ///< of the scene node; the host makes it unique
    virtual std::string getName() = 0;

    /// Deletes the scene node when `really`, else only lets it go. With an undo open the handle
    /// comes back with it.
    virtual void deleteNode(bool really) = 0;

    /// A copy of the scene node, and its handle, which no tool owns. withChildren: the children
    /// too.
    virtual CoreNode* cloneNode(bool withChildren) = 0;

    const std::string& shortName() const { return texts_->shortName; } ///< inside the tool
    std::int64_t userValue() const { return userValue_; }
    CInterface* owner() const { return owner_; }
    bool isOwned() const { return owned_; } ///< made by a tool, and keyed by its runs

protected:
    std::int64_t userValue_;
    CInterface* owner_;
    CoreNode* parent_;
    bool owned_ = true;

private:
    struct Texts
    {
        std::string shortName;
        std::vector<std::string> tags{};
    };
    std::unique_ptr<Texts> texts_; ///< apart: a tick visits every handle, and never these
};

} // namespace tvw::rgs::core
