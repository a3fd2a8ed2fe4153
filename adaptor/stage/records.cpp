#include "adaptor/stage/records.h"

#include "adaptor/stage/stage.h"

#include <utility>

namespace tvw::rgs::stage {

void NodeStateRecord::exchange()
{
    std::swap(node_.state_, other_);
    if (node_.state_.name != other_.name)
        node_.stage_->nameChanged(node_, other_.name);
    node_.touchPose();
}

LinkRecord::LinkRecord(StageNode& node)
    : node_(node), parent_(node.parent_), place_(node.stage_->placeOf(node))
{
}

void LinkRecord::exchange()
{
    if (!node_.present_)
        return;
    Stage& stage = *node_.stage_;
    StageNode* const parent = node_.parent_;
    const std::size_t place = stage.placeOf(node_);
    stage.unlink(node_);
    const bool fits = !parent_ || (parent_->present_ && !parent_->isBelow(node_));
    stage.link(node_, fits ? parent_ : nullptr, place_);
    parent_ = parent;
    place_ = place;
    node_.touchPose();
}

PresenceRecord::PresenceRecord(StageNode& node)
    : node_(node), parent_(node.parent_), place_(node.present_ ? node.stage_->placeOf(node) : 0)
{
    ++node_.presenceRecords_;
}

PresenceRecord::~PresenceRecord()
{
    if (--node_.presenceRecords_ == 0 && !node_.present_)
        node_.releaseContent(); // nothing can bring it back
}

void PresenceRecord::exchange()
{
    Stage& stage = *node_.stage_;
    if (node_.present_) {
        parent_ = node_.parent_;
        place_ = stage.placeOf(node_);
        stage.leave(node_);
    } else {
        stage.enter(node_, parent_ && parent_->present_ ? parent_ : nullptr, place_);
    }
}

NodeInstanceRestoreObj::NodeInstanceRestoreObj(NodeHandle& handle, const Tie& other)
    : handle_(handle), other_(other)
{
    ++handle_.records_;
}

NodeInstanceRestoreObj::~NodeInstanceRestoreObj()
{
    if (--handle_.records_ == 0 && handle_.ended_)
        handle_.node_->stage().dropHandle(handle_);
}

void NodeInstanceRestoreObj::exchange()
{
    const Tie now{handle_.owner_, handle_.parent_, handle_.listed_};
    handle_.owner_ = other_.owner;
    handle_.parent_ = other_.parent;
    handle_.listed_ = other_.listed;
    other_ = now;
}

CSetTimeRestoreObj::CSetTimeRestoreObj(Stage& stage)
    : stage_(stage), time_(stage.time_), range_(stage.range_)
{
}

void CSetTimeRestoreObj::exchange()
{
    stage_.swapTime(time_, range_);
}

RangeRecord::RangeRecord(Stage& stage)
    : stage_(stage), range_(stage.range_), baseRate_(stage.baseRate_)
{
}

void RangeRecord::exchange()
{
    std::swap(stage_.range_, range_);
    std::swap(stage_.baseRate_, baseRate_);
    ++stage_.version_;
}

} // namespace tvw::rgs::stage
