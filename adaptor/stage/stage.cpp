#include "adaptor/stage/stage.h"

#include "adaptor/stage/records.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <malloc.h>

namespace tvw::rgs::stage {

namespace {

/// Of a ten minutes' take of a car a step holds some 100 MB: hours of work must not fill the
/// machine.
constexpr std::size_t kUndoMemory = std::size_t{1} << 30; // [bytes]

/// All that is in use in the process, without the blocks of keys that wait for the next take.
std::size_t memoryInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd - KeyTrack<Matrix4>::idleBytes() -
           KeyTrack<double>::idleBytes();
}

} // namespace

Stage::Stage()
{
    undo_.setMemoryLimit(kUndoMemory, &memoryInUse);
}

Stage::~Stage() = default;

StageNode& Stage::addEmpty(const std::string& name, const Matrix4& local, StageNode* parent)
{
    NodeState state;
    state.name = name;
    state.local = local;
    return add(NodeKind::Helper, std::move(state), parent);
}

StageNode& Stage::addMesh(const std::string& name, std::shared_ptr<const StageMesh> mesh,
                          const Matrix4& local, StageNode* parent)
{
    NodeState state;
    state.name = name;
    state.local = local;
    state.mesh = std::move(mesh);
    return add(NodeKind::Mesh, std::move(state), parent);
}

StageNode& Stage::addMesh(const std::string& name, const CMesh& mesh, const Matrix4& local,
                          StageNode* parent)
{
    return addMesh(name, std::make_shared<const StageMesh>(mesh), local, parent);
}

StageNode& Stage::addCamera(const std::string& name, double fovDegrees, const Matrix4& local,
                            StageNode* parent)
{
    NodeState state;
    state.name = name;
    state.local = local;
    StageNode& node = add(NodeKind::Camera, std::move(state), parent);
    node.setFov(fovDegrees, time_, false);
    return node;
}

StageNode& Stage::addSpline(const std::string& name, std::vector<Vector3d> points, bool closed,
                            const Matrix4& local, StageNode* parent)
{
    NodeState state;
    state.name = name;
    state.local = local;
    state.spline = std::make_shared<const SplineCurve>(std::move(points), closed);
    return add(NodeKind::Spline, std::move(state), parent);
}

StageNode& Stage::add(NodeKind kind, NodeState state, StageNode* parent)
{
    nodes_.push_back(std::unique_ptr<StageNode>(new StageNode(*this, kind)));
    StageNode& node = *nodes_.back();
    state.name = freeName(state.name, nullptr);
    node.state_ = std::move(state);
    StageNode* const above = parent && parent->present_ ? parent : nullptr;
    if (undo_.isOpen())
        undo_.push(new PresenceRecord(node));
    enter(node, above, siblingsOf(above).size());
    return node;
}

StageNode& Stage::duplicate(StageNode& node, bool withChildren)
{
    return copyBelow(node, node.parent_, withChildren);
}

StageNode& Stage::copyBelow(StageNode& node, StageNode* parent, bool withChildren)
{
    NodeState state = node.state_;
    state.selected = false;
    StageNode& copy = add(node.kind_, std::move(state), parent);
    const auto copyKeys = [](auto& to, auto& from) {
        auto content = from.keys.content();
        to.keys.exchange(content);
    };
    copyKeys(copy.pose_, node.pose_);
    copyKeys(copy.fov_, node.fov_);
    copyKeys(copy.targetDistance_, node.targetDistance_);
    if (withChildren) {
        const std::vector<StageNode*> children = node.children_;
        for (StageNode* child : children)
            copyBelow(*child, &copy, true);
    }
    return copy;
}

void Stage::remove(const std::vector<StageNode*>& nodes)
{
    std::vector<StageNode*> present;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(present),
                 [](const StageNode* node) { return node->present_; });
    if (present.empty())
        return;
    tell([&](StageListener& listener) { listener.nodesAboutToBeDeleted(present); });
    for (StageNode* node : present)
        removeOne(*node);
}

void Stage::removeOne(StageNode& node)
{
    if (!node.present_)
        return;
    const std::vector<StageNode*> children = node.children_;
    for (StageNode* child : children)
        child->setParent(node.parent_);
    if (undo_.isOpen())
        undo_.push(new PresenceRecord(node));
    leave(node);
    if (node.presenceRecords_ == 0)
        node.releaseContent();
}

