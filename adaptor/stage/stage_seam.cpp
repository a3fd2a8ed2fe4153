// The seam's side of the stage: handles, undo and runs. The tags stand in stage_tags.cpp.

#include "adaptor/stage/records.h"
#include "adaptor/stage/stage.h"
#include "core/contract/node.h"
#include "core/contract/plugin.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tvw::rgs::stage {

std::int32_t Stage::getInterfaceVersion()
{
    return kInterfaceVersion;
}

core::CoreNode* Stage::createHelperNode(CInterface* owner, std::string name, CNode* parent,
                                        std::int64_t userValue)
{
    return makeToolNode(owner, name, parent, NodeKind::Helper, nullptr, userValue);
}

core::CoreNode* Stage::createMeshNode(CInterface* owner, std::string name, CNode* parent,
                                      const CMesh* mesh, std::int64_t userValue)
{
    const CMesh none;
    return makeToolNode(owner, name, parent, NodeKind::Mesh, mesh ? mesh : &none, userValue);
}

core::CoreNode* Stage::makeToolNode(CInterface* owner, const std::string& name, CNode* parent,
                                    NodeKind kind, const CMesh* mesh, std::int64_t userValue)
{
    NodeState state;
    const std::string prefix = hooks.ownerName && owner ? hooks.ownerName(owner) + "_" : "";
    state.name = prefix + name;
    if (mesh)
        state.mesh = std::make_shared<const StageMesh>(*mesh);
    auto* const above = dynamic_cast<NodeHandle*>(parent);
    StageNode& node = add(userValue == nodekind::camera ? NodeKind::Camera : kind, std::move(state),
                          above ? &above->node() : nullptr);
    NodeHandle& handle = makeHandle(node, owner, name, above, userValue);
    return &handle;
}

NodeHandle& Stage::makeHandle(StageNode& node, CInterface* owner, std::string shortName,
                              core::CoreNode* parent, std::int64_t userValue)
{
    handles_.push_back(
        std::make_unique<NodeHandle>(node, owner, std::move(shortName), parent, userValue));
    NodeHandle& handle = *handles_.back();
    node.handles_.push_back(&handle);
    handlesOf_[owner].push_back(&handle);
    if (undo_.isOpen())
        undo_.push(new NodeInstanceRestoreObj(handle, {}));
    handle.listed_ = true;
    return handle;
}

NodeHandle& Stage::looseHandle(StageNode& node)
{
    auto found = std::find_if(loose_.begin(), loose_.end(),
                              [](const std::unique_ptr<NodeHandle>& h) { return h->free_; });
    if (found == loose_.end()) {
        loose_.push_back(std::make_unique<NodeHandle>(node, nullptr, "", nullptr, 0));
        found = loose_.end() - 1;
    }
    NodeHandle& handle = **found;
    handle.node_ = &node;
    handle.loose_ = true;
    handle.free_ = false;
    handle.owned_ = false;
    handle.owner_ = ownerOf(node); // who walks the tree asks whose each child is
    return handle;
}

void Stage::endHandle(NodeHandle& handle)
{
    if (handle.loose_) {
        handle.free_ = true;
        return;
    }
    handle.markDeleted();
    handle.ended_ = true;
    if (handle.records_ == 0)
        dropHandle(handle);
}

void Stage::dropHandle(NodeHandle& handle)
{
    const auto siblings = handlesOf_.find(handle.maker_);
    std::erase(siblings->second, &handle);
    if (siblings->second.empty())
        handlesOf_.erase(siblings);
    std::erase_if(handles_, [&](const auto& known) { return known.get() == &handle; });
}

core::CoreNode* Stage::findNode(CInterface* owner, std::string name)
{
    for (NodeHandle* const handle : handlesOf(owner)) {
        if (handle->listed_ && handle->owner_ == owner && handle->shortName() == name)
            return handle;
    }
    return nullptr;
}

const std::vector<NodeHandle*>& Stage::handlesOf(const CInterface* owner) const
{
    static const std::vector<NodeHandle*> none;
    const auto found = handlesOf_.find(owner);
    return found == handlesOf_.end() ? none : found->second;
}

void Stage::getAllNodes(ReturnValue<std::vector<core::CoreNode*>>& out)
{
    std::vector<core::CoreNode*> all;
    for (const auto& handle : handles_) {
        if (!handle->isDeleted())
            all.push_back(handle.get());
    }
    out.assign(all);
}

void Stage::getNodes(CInterface* owner, ReturnValue<std::vector<core::CoreNode*>>& out)
{
    std::vector<core::CoreNode*> own;
    for (NodeHandle* const handle : handlesOf(owner)) {
        if (handle->listed_ && handle->owner_ == owner)
            own.push_back(handle);
    }
    out.assign(own);
}

void Stage::mergeFile(std::string path, ReturnValue<std::vector<core::CoreNode*>>& out)
{
    std::vector<core::CoreNode*> found;
    if (hooks.mergeFile) {
        for (StageNode* node : hooks.mergeFile(path))
            found.push_back(&looseHandle(*node));
    }
    out.assign(found);
}

