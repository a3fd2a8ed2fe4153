/// What the free-flying cameras share: a body in sub-steps, a lens that follows two spinners, and a
/// person beside the camera who shows its scale.
#pragma once

#include "plugins/common/camera_items.h"
#include "plugins/common/flying_body.h"
#include "plugins/common/helper_meshes.h"
#include "plugins/common/lens.h"
#include "plugins/common/observer_input.h"
#include "plugins/common/sub_steps.h"

namespace tvw::rgs {

struct FlyingSettings : CameraModes
{
    constexpr FlyingSettings() { hideDuringRecording = true; }

    double relativeScale = 1.0; ///< of speeds and of the person
    LensSpinners lens;
};

enum FlyingNode : std::size_t { kFlyingCamera, kHumanoid };

constexpr std::array<NodeRow, 2> flyingNodes(std::string_view camera)
{
    return {NodeRow{.prefix = {},
                    .name = camera,
                    .mesh = &shape::camera,
                    .color = kCameraColor,
                    .kind = nodekind::camera,
                    .group = NodeGroup::First,
                    .selected = true},
            NodeRow{.prefix = {},
                    .name = "HumanoidMesh",
                    .mesh = &shape::humanoid,
                    .color = kReferenceColor,
                    .parent = kFlyingCamera}};
}

/// The rows "Relative Scale" and the two of the lens.
template <class S>
inline constexpr Item<S> kRelativeScaleItem = Items<S>::template spinner<&S::relativeScale>(
    "Relative Scale", "Relative Scale", {1e-8, 1e16, 0.001}, kLive);

template <class S>
inline constexpr std::array<Item<S>, 2> kLensItems{
    Items<S>::template spinner<[](S& s) -> double& { return s.lens.fieldOfView; }>(
        "Field Of View", "Field Of View", {0, 180, 0.01}, kLive),
    Items<S>::template spinner<[](S& s) -> double& { return s.lens.targetDistance; }>(
        "Target Distance", "Target Distance", {0, 1e16, 0.01}, kLive)};

/// Where the person stands in the camera's own frame: beside it, eyes at its height, upright and
/// facing as it does.
Matrix4 besideCamera(const Quatd& camera, double scale);

/// S derives from FlyingSettings.
template <class S, std::size_t N>
class FlyingCamera : public ObserverTool<S, N>
{
protected:
    /// prefix: of the names under which the state is saved.
    FlyingCamera(const CCamera::CreateParam& param, const ToolSpec& spec,
                 std::span<const Item<S>> items, const std::string& prefix,
                 const std::array<ObserverRow, N>& inputs)
        : ObserverTool<S, N>(param, spec, items, prefix + "DataChunk")
    {
        const std::string animated = "anc" + prefix;
        body_.keepIn(this->state(), animated);
        this->keepInputs(animated, inputs);
        lens_.keepIn(this->state(), animated);
    }

    /// A start from the scene: the body has the node's motion, the inputs are at rest. h: of a
    /// sub-step [s].
    virtual void takesOff(double h) = 0;

    /// A frame in its sub-steps, in which inputs and settings stay.
    virtual void fly(const SubSteps& steps) = 0;

    FlyingBody body_;

private:
    bool startsAnew(double time) final
    {
        anew_ = !body_.continuesAt(this->node(kFlyingCamera), time, this->stepLength());
        return anew_;
    }

    void runStarts(double time) final
    {
        scale_ = splitPose(this->node(kFlyingCamera).local(time)).scale;
        lens_.start(this->runtime(), this->node(kFlyingCamera), time, this->settings.lens);
        if (!anew_)
            return;
        const double h = subSteps(this->stepLength()).length;
        body_.start(this->node(kFlyingCamera), time, h);
        takesOff(h);
    }

    void step(double time) final
    {
        this->hear();
        fly(subSteps(this->stepLength()));
        SceneNode& camera = this->node(kFlyingCamera);
        camera.setLocal(time, scaled(toMatrix(body_.pose()), scale_));
        lens_.write(this->runtime(), camera, time, this->stepLength(), this->settings.lens);
        this->node(kHumanoid).setLocal(
            time, besideCamera(body_.pose().rotation, this->settings.relativeScale));
    }

    SpunLens lens_;
    Vector3d scale_{1, 1, 1};
    bool anew_ = true;
};

} // namespace tvw::rgs
