#include "adaptor/stage/node_handle.h"

#include "adaptor/stage/records.h"
#include "adaptor/stage/stage.h"
#include "core/contract/codes.h"

#include <algorithm>
#include <utility>

namespace tvw::rgs::stage {

NodeHandle::NodeHandle(StageNode& node, CInterface* owner, std::string shortName,
                       core::CoreNode* parent, std::int64_t userValue)
    : CoreNode(owner, std::move(shortName), parent, userValue), node_(&node), maker_(owner)
{
}

NodeHandle::~NodeHandle()
{
    std::erase(node_->handles_, this);
}

std::vector<std::int32_t> NodeHandle::supportedCodes()
{
    return {code::openSelection, code::closeSelection, code::disown,  code::isSameNode,
            code::renameNode,    code::copyNode,       code::cutLens, code::fetch};
}

std::intptr_t NodeHandle::call(std::int32_t code, void* argument)
{
    if (code == code::fetch) { // of every node in every tick: before all others
        node_->fetch();
        return 1;
    }
    Stage& stage = node_->stage();
    switch (code) {
    case code::openSelection:
        if (stage.selecting_)
            return 0;
        stage.selecting_ = true;
        stage.beginUndo("Select");
        stage.clearSelection();
        stage.endUndo();
        return 1;
    case code::closeSelection:
        return std::exchange(stage.selecting_, false) ? 1 : 0;
    case code::disown:
        owned_ = false;
        return 1;
    case code::isSameNode: {
        auto* const other = dynamic_cast<CoreNode*>(static_cast<CNode*>(argument));
        return isSameNode(other) ? 1 : 0;
    }
    case code::renameNode:
        if (!argument || isDeleted())
            return 0;
        rename(*static_cast<const std::string*>(argument));
        return 1;
    case code::cutLens:
        if (!argument || isDeleted())
            return 0;
        node_->deleteLensKeysBehind(*static_cast<const double*>(argument));
        return 1;
    case code::copyNode:
        if (!argument)
            return 0;
        *static_cast<CNode**>(argument) = cloneNode(false);
        return 1;
    default:
        return 0;
    }
}

void NodeHandle::rename(const std::string& name)
{
    Stage& stage = node_->stage();
    stage.beginUndo("NODE_SETLABEL");
    node_->rename(name);
    stage.endUndo();
}

void NodeHandle::show()
{
    if (!isDeleted())
        node_->setVisible(true);
}

void NodeHandle::hide()
{
    if (!isDeleted())
        node_->setVisible(false);
}

bool NodeHandle::isVisible()
{
    return !isDeleted() && node_->state().visible;
}

void NodeHandle::select()
{
    if (isDeleted())
        return;
    Stage& stage = node_->stage();
    stage.beginUndo("Select");
    stage.select(*node_, stage.selecting_);
    stage.endUndo();
}

bool NodeHandle::isDeleted()
{
    return !node_->isPresent() || !(listed_ || (loose_ && !free_));
}

CNode* NodeHandle::getParent()
{
    StageNode* const parent = isDeleted() ? nullptr : node_->parent();
    return parent ? &node_->stage().looseHandle(*parent) : nullptr;
}

int NodeHandle::childCount()
{
    return isDeleted() ? 0 : static_cast<int>(node_->children().size());
}

CNode* NodeHandle::getChild(int index)
{
    if (index < 0 || index >= childCount())
        return nullptr;
    return &node_->stage().looseHandle(*node_->children()[static_cast<std::size_t>(index)]);
}

void NodeHandle::release(CNode* handle)
{
    auto* const loose = dynamic_cast<NodeHandle*>(handle);
    if (loose && loose->loose_)
        loose->destroy();
}

void NodeHandle::destroy()
{
    node_->stage().endHandle(*this);
}

core::CoreNode* NodeHandle::clone(CInterface* owner, std::string shortName)
{
    if (isDeleted())
        return nullptr;
    const auto isOwners = [owner](const NodeHandle* handle) {
        return handle->listed_ && handle->owner_ == owner;
    };
    if (owner && std::any_of(node_->handles().begin(), node_->handles().end(), isOwners))
        return nullptr;
    NodeHandle& handle =
        node_->stage().makeHandle(*node_, owner, std::move(shortName), nullptr, userValue_);
    handle.owned_ = owned_;
    return &handle;
}

void NodeHandle::markDeleted()
{
    owner_ = nullptr;
    parent_ = nullptr;
    listed_ = false;
}

CSnapshot* NodeHandle::getSnapshot(double time)
{
    return isDeleted() ? nullptr : node_->stage().snapshots_.poses.take(*node_, time);
}

CSnapshot_Helper* NodeHandle::getHelperSnapshot()
{
    return isDeleted() ? nullptr : node_->stage().snapshots_.helpers.take(*node_, 0.0);
}

CSnapshot_Mesh* NodeHandle::getMeshSnapshot(double time)
{
    const bool hasMesh = node_->kind() != NodeKind::Helper && node_->mesh();
    return isDeleted() || !hasMesh ? nullptr : node_->stage().snapshots_.meshes.take(*node_, time);
}

CSnapshot_Lens* NodeHandle::getLensSnapshot(double time)
{
    return isDeleted() || !node_->hasLens() ? nullptr
                                            : node_->stage().snapshots_.lenses.take(*node_, time);
}

CSnapshot_Shape* NodeHandle::getShapeSnapshot(double time)
{
    return isDeleted() || !node_->spline() ? nullptr
                                           : node_->stage().snapshots_.shapes.take(*node_, time);
}

namespace {

/// Gives one of the stage's own snapshots back to its pool; null is ignored.
template <class Own, class Contract>
void giveBack(Contract* snapshot)
{
    if (snapshot)
        static_cast<Own*>(snapshot)->close();
}

} // namespace

void NodeHandle::releaseShapeSnapshot(CSnapshot_Shape* snapshot)
{
    giveBack<ShapeSnapshot>(snapshot);
}

void NodeHandle::releaseHelperSnapshot(CSnapshot_Helper* snapshot)
{
    giveBack<HelperSnapshot>(snapshot);
}

void NodeHandle::releaseMeshSnapshot(CSnapshot_Mesh* snapshot)
{
    giveBack<MeshSnapshot>(snapshot);
}

void NodeHandle::releaseLensSnapshot(CSnapshot_Lens* snapshot)
{
    giveBack<LensSnapshot>(snapshot);
}

void NodeHandle::releaseSnapshot(CSnapshot* snapshot)
{
    giveBack<PoseSnapshot>(snapshot);
}

bool NodeHandle::isSameNode(core::CoreNode* other)
{
    auto* const handle = dynamic_cast<NodeHandle*>(other);
    return handle && handle->node_ == node_;
}

void NodeHandle::setParent(core::CoreNode* parent)
{
    if (isDeleted())
        return;
    auto* const handle = dynamic_cast<NodeHandle*>(parent);
    if (node_->setParent(handle ? handle->node_ : nullptr))
        parent_ = parent;
}

void NodeHandle::deleteKeysFrom(double time)
{
    if (owned_ && !isDeleted())
        node_->deleteKeysBehind(time);
}

void NodeHandle::setName(std::string name)
{
    if (!isDeleted())
        node_->rename(name);
}

std::string NodeHandle::getName()
{
    return node_->name();
}

void NodeHandle::deleteNode(bool really)
{
    Stage& stage = node_->stage();
    if (stage.undo_.isOpen() && listed_)
        stage.undo_.push(new NodeInstanceRestoreObj(*this, {owner_, parent_, listed_}));
    if (really && node_->isPresent())
        stage.removeOne(*node_);
    markDeleted();
}

core::CoreNode* NodeHandle::cloneNode(bool withChildren)
{
    if (isDeleted())
        return nullptr;
    Stage& stage = node_->stage();
    StageNode& copy = stage.duplicate(*node_, withChildren);
    NodeHandle& handle = stage.makeHandle(copy, nullptr, shortName(), nullptr, userValue_);
    handle.owned_ = false;
    return &handle;
}

} // namespace tvw::rgs::stage
