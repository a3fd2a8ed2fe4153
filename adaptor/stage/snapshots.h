/// The stage's views of a node at one time, and the pools from which they come.
#pragma once

#include "adaptor/stage/flicks.h"
#include "core/contract/codes.h"
#include "core/core_node.h"

#include <memory>
#include <vector>

namespace tvw::rgs::stage {

class StageNode;

/// What all five kinds share. A time of the stage's own for the kinds that have none.
class SnapshotBase
{
public:
    SnapshotBase() = default;
    SnapshotBase(const SnapshotBase&) = delete;
    SnapshotBase& operator=(const SnapshotBase&) = delete;

    void open(StageNode& node, double time) noexcept
    {
        node_ = &node;
        time_ = time;
        inUse_ = true;
    }
    /// Back to the pool that `home` belongs to. Once is enough; a second time does nothing.
    void close() noexcept
    {
        if (inUse_)
            home_->push_back(this); // room was made when this was
        inUse_ = false;
    }
    void setHome(std::vector<SnapshotBase*>& home) noexcept { home_ = &home; }

protected:
    ~SnapshotBase() = default;

    StageNode* node_ = nullptr;
    double time_ = 0.0;
    std::vector<SnapshotBase*>* home_ = nullptr;
    bool inUse_ = false;
};

class PoseSnapshot final : public core::HostSnapshot<CSnapshot>, public SnapshotBase
{
public:
    void giveBack() noexcept override { close(); }
    void setLocal(const Matrix4& transform) override;
    void getLocal(Matrix4& out) override;
    void getGlobal(Matrix4& out) override;
    void setGlobal(const Matrix4& transform) override;
    double getTime() override { return time_; }
};

class HelperSnapshot final : public core::HostSnapshot<CSnapshot_Helper>, public SnapshotBase
{
public:
    void giveBack() noexcept override { close(); }
    void setMesh(const CMesh& mesh) override;
    void setColor(float red, float green, float blue) override;
    void setWireframe(bool on) override;
    void setAlwaysOnTop(bool on) override;
};

class MeshSnapshot final : public core::HostSnapshot<CSnapshot_Mesh>, public SnapshotBase
{
public:
    std::intptr_t call(std::int32_t code, void* argument) override; ///< code 62
    std::vector<std::int32_t> supportedCodes() override { return {code::castRayFan}; }
    void giveBack() noexcept override { close(); }
    void setMesh(const CMesh& mesh) override;
    CMesh getMesh() override;
    bool rayCast(const Vector3<double>& origin, const Vector3<double>& direction, double* distance,
                 Vector3<double>* normal) override;
};

class LensSnapshot final : public core::HostSnapshot<CSnapshot_Lens>, public SnapshotBase
{
public:
    void giveBack() noexcept override { close(); }
    void setFieldOfView(double degrees) override;
    double getFieldOfView() override;
    int getFieldOfViewType() override;
    void setFieldOfViewType(int type) override;
    void setTargetDistance(double distance) override;
    double getTargetDistance() override;
    double getTime() override { return time_; }
    /// The identity: the stage's views have no fixed aspect ratio.
    void getProjection(Matrix4& out) override { out = Matrix4{}; }
};

/// A node has one curve, in its own space.
class ShapeSnapshot final : public core::HostSnapshot<CSnapshot_Shape>, public SnapshotBase
{
public:
    void giveBack() noexcept override { close(); }
    int curveCount() override { return 1; }
    int selectCurve(int) override { return 0; }
    double curveLength() override;
    void pointAt(Vector3<double>& out, double u) override;
    void tangentAt(Vector3<double>& out, double u) override;
};

/// Snapshots of one kind. The one that was given back last is handed out next, so that a tick
/// allocates nothing once as many exist as are open at the same time, and finds them in the nearest
/// cache.
template <class S>
class SnapshotPool
{
public:
    S* take(StageNode& node, double time)
    {
        if (free_.empty())
            make();
        S* const snapshot = static_cast<S*>(free_.back());
        free_.pop_back();
        snapshot->open(node, time);
        return snapshot;
    }

private:
    void make()
    {
        all_.push_back(std::make_unique<S>());
        all_.back()->setHome(free_);
        free_.reserve(all_.size());
        free_.push_back(all_.back().get());
    }

    std::vector<std::unique_ptr<S>> all_;
    std::vector<SnapshotBase*> free_;
};

/// One pool of each kind for all nodes of a stage.
struct SnapshotPools
{
    SnapshotPool<PoseSnapshot> poses;
    SnapshotPool<HelperSnapshot> helpers;
    SnapshotPool<MeshSnapshot> meshes;
    SnapshotPool<LensSnapshot> lenses;
    SnapshotPool<ShapeSnapshot> shapes;
};

} // namespace tvw::rgs::stage
