#include "adaptor/stage/stage_node.h"

#include "adaptor/stage/records.h"
#include "adaptor/stage/stage.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::stage {

namespace {

bool isUsable(const Matrix4& m)
{
    return std::all_of(std::begin(m.m), std::end(m.m), [](double x) { return std::isfinite(x); });
}

/// A field of the state is set only where it differs: an unchanged one costs no undo record.
template <class V>
bool differs(const V& a, const V& b)
{
    return !(a == b);
}

} // namespace

const char* nameOf(NodeKind kind) noexcept
{
    constexpr const char* kNames[] = {"helper", "mesh", "camera", "spline"};
    return kNames[static_cast<int>(kind)];
}

void StageNode::touch() noexcept
{
    ++version_;
    ++stage_->version_;
}

void StageNode::touchPose() noexcept
{
    ++poseVersion_;
    ++stage_->poseVersion_;
    touch();
}

NodeState& StageNode::change()
{
    const std::uint64_t bracket = stage_->undo_.bracket();
    if (bracket != 0 && stateNoted_ != bracket) {
        stateNoted_ = bracket;
        stage_->undo_.push(new NodeStateRecord(*this));
    }
    touch();
    return state_;
}

template <class T>
KeyTrack<T>& StageNode::changeKeys(Animated<T>& track)
{
    const std::uint64_t bracket = stage_->undo_.bracket();
    if (bracket != 0 && track.noted != bracket) {
        track.noted = bracket;
        stage_->undo_.push(new TrackRecord<T>(*this, track));
    }
    return track.keys;
}

template <class T>
void StageNode::write(Animated<T>& track, T NodeState::*constant, const T& value, Flicks time,
                      bool key)
{
    if (key) {
        track.letGo();
        changeKeys(track).write(time, value);
    } else if (track.keys.empty()) {
        if (differs(state_.*constant, value))
            change().*constant = value;
    } else {
        track.hold(time, stage_->epoch_, value);
    }
}

bool StageNode::isBelow(const StageNode& other) const noexcept
{
    for (const StageNode* node = this; node; node = node->parent_) {
        if (node == &other)
            return true;
    }
    return false;
}

void StageNode::rename(const std::string& name)
{
    if (!present_ || name == state_.name)
        return;
    const std::string old = state_.name;
    change().name = stage_->freeName(name, this);
    stage_->nameChanged(*this, old);
}

bool StageNode::setParent(StageNode* parent)
{
    if (!present_ || (parent && (!parent->present_ || parent->isBelow(*this))))
        return false;
    if (parent == parent_)
        return true;
    const Flicks now = toFlicks(stage_->time_);
    const Matrix4 before = parent_ ? parent_->worldAt(now) : Matrix4{};
    const Matrix4 after = parent ? parent->worldAt(now) : Matrix4{};
    if (stage_->undo_.isOpen())
        stage_->undo_.push(new LinkRecord(*this));
    stage_->unlink(*this);
    stage_->link(*this, parent, stage_->siblingsOf(parent).size());
    const Matrix4 by = inverse(after) * before;
    // A parent that is flattened to nothing has no inverse: the local pose then stays.
    if (by[15] != 0.0 && isUsable(by) && !(by == Matrix4{}))
        carry(by);
    return true;
}

void StageNode::carry(const Matrix4& by)
{
    change().local = by * state_.local;
    if (!pose_.keys.empty())
        changeKeys(pose_).transformValues([&](Matrix4& value) { value = by * value; });
    pose_.held = by * pose_.held;
    touchPose();
}

void StageNode::setVisible(bool on)
{
    if (state_.visible != on)
        change().visible = on;
}

void StageNode::setSelected(bool on)
{
    if (state_.selected != on)
        change().selected = on;
}

void StageNode::setColor(float red, float green, float blue)
{
    const auto held = [](float part) { return part > 0.0F ? std::min(part, 1.0F) : 0.0F; };
    const std::array<float, 3> color{held(red), held(green), held(blue)};
    if (differs(state_.color, color))
        change().color = color;
}

void StageNode::setWireframe(bool on)
{
    if (state_.wireframe != on)
        change().wireframe = on;
}

void StageNode::setAlwaysOnTop(bool on)
{
    if (state_.alwaysOnTop != on)
        change().alwaysOnTop = on;
}

std::string StageNode::property(const std::string& key) const
{
    const auto found = state_.properties.find(key);
    return found == state_.properties.end() ? std::string() : found->second;
}

void StageNode::setProperty(const std::string& key, const std::string& text)
{
    if (property(key) == text)
        return;
    if (text.empty())
        change().properties.erase(key);
    else
        change().properties[key] = text;
}

void StageNode::fetch() const noexcept
{
    __builtin_prefetch(&worlds_);
    pose_.keys.fetchEnd();
}

Matrix4 StageNode::localAt(Flicks time) const noexcept
{
    return pose_.at(time, stage_->epoch_, state_.local);
}

const Matrix4& StageNode::worldAt(Flicks time) const
{
    return worldPoses_[worldIndex(time)];
}