CInterface* Stage::ownerOf(const StageNode& node) const noexcept
{
    for (const NodeHandle* handle : node.handles_) {
        if (handle->listed_ && handle->owner_)
            return handle->owner_;
    }
    return nullptr;
}

void Stage::cancelUndo()
{
    undo_.cancel();
    newEpoch();
}

bool Stage::hostUndo()
{
    newEpoch();
    return undo_.undo();
}

bool Stage::hostRedo()
{
    newEpoch();
    return undo_.redo();
}

void Stage::redrawViews()
{
    if (hooks.redrawViews)
        hooks.redrawViews();
}

void Stage::beginRun(std::vector<CInterface*>& instances)
{
    undo_.push(new CSetTimeRestoreObj(*this));
    std::vector<StageNode*> nodes;
    std::vector<StageNode*>
        touched; // and cameras whose pose is the user's: a tool may drive their lens
    for (const CInterface* const instance : instances) {
        for (NodeHandle* const handle : handlesOf(instance)) {
            if (handle->owner_ != instance || handle->isDeleted())
                continue;
            if (handle->owned_)
                nodes.push_back(handle->node_);
            if (handle->owned_ || handle->node_->hasLens())
                touched.push_back(handle->node_);
        }
    }
    // The poses are read before the first is written: none may see another's key.
    std::vector<Matrix4> poses;
    for (const StageNode* node : nodes)
        poses.push_back(node->local(time_));
    prepareRun(touched);
    beginPlainRun();
    for (std::size_t i = 0; i < nodes.size(); ++i)
        nodes[i]->setLocal(poses[i], time_, true);
}

namespace {

/// Sets that grow together.
class Sets
{
public:
    explicit Sets(std::size_t count) : above_(count) { std::iota(above_.begin(), above_.end(), 0); }

    void join(std::size_t a, std::size_t b) { above_[top(a)] = top(b); }

    /// For each member the number of its set, counted in the order of their first members.
    [[nodiscard]] std::vector<std::size_t> numbers()
    {
        constexpr std::size_t kNone = ~std::size_t{0};
        std::vector<std::size_t> ofTop(above_.size(), kNone);
        std::vector<std::size_t> out(above_.size());
        std::size_t count = 0;
        for (std::size_t i = 0; i < above_.size(); ++i) {
            std::size_t& number = ofTop[top(i)];
            if (number == kNone)
                number = count++;
            out[i] = number;
        }
        return out;
    }

private:
    std::size_t top(std::size_t i)
    {
        while (above_[i] != i)
            i = above_[i] = above_[above_[i]]; // halves the way for the next
        return i;
    }
    std::vector<std::size_t> above_;
};

} // namespace

std::vector<std::size_t> Stage::separate(const std::vector<CInterface*>& instances)
{
    std::unordered_map<const CInterface*, std::size_t> places;
    for (std::size_t i = 0; i < instances.size(); ++i)
        places[instances[i]] = i;
    Sets sets(instances.size());
    for (std::size_t i = 0; i < instances.size(); ++i) {
        for (const NodeHandle* const handle : handlesOf(instances[i])) {
            if (handle->owner_ != instances[i])
                continue;
            for (const StageNode* node = handle->node_; node; node = node->parent_) {
                for (const NodeHandle* const other : node->handles_) {
                    const auto owner = places.find(other->owner_);
                    if (owner != places.end())
                        sets.join(i, owner->second);
                }
            }
        }
    }
    return sets.numbers();
}

void Stage::prepareRun(const std::vector<StageNode*>& nodes)
{
    // Room for what the range shows, within reason: a longer run takes fresh blocks as it goes.
    constexpr double kMostFrames = 4096.0;
    const double span = std::max(0.0, range_.end - time_) * baseRate_;
    const auto frames = static_cast<std::size_t>(std::min(kMostFrames, span)) + 1;
    std::size_t lenses = 0;
    for (StageNode* node : nodes) {
        node->prepareRun(frames);
        lenses += node->hasLens() ? 2 : 0;
    }
    KeyTrack<Matrix4>::reserveBlocks(nodes.size(), frames);
    KeyTrack<double>::reserveBlocks(lenses, frames);
}

void Stage::beginPlainRun()
{
    if (!inRun_)
        keyModeBeforeRun_ = keyMode_;
    inRun_ = true;
    keyMode_ = true;
}

void Stage::endRun()
{
    if (!inRun_)
        return;
    inRun_ = false;
    keyMode_ = keyModeBeforeRun_;
}

void Stage::shutdown()
{
    endRun();
    // The tools are gone, and soon the code of external ones: no record of theirs may stay.
    undo_.clear();
    for (const auto& handle : handles_)
        handle->markDeleted();
    selecting_ = false;
    hostKeysOff_ = 0;
}

void Stage::showError(std::string text, std::string title)
{
    messages_.push_back({title, text});
    if (hooks.showError)
        hooks.showError(text, title);
}

} // namespace tvw::rgs::stage
