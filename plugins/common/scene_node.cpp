#include "plugins/common/scene_node.h"

namespace tvw::rgs {

namespace {

/// A snapshot for the length of a block.
class Pose
{
public:
    Pose(CInterface* runtime, CNode* node, double time)
        : runtime_(runtime), snapshot_(node ? runtime->getSnapshot(node, time) : nullptr)
    {
    }
    ~Pose()
    {
        if (snapshot_)
            runtime_->releaseSnapshot(snapshot_);
    }
    Pose(const Pose&) = delete;
    Pose& operator=(const Pose&) = delete;

    explicit operator bool() const { return snapshot_ != nullptr; }
    CSnapshot* operator->() const { return snapshot_; }

private:
    CInterface* runtime_;
    CSnapshot* snapshot_;
};

} // namespace

bool SceneNode::create(CInterface& runtime, CNode* parent)
{
    runtime_ = &runtime;
    const CMesh mesh = row_->mesh();
    handle_ = runtime.createMeshNode(name_, parent, &mesh, row_->kind);
    if (!handle_)
        return false;
    if (!row_->keyed)
        handle_->call(code::disown, nullptr);
    if (row_->selected)
        handle_->select();

    const Matrix4 pose = row_->place ? row_->place() : Matrix4{};
    const double now = runtime.getTime();
    setLocal(0.0, pose);
    if (now != 0.0)
        setLocal(now, pose);

    if (CSnapshot_Helper* helper = runtime.getHelperSnapshot(handle_)) {
        helper->setWireframe(false);
        helper->setColor(row_->color.red, row_->color.green, row_->color.blue);
        runtime.releaseHelperSnapshot(helper);
    }
    return true;
}

bool SceneNode::remove()
{
    if (handle_)
        runtime_->deleteNode(handle_);
    handle_ = nullptr;
    return true;
}

void SceneNode::show()
{
    if (exists())
        handle_->show();
}

void SceneNode::hide()
{
    if (exists())
        handle_->hide();
}

void SceneNode::setDisplayFlag(bool on)
{
    if (!exists())
        return;
    if (CSnapshot_Helper* helper = runtime_->getHelperSnapshot(handle_)) {
        helper->setWireframe(on);
        runtime_->releaseHelperSnapshot(helper);
    }
}

bool SceneNode::find(CInterface& runtime)
{
    runtime_ = &runtime;
    handle_ = runtime.getNode(name_);
    return handle_ != nullptr;
}

bool SceneNode::readGlobal(double time, Matrix4& out) const
{
    if (!exists())
        return false;
    const Pose pose(runtime_, handle_, time);
    if (!pose)
        return false;
    pose->getGlobal(out);
    return true;
}

bool SceneNode::readLocal(double time, Matrix4& out) const
{
    if (!exists())
        return false;
    const Pose pose(runtime_, handle_, time);
    if (!pose)
        return false;
    pose->getLocal(out);
    return true;
}

Matrix4 SceneNode::global(double time) const
{
    Matrix4 pose;
    readGlobal(time, pose);
    return pose;
}

Matrix4 SceneNode::local(double time) const
{
    Matrix4 pose;
    readLocal(time, pose);
    return pose;
}

void SceneNode::setGlobal(double time, const Matrix4& pose)
{
    if (!exists())
        return;
    if (const Pose snapshot(runtime_, handle_, time); snapshot)
        snapshot->setGlobal(pose);
}

void SceneNode::setLocal(double time, const Matrix4& pose)
{
    if (!exists())
        return;
    if (const Pose snapshot(runtime_, handle_, time); snapshot)
        snapshot->setLocal(pose);
}

} // namespace tvw::rgs