std::size_t StageNode::worldIndex(Flicks time) const
{
    std::size_t index = worlds_.size();
    for (std::size_t i = 0; i < worlds_.size(); ++i) {
        if (worlds_[i].sceneVersion != 0 && worlds_[i].time == time)
            index = i;
    }
    const bool known = index != worlds_.size();
    if (known && worlds_[index].sceneVersion == stage_->poseVersion_)
        return index;

    const std::size_t above = parent_ ? parent_->worldIndex(time) : 0;
    const std::uint64_t parentStamp = parent_ ? parent_->worlds_[above].stamp : 0;
    if (!known) {
        index = oldestWorld_;
        oldestWorld_ ^= 1U;
    }
    WorldEntry& entry = worlds_[index];
    const bool stands = known && entry.ownVersion == poseVersion_ &&
                        entry.parentStamp == parentStamp &&
                        (entry.heldEpoch == 0 || entry.heldEpoch == stage_->epoch_);
    if (!stands) {
        const Matrix4 local = localAt(time);
        worldPoses_[index] = parent_ ? parent_->worldPoses_[above] * local : local;
        entry.time = time;
        entry.ownVersion = poseVersion_;
        entry.parentStamp = parentStamp;
        entry.stamp = ++stage_->worldStamp_;
        entry.heldEpoch = pose_.isHeld(time, stage_->epoch_) ? stage_->epoch_ : 0;
    }
    entry.sceneVersion = stage_->poseVersion_;
    return index;
}

bool StageNode::setLocal(const Matrix4& pose, double time, bool key)
{
    return setLocalAt(pose, toFlicks(time), key);
}

bool StageNode::setWorld(const Matrix4& pose, double time, bool key)
{
    return setWorldAt(pose, toFlicks(time), key);
}

bool StageNode::setWorldAt(const Matrix4& pose, Flicks time, bool key)
{
    return setLocalAt(parent_ ? inverse(parent_->worldAt(time)) * pose : pose, time, key);
}

bool StageNode::setLocalAt(const Matrix4& pose, Flicks time, bool key)
{
    if (!present_ || !isUsable(pose))
        return false;
    write(pose_, &NodeState::local, pose, time, key);
    touchPose();
    return true;
}

std::vector<double> StageNode::poseKeyTimes() const
{
    std::vector<double> times;
    times.reserve(pose_.keys.size());
    pose_.keys.forEach([&](const TrackKey<Matrix4>& key) { times.push_back(toSeconds(key.time)); });
    return times;
}

bool StageNode::removePoseKey(double time)
{
    const Flicks at = toFlicks(time);
    if (!pose_.keys.hasKeyAt(at))
        return false;
    pose_.letGo();
    changeKeys(pose_).remove(at);
    touchPose();
    return true;
}

template <class T>
void StageNode::cutBehind(Animated<T>& track, double time)
{
    const Flicks at = toFlicks(time);
    track.letGo();
    if (!track.keys.empty() && track.keys.lastTime() > at)
        changeKeys(track).cutBehind(at);
}

void StageNode::deleteKeysBehind(double time)
{
    cutBehind(pose_, time);
    deleteLensKeysBehind(time);
    touchPose();
}

void StageNode::deleteLensKeysBehind(double time)
{
    if (!hasLens())
        return;
    cutBehind(fov_, time);
    cutBehind(targetDistance_, time);
    touch();
}

void StageNode::clearKeys()
{
    const auto clear = [&](auto& track) {
        track.letGo();
        if (!track.keys.empty())
            changeKeys(track).clear();
    };
    clear(pose_);
    clear(fov_);
    clear(targetDistance_);
    touchPose();
}

double StageNode::fov(double time) const
{
    return fov_.at(toFlicks(time), stage_->epoch_, state_.fov);
}

double StageNode::targetDistance(double time) const
{
    return targetDistance_.at(toFlicks(time), stage_->epoch_, state_.targetDistance);
}

bool StageNode::setFov(double degrees, double time, bool key)
{
    if (!present_ || !hasLens() || !std::isfinite(degrees))
        return false;
    write(fov_, &NodeState::fov, std::clamp(degrees, 0.01, 179.99), toFlicks(time), key);
    touch();
    return true;
}

bool StageNode::setTargetDistance(double distance, double time, bool key)
{
    if (!present_ || !hasLens() || !std::isfinite(distance))
        return false;
    write(targetDistance_, &NodeState::targetDistance, std::max(0.0, distance), toFlicks(time),
          key);
    touch();
    return true;
}

void StageNode::setViewAngle(ViewAngle type)
{
    if (state_.viewAngle != type)
        change().viewAngle = type;
}

void StageNode::setMesh(std::shared_ptr<const StageMesh> mesh)
{
    if (present_)
        change().mesh = std::move(mesh);
}

void StageNode::setSpline(std::vector<Vector3d> points, bool closed)
{
    if (present_ && kind_ == NodeKind::Spline)
        change().spline = std::make_shared<const SplineCurve>(std::move(points), closed);
}

void StageNode::prepareRun(std::size_t frames)
{
    pose_.letGo();
    changeKeys(pose_).reserve(frames);
    if (hasLens()) {
        changeKeys(fov_).reserve(frames);
        changeKeys(targetDistance_).reserve(frames);
    }
}

void StageNode::releaseContent() noexcept
{
    pose_.keys.clear();
    fov_.keys.clear();
    targetDistance_.keys.clear();
    state_.mesh.reset();
    state_.spline.reset();
}

} // namespace tvw::rgs::stage