StageNode* Stage::find(const std::string& name) const
{
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

std::vector<StageNode*> Stage::nodes() const
{
    std::vector<StageNode*> all;
    forEachNode([&](StageNode& node) { all.push_back(&node); });
    return all;
}

std::vector<StageNode*> Stage::selection() const
{
    std::vector<StageNode*> chosen;
    forEachNode([&](StageNode& node) {
        if (node.state_.selected)
            chosen.push_back(&node);
    });
    return chosen;
}

void Stage::select(StageNode& node, bool add)
{
    if (!node.present_)
        return;
    for (StageNode* other : selection()) {
        if (!add && other != &node)
            other->setSelected(false);
    }
    node.setSelected(true);
}

void Stage::clearSelection()
{
    for (StageNode* node : selection())
        node->setSelected(false);
}

void Stage::clear()
{
    tell([](StageListener& listener) { listener.sceneClosing(); });
    undo_.clear();
    handlesOf_.clear();
    handles_.clear();
    loose_.clear();
    top_.clear();
    byName_.clear();
    suffixes_.clear();
    nodes_.clear();
    KeyTrack<Matrix4>::trimBlocks();
    KeyTrack<double>::trimBlocks();
    selecting_ = false;
    ++version_;
    ++poseVersion_;
}

std::size_t Stage::placeOf(const StageNode& node)
{
    const std::vector<StageNode*>& siblings = siblingsOf(node.parent_);
    return static_cast<std::size_t>(std::find(siblings.begin(), siblings.end(), &node) -
                                    siblings.begin());
}

void Stage::link(StageNode& node, StageNode* parent, std::size_t place)
{
    std::vector<StageNode*>& siblings = siblingsOf(parent);
    siblings.insert(siblings.begin() + std::min(place, siblings.size()), &node);
    node.parent_ = parent;
    node.touchPose();
}

void Stage::unlink(StageNode& node)
{
    std::erase(siblingsOf(node.parent_), &node);
    node.parent_ = nullptr;
    node.touchPose();
}

void Stage::enter(StageNode& node, StageNode* parent, std::size_t place)
{
    node.state_.name = freeName(node.state_.name, &node); // it may have been taken meanwhile
    byName_[node.state_.name] = &node;
    node.present_ = true;
    link(node, parent, place);
}

void Stage::leave(StageNode& node)
{
    const std::vector<StageNode*> children = node.children_;
    for (StageNode* child : children) {
        unlink(*child);
        link(*child, node.parent_, siblingsOf(node.parent_).size());
    }
    unlink(node);
    node.present_ = false;
    byName_.erase(node.state_.name);
}

std::string Stage::freeName(const std::string& wanted, const StageNode* self)
{
    constexpr std::size_t kLongest = 1024;
    std::string name = wanted.empty() ? "Node" : wanted.substr(0, kLongest);
    while (name.size() == kLongest && wanted.size() > kLongest && !name.empty() &&
           (static_cast<unsigned char>(wanted[name.size()]) & 0xC0U) == 0x80U)
        name.pop_back(); // a character of several bytes is not cut in two
    const auto isFree = [&](const std::string& candidate) {
        const auto found = byName_.find(candidate);
        return found == byName_.end() || found->second == self;
    };
    if (isFree(name))
        return name;
    int& last = suffixes_[name];
    for (;;) {
        std::string digits = std::to_string(++last);
        digits.insert(0, digits.size() < 3 ? 3 - digits.size() : 0, '0');
        if (std::string candidate = name + digits; isFree(candidate))
            return candidate;
    }
}

void Stage::nameChanged(StageNode& node, const std::string& old)
{
    if (!node.present_)
        return;
    const auto found = byName_.find(old);
    if (found != byName_.end() && found->second == &node)
        byName_.erase(found);
    byName_[node.state_.name] = &node;
}

void Stage::addListener(StageListener& listener)
{
    listeners_.push_back(&listener);
}

void Stage::removeListener(StageListener& listener)
{
    std::erase(listeners_, &listener);
}

template <class F>
void Stage::tell(F&& f)
{
    // By index: the list may change while its members are told.
    for (std::size_t i = 0; i < listeners_.size(); ++i)
        f(*listeners_[i]);
}

void Stage::tellSceneOpened()
{
    tell([](StageListener& listener) { listener.sceneOpened(); });
}

void Stage::tellBeforeSave()
{
    tell([](StageListener& listener) { listener.beforeSave(); });
}

void Stage::tellAfterSave()
{
    tell([](StageListener& listener) { listener.afterSave(); });
    clearNodeTags();
}

void Stage::tellClosing()
{
    tell([](StageListener& listener) { listener.stageClosing(); });
}

void Stage::newEpoch() noexcept
{
    ++epoch_; // held poses end here
    ++poseVersion_;
    ++version_;
}

void Stage::setTime(double time)
{
    if (!std::isfinite(time))
        return;
    time_ = time;
    newEpoch();
    tell([time](StageListener& listener) { listener.timeChanged(time); });
}

void Stage::swapTime(double& time, core::TimeRange& range)
{
    std::swap(range_, range);
    const double other = time;
    time = time_;
    setTime(other);
}

void Stage::setFramesPerSecond(double baseRate)
{
    if (!std::isfinite(baseRate) || baseRate <= 0.0)
        return;
    noteRange();
    baseRate_ = baseRate;
    ++version_;
}

void Stage::setTimeScale(std::int32_t n)
{
    timeScale_ = std::max<std::int32_t>(1, n);
}

void Stage::setRange(const core::TimeRange& range)
{
    if (!std::isfinite(range.start) || !std::isfinite(range.end) || range.end < range.start)
        return;
    noteRange();
    range_ = range;
    ++version_;
}

void Stage::noteRange()
{
    const std::uint64_t bracket = undo_.bracket();
    if (bracket == 0 || rangeNoted_ == bracket)
        return;
    rangeNoted_ = bracket;
    undo_.push(new RangeRecord(*this));
}

} // namespace tvw::rgs::stage
