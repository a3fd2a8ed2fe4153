#include "plugins/common/play_tool.h"

namespace tvw::rgs {

PlayTool::PlayTool(const CreateParam& param, const ToolSpec& spec,
                   std::span<const Item<PlayToolSettings>> items, std::string chunkWord,
                   Clearance shape)
    : Tool(param, spec, items, std::move(chunkWord)), shape_(shape)
{
    StateStore& saved = state();
    saved.packed("sDataChunkSaveStruct", 2)
        .field(settings.hideHelpers)
        .field(settings.hideDuringRecording);
    saved.stored("cInnerSliderNode.dPlayFriction", settings.dPlayFriction);
    saved.stored("cInnerSliderNode.bAllowRebounce", settings.bAllowRebounce);
    velocities_ = &saved.nearest("cInnerSliderNode.velocity", velocity_);
}

/// At rest, unless the run continues a take that was recorded at that time.
bool PlayTool::startsAnew(double time)
{
    const auto known = velocities_->curve().records();
    const double slack = stepLength() / 2;
    return known.empty() || known.front().time > time + slack || known.back().time < time - slack;
}

void PlayTool::step(double time)
{
    const double dt = stepLength();
    Matrix4 now;
    Matrix4 place;
    if (!node(play::kOuter).readGlobal(time, now) ||
        !node(play::kSlider).readGlobal(time - dt, place))
        return;
    const Matrix4 before = node(play::kOuter).global(time - dt);
    PoseParts parts = splitPose(place);
    Slider slider{parts.transform.translation, velocity_};
    glide(slider, shape_, before, now, settings, dt);
    velocity_ = slider.velocity;
    parts.transform = {slider.position, splitPose(now).transform.rotation};
    node(play::kSlider).setGlobal(time, joinPose(parts));
}

} // namespace tvw::rgs
