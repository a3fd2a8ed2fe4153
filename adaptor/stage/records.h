/// The stage's own undo records. Each swaps what it remembers with what stands: undo, redo and the
/// cancelling of a bracket are the same step.
#pragma once

#include "adaptor/stage/stage_node.h"
#include "core/adaptor_interface.h"
#include "core/contract/undo.h"

namespace tvw::rgs::stage {

class SwapRecord : public CUndo
{
public:
    void restore(bool) final { exchange(); }
    void redo() final { exchange(); }

protected:
    virtual void exchange() = 0;
};

/// All keys of one track, as they stood at the first change inside a bracket.
template <class T>
class TrackRecord final : public SwapRecord
{
public:
    TrackRecord(StageNode& node, Animated<T>& track)
        : node_(node), track_(track), other_(track.keys.content())
    {
    }

private:
    void exchange() override
    {
        track_.keys.exchange(other_);
        node_.touchPose();
    }

    StageNode& node_;
    Animated<T>& track_;
    typename KeyTrack<T>::Content other_;
};

/// Name, flags, properties, geometry and constant values of one node.
class NodeStateRecord final : public SwapRecord
{
public:
    explicit NodeStateRecord(StageNode& node) : node_(node), other_(node.state_) {}

private:
    void exchange() override;

    StageNode& node_;
    NodeState other_;
};

/// Where a node hangs.
class LinkRecord final : public SwapRecord
{
public:
    explicit LinkRecord(StageNode& node);

private:
    void exchange() override;

    StageNode& node_;
    StageNode* parent_;
    std::size_t place_; ///< among the parent's children
};

/// That a node stands in the scene, or does not. Keeps its content while it can come back.
class PresenceRecord final : public SwapRecord
{
public:
    explicit PresenceRecord(StageNode& node);
    ~PresenceRecord() override;

private:
    void exchange() override;

    StageNode& node_;
    StageNode* parent_;
    std::size_t place_;
};

/// What ties a handle to its tool: put back when the node's creation or deletion is taken back.
class NodeInstanceRestoreObj final : public SwapRecord
{
public:
    struct Tie
    {
        CInterface* owner = nullptr;
        core::CoreNode* parent = nullptr;
        bool listed = false;
    };

    NodeInstanceRestoreObj(NodeHandle& handle, const Tie& other);
    ~NodeInstanceRestoreObj() override;

private:
    void exchange() override;

    NodeHandle& handle_;
    Tie other_;
};

/// The time and the range at the start of a run.
class CSetTimeRestoreObj final : public SwapRecord
{
public:
    explicit CSetTimeRestoreObj(Stage& stage);

private:
    void exchange() override;

    Stage& stage_;
    double time_;
    core::TimeRange range_;
};

/// The range and the frame rate.
class RangeRecord final : public SwapRecord
{
public:
    explicit RangeRecord(Stage& stage);

private:
    void exchange() override;

    Stage& stage_;
    core::TimeRange range_;
    double baseRate_;
};

} // namespace tvw::rgs::stage
